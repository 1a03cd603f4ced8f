// The report in a real browser. See scripts/test-browser.

import AxeBuilder from "axe-core";
import assert from "node:assert/strict";
import { mkdirSync, rmSync } from "node:fs";
import { join } from "node:path";
import { after, before, test } from "node:test";
import { chromium } from "playwright-core";
import {
  alone,
  dated,
  datedStarts,
  drive,
  folder,
  holes,
  hostile,
  hostileTexts,
  large,
  planted,
} from "./pages.js";

const pictures = process.env.PICTURES ?? folder;
let browser;

before(async () => {
  mkdirSync(pictures, { recursive: true });
  const flags = "no-sandbox disable-gpu disable-quic no-first-run disable-background-networking";
  browser = await chromium.launch({
    executablePath: "/usr/bin/chromium",
    args: `${flags} disable-component-update disable-sync`.split(" ").map((flag) => `--${flag}`),
  });
});
after(async () => {
  await browser.close();
  rmSync(folder, { recursive: true });
});

/** Opens a page, and makes sure at its end that it asked for nothing and complained of nothing. */
async function withPage(url, action, options = {}) {
  const context = await browser.newContext({
    viewport: { width: 1200, height: 900 },
    ...options,
  });
  const page = await context.newPage();
  const complaints = [];
  page.on("console", (message) => complaints.push(message.text()));
  page.on("pageerror", (error) => complaints.push(String(error)));
  page.on(
    "request",
    (request) => request.url() !== url.split("#")[0] && complaints.push(request.url()),
  );
  await page.goto(url);
  await action(page);
  assert.deepEqual(complaints, []);
  await context.close();
}

const surfaceOf = (id) => `#${id} .surface`;

/**
 * Waits until plots are drawn and are not drawn again for some frames: a page that is still finding
 * its width replaces what it has drawn.
 */
const hasDrawn = async (page, id) => {
  await page
    .locator(`${surfaceOf(id)} .curve`)
    .first()
    .waitFor({ state: "attached" });
  await page.locator(`#${id}`).evaluate((details) => {
    const axis = () => details.querySelector(".axis");
    return new Promise((done) => {
      const wait = (drawn, frames) =>
        requestAnimationFrame(() => {
          frames === 0 ? done() : wait(axis(), axis() === drawn ? frames - 1 : 10);
        });
      wait(axis(), 10);
    });
  });
};

/** The failing intervals as they are drawn through a plot, in pixels. */
const drawnFailures = (page, id) =>
  page
    .locator(`#${id} .plot:not(.verdicts) path.fails`)
    .first()
    .evaluate((path) =>
      [...path.getAttribute("d").matchAll(/M([\d.]+) \d+H([\d.]+)/g)].map((match) => ({
        start: Number(match[1]),
        end: Number(match[2]),
      })),
    );

test("the example's page has the numbers of its JSON", async () => {
  const { url, report } = drive();
  await withPage(url, async (page) => {
    const { assessments } = report.recordings[0];
    const names = await page.locator("details h3").allTextContents();
    assert.deepEqual(
      names,
      assessments.map(({ name }) => name),
    );
    for (const [index, { verdict, failures }] of assessments.entries()) {
      const details = page.locator(`#r1a${index + 1}`);
      assert.match(await details.locator(".verdict").textContent(), new RegExp(verdict));
      await details.locator("summary").click();
      await details.locator("noscript").waitFor({ state: "detached" });
      const rows = await details.locator(".intervals:not(.open) tbody tr").allTextContents();
      assert.equal(rows.length, failures.length);
      const times = failures.map(({ start, end }) => `${start} s${end} s`);
      rows.forEach((row, i) => assert.ok(row.replaceAll("\n", "").startsWith(times[i]), row));
      const causes = failures.flatMap(({ explanation }) => explanation.causes);
      causes.forEach((cause) => assert.ok(rows.join().includes(cause.when), cause.when));
    }
    await page.screenshot({ path: join(pictures, "overview.png") });
  });
});

test("keys zoom, go to failures and read values; a link restores what they show", async () => {
  const { url, report, islands } = drive();
  const index = report.recordings[0].assessments.findIndex(({ name }) => name === "safe distance");
  const id = `r1a${index + 1}`;
  await withPage(`${url}#${id}`, async (page) => {
    await hasDrawn(page, id);
    const surface = page.locator(surfaceOf(id));
    const whole = await drawnFailures(page, id);
    await surface.focus();
    await page.keyboard.press("n");
    const { start } = report.recordings[0].assessments[index].failures[0];
    await page.waitForTimeout(500);
    assert.ok((await page.locator(`#${id} .time`).textContent()).includes(`at ${start} s`));
    const [zoomed] = await drawnFailures(page, id);
    assert.ok(zoomed.end - zoomed.start > 5 * (whole[0].end - whole[0].start));
    const hash = await page.evaluate(() => location.hash);
    assert.ok(hash.startsWith(`#${id}@`), hash);
    await page.screenshot({ path: join(pictures, "plots.png") });
    await page.keyboard.press("0");
    await page.waitForTimeout(500); // the address follows a little later
    assert.deepEqual(await drawnFailures(page, id).then((spans) => spans.length), whole.length);
    await page.evaluate((link) => (location.hash = link), hash);
    await page.waitForTimeout(300);
    const [restored] = await drawnFailures(page, id);
    assert.ok(
      Math.abs(restored.start - zoomed.start) < 1 && Math.abs(restored.end - zoomed.end) < 1,
    );

    // The cursor stands on a sample of some signal, and reads its value as it was recorded.
    await page.keyboard.press("Shift+ArrowRight");
    const time = Number((await page.locator(`#${id} .time`).textContent()).slice(3, -2));
    const readings = await page.locator(`#${id} .plot:not(.verdicts) .reading`).allTextContents();
    const { signals } = islands[0];
    const known = islands[0].assessments[index].signals.flatMap((number, i) => {
      const { t, v } =
        signals[number].pieces.find(({ t: [first], end }) => first <= time && time <= end) ?? {};
      const at = t?.indexOf(time) ?? -1;
      return at < 0 ? [] : [[readings[i], v[at]]];
    });
    assert.ok(known.length > 0, `no sample at ${time}`);
    known.forEach(([reading, value]) => assert.equal(Number.parseFloat(reading), value));
  });
});

/** The part of time that the address tells, some time after what changed it. */
async function windowOf(page) {
  await page.waitForTimeout(400);
  const [, from, to] = /@(-?[\d.]+)\.\.(-?[\d.]+)$/.exec(await page.url()) ?? [];
  return from === undefined ? null : { from: Number(from), to: Number(to) };
}

test("the pointer selects, moves and zooms, and buttons do what keys do", async () => {
  const { url, report } = drive();
  const index = report.recordings[0].assessments.findIndex(({ name }) => name === "safe distance");
  const { from, to, failures } = report.recordings[0].assessments[index];
  const id = `r1a${index + 1}`;
  await withPage(`${url}#${id}`, async (page) => {
    await hasDrawn(page, id);
    const box = await page.locator(`#${id} .axis`).boundingBox();
    const axis = await page.locator(`#${id} .axis path.frame`).getAttribute("d");
    const [left, right] = /M([\d.]+) [\d.]+H([\d.]+)/.exec(axis).slice(1).map(Number);
    const second = (to - from) / (right - left);
    const at = (part) => [box.x + left + part * (right - left), box.y - 20];
    const drag = async (start, end) => {
      await page.mouse.move(...at(start));
      await page.mouse.down();
      await page.mouse.move(...at(end), { steps: 5 });
      await page.mouse.up();
    };
    const expect = async (start, end) => {
      const shown = await windowOf(page);
      assert.ok(Math.abs(shown.from - start) < 2 * second, `${shown.from} for ${start}`);
      assert.ok(Math.abs(shown.to - end) < 2 * second, `${shown.to} for ${end}`);
    };
    const time = (part) => from + part * (to - from);

    await drag(0.6, 0.2);
    await expect(time(0.2), time(0.6));
    await page.keyboard.down("Shift");
    await drag(0.5, 0.25);
    await page.keyboard.up("Shift");
    await expect(time(0.3), time(0.7));
    await page.mouse.move(...at(0.5));
    await page.keyboard.down("Control");
    await page.mouse.wheel(0, -200);
    await page.keyboard.up("Control");
    await expect(time(0.4), time(0.6));
    await page.mouse.wheel(0, 10);
    await expect(time(0.4), time(0.6));
    await page.mouse.dblclick(...at(0.5));
    assert.equal(await windowOf(page), null);

    const press = (label) => page.locator(`#${id} [aria-label="${label}"]`).click();
    await press("Zoom in");
    await press("Later");
    await expect(time(0.35), time(0.85));
    await press("Whole range");
    assert.equal(await windowOf(page), null);
    await press("Next failure");
    await page.mouse.move(5, 5);
    await press("Previous failure");
    assert.match(await page.locator(`#${id} .spoken`).textContent(), /^No earlier failure/);
    assert.ok((await windowOf(page)).from < failures[0].start);
  });
});

test("the picture in README.md is small", async () => {
  const { url, report } = drive();
  const id = report.recordings[0].assessments.findIndex(({ name }) => name === "safe distance") + 1;
  const viewport = { width: 1000, height: 640 };
  await withPage(
    `${url}#r1a${id}`,
    async (page) => {
      await hasDrawn(page, `r1a${id}`);
      await page.mouse.move(620, 300);
      await page.waitForTimeout(300);
      const picture = await page.screenshot({
        path: join(pictures, "readme.png"),
      });
      assert.ok(picture.length < 150_000);
    },
    { viewport },
  );
});

test("no line is drawn across a hole, however small the pixels", async () => {
  await withPage(holes().url, async (page) => {
    await hasDrawn(page, "r1a1");
    const curve = await page.locator("#r1a1 .curve").getAttribute("d");
    const grid = await page.locator("#r1a1 .axis path.frame").getAttribute("d");
    const [, left, right] = /M([\d.]+) [\d.]+H([\d.]+)/.exec(grid);
    const middle = Number(left) + 0.7 * (right - left);
    for (const run of curve.split("M").slice(1)) {
      const places = [...run.matchAll(/(?:^|[LH])([\d.]+)/g)].map((match) => Number(match[1]));
      assert.ok(places.every((x) => x < middle) || places.every((x) => x > middle), run);
    }
  });
});

test("what stands alone, is not a number or not there reads so", async () => {
  await withPage(alone().url, async (page) => {
    await hasDrawn(page, "r1a1");
    const axis = page.locator("#r1a1 .axis");
    const box = await axis.boundingBox();
    const frame = await axis.locator("path.frame").getAttribute("d");
    const [left, right] = /M([\d.]+) [\d.]+H([\d.]+)/.exec(frame).slice(1).map(Number);
    for (const [time, text] of Object.entries({
      0: "1",
      1: "NaN",
      2: "∞",
      4: "5",
      7: "no value",
    })) {
      await page.mouse.move(box.x + left + ((right - left) * time) / 10, box.y - 20);
      const reading = page.locator("#r1a1 .plot:not(.verdicts) .reading");
      assert.equal(await reading.textContent(), text, `at ${time} s`);
    }
  });
});

/** What clocks in Berlin show, in milliseconds, as the browser's own rules say. */
function inBerlin(instant) {
  const options = { timeZone: "Europe/Berlin", dateStyle: "short", timeStyle: "medium" };
  const [date, time] = new Intl.DateTimeFormat("sv", options).format(instant).split(" ");
  const fraction = `.${String(((instant % 1000) + 1000) % 1000).padStart(3, "0")}`;
  return `${date} ${time}${fraction.replace(/\.?0+$/, "")}`;
}

test("a cursor and an axis show what clocks of the recording's zone show", async () => {
  const { url } = dated();
  const axisOf = async (page, id) => {
    await page.evaluate((link) => (location.hash = link), `#${id}`);
    await hasDrawn(page, id);
    const axis = page.locator(`#${id} .axis`);
    const frame = await axis.locator("path.frame").getAttribute("d");
    const [left, right] = /M([\d.]+) [\d.]+H([\d.]+)/.exec(frame).slice(1).map(Number);
    const labels = await axis.locator("text").evaluateAll((texts) =>
      texts.map((text) => ({
        text: text.firstChild.data,
        x: Number(text.getAttribute("x")),
        y: Number(text.getAttribute("y")),
      })),
    );
    return { axis, left, right, clock: labels.filter(({ y }) => y < 20), labels };
  };
  await withPage(
    url,
    async (page) => {
      for (const [index, start] of datedStarts.entries()) {
        const id = `r${index + 1}a1`;
        const { axis, left, right } = await axisOf(page, id);
        await axis.scrollIntoViewIfNeeded();
        const box = await axis.boundingBox();
        for (const part of [0, 0.13, 0.5, 0.51, 0.77, 1]) {
          await page.mouse.move(box.x + left + part * (right - left), box.y - 20);
          const text = await page.locator(`#${id} .time`).textContent();
          const [, seconds, shown] = /^at ([\d.]+) s \((.*?)(?:\+0[12]:00)?\)$/.exec(text) ?? [];
          const instant = Date.parse(start) + Math.round(Number(seconds) * 1000);
          assert.equal(shown, inBerlin(instant), text);
        }
      }
      const midnight = await axisOf(page, "r1a1");
      assert.equal(midnight.clock[0].text, "2026-11-22");
      const texts = midnight.clock.slice(1).map(({ text }) => text);
      const day = texts.indexOf("2026-11-23");
      assert.deepEqual([texts[day - 1], texts[day + 1]], ["23:59:45", "00:00:15"]);
      const x = midnight.left + (59.75 / 120) * (midnight.right - midnight.left);
      assert.ok(Math.abs(midnight.clock[day + 1].x - x) < 0.1);
      assert.ok(midnight.labels.some(({ text, y }) => text === "100" && y > 20));

      const twice = await axisOf(page, "r2a1");
      assert.deepEqual(
        twice.clock.map(({ text }) => text),
        [
          "2026-10-25",
          ...["02:30+02:00", "02:45+02:00", "02:00+01:00", "02:15+01:00", "02:30+01:00"],
          ...["02:45+01:00", "03:00", "03:15", "03:30"],
        ],
      );
      await page.screenshot({ path: join(pictures, "clock.png") });
      assert.equal((await axisOf(page, "r3a1")).clock[0].text, "1969-12-31");
    },
    { timezoneId: "Asia/Tokyo" },
  );
});

test("the filter hides what does not match", async () => {
  const { url, report } = drive();
  const count = (verdict) =>
    report.recordings[0].assessments.filter((one) => one.verdict === verdict).length;
  await withPage(url, async (page) => {
    const shown = () => page.locator("details.assessment:visible").count();
    await page.getByRole("button", { name: /FAIL/ }).click();
    assert.equal(await shown(), count("FAIL"));
    assert.equal(await page.locator(".matrix thead th:visible").count(), 1 + count("FAIL"));
    await page.locator("#search").fill("lamp");
    assert.equal(await shown(), 1);
    await page.locator("#search").fill("nothing is called so");
    assert.equal(await shown(), 0);
  });
});

test("texts from outside stay texts", async () => {
  const { url, islands } = hostile();
  await withPage(url, async (page) => {
    await page.getByRole("button", { name: "Open all failing" }).click();
    await hasDrawn(page, "r1a1");
    assert.equal(await page.locator("img, i, b").count(), 0);
    assert.deepEqual(await page.locator("details h3").allTextContents(), hostileTexts);
    const captions = await page.locator("#r1a1 figcaption strong").allTextContents();
    assert.ok(captions.includes(hostileTexts[0]));
    assert.equal(islands[0].signals[0].name, hostileTexts[0]);
    assert.equal(await page.title(), hostileTexts[0]);
    await page.setViewportSize({ width: 360, height: 800 });
    const overflow = await page.evaluate(() => document.documentElement.scrollWidth - innerWidth);
    assert.ok(overflow <= 0, `the page is ${overflow} px too wide`);
    await page.screenshot({ path: join(pictures, "narrow.png") });
  });
});

test("the page reads without JavaScript and prints", async () => {
  const { url } = drive();
  await withPage(
    url,
    async (page) => {
      await page.locator("#r1a11 summary").click();
      assert.ok(await page.getByText("distance > 1.5 * speed").isVisible());
      assert.ok(await page.locator("#r1a11 .intervals td").first().isVisible());
      assert.equal(await page.locator("button:visible, input:visible").count(), 0);
    },
    { javaScriptEnabled: false },
  );
  await withPage(`${url}#r1a11`, async (page) => {
    await hasDrawn(page, "r1a11");
    assert.ok((await page.pdf({ path: join(pictures, "print.pdf") })).length > 10_000);
  });
});

for (const colorScheme of ["light", "dark"]) {
  test(`nothing keeps anybody from reading the page, ${colorScheme}`, async () => {
    const { url } = drive();
    // The policy of the page would keep the checker out.
    const options = { colorScheme, bypassCSP: true };
    await withPage(
      `${url}#r1a11`,
      async (page) => {
        await hasDrawn(page, "r1a11");
        await page.addScriptTag({ content: AxeBuilder.source });
        const { violations } = await page.evaluate(() => globalThis.axe.run());
        assert.deepEqual(
          violations.map(({ id, nodes }) => `${id}: ${nodes.map(({ html }) => html).join(" ")}`),
          [],
        );
        await page.screenshot({ path: join(pictures, `${colorScheme}.png`) });
      },
      options,
    );
  });
}

/** Milliseconds that the action and the drawing after it take. */
const drawingTime = (page, action) =>
  page.evaluate(`new Promise((done) => {
    const begin = performance.now();
    ${action};
    requestAnimationFrame(() => requestAnimationFrame(() => done(performance.now() - begin)));
  })`);

test("failures of one sample among a million are all to be seen", async (context) => {
  const { url, failing, islands, bytes } = planted();
  // Equal values one after the other are one that is held.
  assert.ok(islands[0].signals[0].samples > 990_000);
  await withPage(url, async (page) => {
    const begin = Date.now();
    await hasDrawn(page, "r1a1");
    context.diagnostic(`${(bytes / 1e6).toFixed(1)} MB, drawn after ${Date.now() - begin} ms`);
    const spans = await drawnFailures(page, "r1a1");
    spans.forEach(({ start, end }) => assert.ok(end - start >= 2));
    const grid = page.locator("#r1a1 .axis path.frame");
    const [, left, right] = /M([\d.]+) [\d.]+H([\d.]+)/.exec(await grid.getAttribute("d"));
    const curve = await page.locator("#r1a1 .curve").getAttribute("d");
    const peaks = [...curve.matchAll(/H([\d.]+)V8(?![\d.])/g)].map((match) => Number(match[1]));
    for (const index of failing) {
      const x = Number(left) + (index / 999_999) * (right - left);
      const isNear = (at) => Math.abs(at - x) <= 1.5;
      assert.ok(
        spans.some(({ start, end }) => start - 1 <= x && x <= end + 1),
        `failure at ${x}`,
      );
      assert.ok(peaks.some(isNear), `peak at ${x}`);
    }
    const time = await drawingTime(
      page,
      "document.querySelector('[aria-label=\"Zoom in\"]').click()",
    );
    context.diagnostic(`zoomed in ${time.toFixed(0)} ms`);
    assert.ok(time < 1000);
  });
});

test("100 recordings of 50 assessments are a page that can be used", async (context) => {
  const { url, bytes, islands } = large();
  assert.ok(bytes <= 20e6);
  assert.equal(islands.length, 100);
  const begin = Date.now();
  await withPage(url, async (page) => {
    context.diagnostic(`${(bytes / 1e6).toFixed(1)} MB, loaded in ${Date.now() - begin} ms`);
    const timing = await page.evaluate(() => {
      const [{ responseEnd, domInteractive, loadEventEnd }] =
        performance.getEntriesByType("navigation");
      return `read ${responseEnd}, parsed ${domInteractive}, loaded ${loadEventEnd} ms`;
    });
    context.diagnostic(timing);
    assert.equal(await page.locator(".matrix tbody td").count(), 5000);
    const opened = Date.now();
    await page.evaluate(() => (location.hash = "#r77a1"));
    await hasDrawn(page, "r77a1");
    context.diagnostic(`opened one after ${Date.now() - opened} ms`);
    const time = await drawingTime(
      page,
      "document.querySelector('#r77a1 [aria-label=\"Zoom in\"]').click()",
    );
    context.diagnostic(`zoomed in ${time.toFixed(0)} ms`);
    assert.ok(time < 1000);
  });
});
