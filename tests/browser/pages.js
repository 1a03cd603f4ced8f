// The pages under test, made by the program from recordings that are written here.
//
// ASSESS names the program and EXAMPLE a folder with drive.toml and the recording drive.

import { execFileSync } from "node:child_process";
import { mkdirSync, mkdtempSync, readFileSync, writeFileSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { pathToFileURL } from "node:url";

export const folder = mkdtempSync(join(tmpdir(), "pages-"));

const range = (count, make) => Array.from({ length: count }, (_, index) => make(index));

/** Lehmer's generator: the same pages in every run. */
function randomNumbers(seed) {
  let state = seed;
  return () => (state = (state * 48271) % 2147483647) / 2147483647;
}

/** The page of a run, and the same run as JSON. What fails is no error here. */
function run(name, assessments, recordings, options = []) {
  const page = join(folder, `${name}.html`);
  const json = join(folder, `${name}.json`);
  const reports = ["-f", `html=${page}`, "-f", `json=${json}`];
  try {
    execFileSync(
      process.env.ASSESS,
      ["run", "--quiet", "--explain", assessments, ...recordings, ...reports, ...options],
      { cwd: folder, stdio: ["ignore", "ignore", "pipe"] },
    );
  } catch (error) {
    if (error.status !== 1 && error.status !== 3) {
      throw error;
    }
  }
  const text = readFileSync(page, "utf8");
  return {
    url: pathToFileURL(page).href,
    bytes: text.length,
    islands: [...text.matchAll(/<script type="application\/json"[^>]*>(.*?)<\/script>/gs)].map(
      (match) => JSON.parse(match[1]),
    ),
    report: JSON.parse(readFileSync(json, "utf8")),
  };
}

function write(name, text) {
  writeFileSync(join(folder, name), text);
  return name;
}

export function drive() {
  const { EXAMPLE } = process.env;
  return run("drive", join(EXAMPLE, "drive.toml"), [join(EXAMPLE, "drive")], ["--robustness"]);
}

export const hostileTexts = [
  "</script><img src=x onerror=alert(1)>",
  "quotes' & <b>ampersands</b> ${x} <!--",
  "מהירות \u202eright to left 速度",
  "long".repeat(60),
];

const quoted = (text) => `"${text.replaceAll('"', '""')}"`;

/** Hostile texts wherever a text from outside stands. */
export function hostile() {
  const assessments = hostileTexts.map(
    (text) => `
[[assessment]]
name = ${JSON.stringify(text)}
description = ${JSON.stringify(text)}
formula = ${JSON.stringify(`"${text}" < 2 & "mode ${text}" == '${hostileTexts[0]}'`)}
`,
  );
  const units = hostileTexts.map(
    (text) => `${JSON.stringify(text)} = { unit = ${JSON.stringify(text)} }`,
  );
  const toml = `title = ${JSON.stringify(hostileTexts[0])}\n[signals]\n${units.join("\n")}\n`;
  write("hostile.toml", toml + assessments.join(""));
  const header = ["time", ...hostileTexts, ...hostileTexts.map((text) => `mode ${text}`)];
  const row = (time, value, mode) => [time, ...range(4, () => value), ...range(4, () => mode)];
  const rows = [header, row(0, 1, hostileTexts[0]), row(1, 3, hostileTexts[1]), row(2, 1, "b")];
  const csv = rows.map((cells) => cells.map((cell) => quoted(String(cell))).join(",")).join("\n");
  const name = "<img src=x onerror=alert(2)>.csv";
  return run("hostile", "hostile.toml", [write(name, `${csv}\n`), write("<i>bad.csv", "no table")]);
}

/** Samples of a line that stand alone among NaNs, and a hole. */
export function alone() {
  const toml = '[signals]\nx = { interpolation = "linear", max_gap = 3 }\n';
  write("alone.toml", `${toml}[[assessment]]\nname = "low"\nformula = "x <= 1"\n`);
  const rows = "0,1\n1,nan\n2,inf\n3,nan\n4,5\n10,1\n";
  return run("alone", "alone.toml", [write("alone.csv", `time,x\n${rows}`)]);
}

/** Two holes that begin in one pixel, the second of which reaches to 900 s. */
export function holes() {
  const times = [...range(5001, (i) => i), 5003, 5004, ...range(1001, (i) => 9000 + i)];
  const rows = times.map((tenths) => `${(tenths / 10).toFixed(1)},${tenths === 5004 ? 2 : 1}`);
  const toml = '[signals]\nx = { interpolation = "linear", max_gap = 0.15 }\n';
  write("holes.toml", `${toml}[[assessment]]\nname = "low"\nformula = "x < 1"\n`);
  return run("holes", "holes.toml", [write("holes.csv", `time,x\n${rows.join("\n")}\n`)]);
}

/** When the first sample of each recording of `dated` was taken. */
export const datedStarts = [
  "2026-11-22T22:59:00.25Z",
  "2026-10-25T00:30:00Z",
  "1969-12-31T22:59:58Z",
];

/** Samples for two minutes around a midnight in Berlin, two hours in which clocks go back, and 4 s. */
export function dated() {
  const toml = '[recording]\nzone = "Europe/Berlin"\norigin = "first"\n';
  write("dated.toml", `${toml}[[assessment]]\nname = "low"\nformula = "x < 5"\n`);
  const recordings = datedStarts.map((start, index) => {
    const step = [2_000, 120_000, 500][index];
    const date = (i) => new Date(Date.parse(start) + i * step).toISOString();
    const rows = range(61, (i) => `${date(i)},${i % 7}`).slice(0, index === 2 ? 9 : 61);
    return write(`dated${index}.csv`, `time,x\n${rows.join("\n")}\n`);
  });
  return run("dated", "dated.toml", recordings);
}

/** One-sample failures at 200 places among a million samples. */
export function planted() {
  const random = randomNumbers(7);
  const failing = new Set(range(200, () => Math.floor(random() * 1_000_000)));
  const lines = range(1_000_000, (i) => {
    const value = failing.has(i) ? 9 : (Math.sin(i / 3e4) + random() * 0.1).toFixed(4);
    return `${(i / 100).toFixed(2)},${value}`;
  });
  write("planted.csv", `time,noise\n${lines.join("\n")}\n`);
  write("planted.toml", '[[assessment]]\nname = "noise"\nformula = "noise < 5"\n');
  return { ...run("planted", "planted.toml", ["planted.csv"]), failing: [...failing] };
}

/** 100 recordings of 50 assessments, half of which fail at many places. */
export function large() {
  const random = randomNumbers(3);
  const assessments = range(50, (i) => {
    const signal = `signal${i % 10}`;
    const limit = i % 2 ? 3 : 0.9;
    return `[[assessment]]\nname = "requirement ${i + 1} of the brakes"\nformula = "${signal} < ${limit}"\n`;
  });
  write("large.toml", assessments.join(""));
  mkdirSync(join(folder, "large"));
  const recordings = range(100, (number) => {
    const rows = range(500, (i) =>
      [
        i / 10,
        ...range(10, (signal) => (Math.sin(i / (signal + 5)) + random() * 0.2).toFixed(3)),
      ].join(),
    );
    const header = ["time", ...range(10, (signal) => `signal${signal}`)].join();
    return write(`large/drive ${number + 1}.csv`, `${header}\n${rows.join("\n")}\n`);
  });
  return run("large", "large.toml", recordings);
}
