// The verdict over time. Its signs differ in height and hatching, not in colour alone.

class VerdictBand {
  #drawing;
  #reading = html("span", { class: "reading" });
  #surface = svg("svg", { role: "img" });
  element;

  constructor(drawing) {
    this.#drawing = drawing;
    const caption = html("figcaption", {}, html("strong", {}, "verdict"), ...legend(drawing));
    caption.append(this.#reading);
    this.element = html("figure", { class: "plot verdicts" }, caption, this.#surface);
  }

  draw(frame) {
    const { from, to, failures, open, times } = this.#drawing;
    const height = 20;
    const fails = spansPath(visibleSpans(failures, frame), 0, height);
    const opens = spansPath(visibleSpans(open, frame), 4, height - 8);
    this.#surface.setAttribute("viewBox", `0 0 ${frame.width} ${height}`);
    this.#surface.setAttribute(
      "aria-label",
      `verdict ${spanText(times, frame)}: ${intervalCount(failures, frame)} fail, ` +
        `${intervalCount(open, frame)} are open`,
    );
    this.#surface.replaceChildren(
      svg("path", { class: "passes", d: spansPath(visibleSpans([from, to], frame), 7, 6) }),
      svg("path", { class: "blank", d: opens }),
      svg("path", { class: "open hatched", d: opens }),
      svg("path", { class: "fails solid", d: fails }),
      svg("path", { class: "fails hatched", d: fails }),
    );
  }

  read(time) {
    this.#reading.textContent = time === null ? "" : verdictAt(this.#drawing, time);
    return this.#reading.textContent;
  }
}

function legend({ failures, open }) {
  const entry = (kind, text) =>
    html("span", { class: "legend" }, svg("svg", legendBox, ...legendSign(kind)), text);
  return [
    entry("passes", "passes"),
    ...(failures.length ? [entry("fails", "fails")] : []),
    ...(open.length ? [entry("open", "open")] : []),
  ];
}

const legendBox = { class: "swatch", viewBox: "0 0 16 12", "aria-hidden": "true" };

function legendSign(kind) {
  const signs = {
    passes: [svg("path", { class: "passes", d: "M0 4h16v4h-16z" })],
    open: [svg("path", { class: "open hatched", d: "M0 2h16v8h-16z" })],
    fails: [
      svg("path", { class: "fails solid", d: "M0 0h16v12h-16z" }),
      svg("path", { class: "fails hatched", d: "M0 0h16v12h-16z" }),
    ],
  };
  return signs[kind];
}

/** The place in `ends` of the interval that holds `time`; -1 if none does. */
function intervalAt(ends, time) {
  const index = partitionPoint(ends.length / 2, (i) => ends[2 * i + 1] < time);
  return 2 * index < ends.length && ends[2 * index] <= time ? index : -1;
}

function verdictAt({ from, to, failures, open }, time) {
  if (time < from || time > to) {
    return "not assessed";
  }
  const failure = intervalAt(failures, time);
  if (failure >= 0) {
    return `✗ fails${upToHere(failures, failure, time)}`;
  }
  const gap = intervalAt(open, time);
  return gap >= 0 ? `? open${upToHere(open, gap, time)}` : "✓ passes";
}

/** An interval ends where it is over, or just after: the page has no time between the two. */
function upToHere(ends, index, time) {
  return ends[2 * index] < time && time === ends[2 * index + 1] ? " up to here" : "";
}

function intervalCount(ends, { from, to }) {
  const first = partitionPoint(ends.length / 2, (i) => ends[2 * i + 1] < from);
  const end = partitionPoint(ends.length / 2, (i) => ends[2 * i] <= to);
  return end - first;
}

/** Hatching that all plots of the page refer to; it takes no room itself. */
function hatchPatterns() {
  const pattern = (id, turn) =>
    svg(
      "pattern",
      { id, width: 5, height: 5, patternUnits: "userSpaceOnUse", patternTransform: turn },
      svg("path", { d: "M0 0V5" }),
    );
  const patterns = [pattern("hatch-fails", "rotate(45)"), pattern("hatch-open", "rotate(-45)")];
  return svg("svg", { class: "patterns", "aria-hidden": "true" }, svg("defs", {}, ...patterns));
}
