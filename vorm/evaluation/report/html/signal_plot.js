// One signal over time, with a caption that says what it is and what it reads at the cursor.

class SignalPlot {
  #signal;
  #thresholds;
  #causes;
  #scale;
  #reading = html("span", { class: "reading" });
  #surface = svg("svg", { role: "img" });
  element;

  constructor(signal, thresholds, causes) {
    this.#signal = signal;
    this.#thresholds = thresholds.filter((value) => Number.isFinite(value));
    this.#causes = causes;
    this.#scale = valueScale(signal, this.#thresholds);
    this.element = html(
      "figure",
      { class: `plot ${signal.kind}` },
      html("figcaption", {}, ...captionOf(signal), this.#reading),
      this.#surface,
    );
  }

  get labelLength() {
    return Math.max(...this.#scale.ticks.map(({ text }) => [...text].length));
  }

  draw(frame, drawing) {
    const { height } = this.#scale;
    const points = visiblePoints(this.#signal, frame);
    this.#surface.setAttribute("viewBox", `0 0 ${frame.width} ${height}`);
    this.#surface.setAttribute("aria-label", this.#description(frame, drawing.times, points));
    this.#surface.replaceChildren(
      ...shading(frame, drawing, height),
      timeGrid(frame, height),
      ...valueAxis(this.#scale, frame),
      ...causeMarks(this.#causes, frame, height),
      ...signalCurve(this.#signal, points, this.#scale, frame),
      ...thresholdLines(this.#thresholds, this.#scale, frame),
    );
  }

  read(time) {
    this.#reading.textContent = time === null ? "" : readingAt(this.#signal, time);
    return `${this.#signal.name}: ${this.#reading.textContent}`;
  }

  #description(frame, times, points) {
    const values = points.map(({ value }) => value).filter((value) => !Number.isNaN(value));
    const text = (value) => signalText(this.#signal, value);
    // Not spread into Math.min: there can be more points than a call takes arguments.
    const least = values.reduce((one, other) => Math.min(one, other), Infinity);
    const greatest = values.reduce((one, other) => Math.max(one, other), -Infinity);
    const extremes = values.length
      ? `least ${text(least)}, greatest ${text(greatest)}`
      : "no value";
    return `${this.#signal.name} ${spanText(times, frame)}: ${extremes}`;
  }
}

function captionOf({ name, unit, shown, samples }) {
  const parts = [html("strong", {}, name)];
  if (unit) {
    parts.push(html("span", { class: "unit" }, `[${unit}]`));
  }
  if (shown < samples) {
    const note = `thinned: ${shown} of ${samples} samples`;
    parts.push(html("span", { class: "thinned" }, note));
  }
  return parts;
}

function signalCurve(signal, points, { y, height }, frame) {
  const isHeld = signal.kind !== "lines";
  const runs = runsOf(points);
  const curve = runs.map((run) => runPath(run, y, isHeld)).join("");
  const infinite = points.filter(({ value }) => Math.abs(value) === Infinity);
  const elements = [
    svg("path", { class: "curve", d: curve }),
    svg("path", { class: "dots", d: sampleDots(signal, runs, y, frame) }),
    svg("path", { class: "infinite", d: infinite.map((at) => infinityPath(at, y)).join("") }),
  ];
  if (signal.kind === "truth") {
    const area = runs.map((run) => areaPath(run, y, height - valueMargin)).join("");
    elements.unshift(svg("path", { class: "area", d: area }));
  }
  return elements;
}

/** Dots for samples that stand alone, and for those of a line that are far enough apart. */
function sampleDots({ kind, times, values }, runs, y, frame) {
  const alone = runs.filter(isDot).map((run) => run.points[0]);
  const begin = partitionPoint(times.length, (i) => times[i] < frame.from);
  const end = partitionPoint(times.length, (i) => times[i] <= frame.to);
  const areFarApart = kind === "lines" && (end - begin) * 10 < frame.right - frame.left;
  for (let i = begin; areFarApart && i < end; ++i) {
    if (!Number.isNaN(values[i])) {
      alone.push({ x: frame.x(times[i]), value: values[i] });
    }
  }
  return alone.map((point) => dotPath(point, y)).join("");
}

/** Where the explanation points at: bars at the lower edge. */
function causeMarks(causes, frame, height) {
  return causes.flatMap(({ from, to, text }) =>
    visibleSpans([from, to], frame, 6).map((span) =>
      svg("path", { class: "cause", d: spansPath([span], height - 4, 4) }, svg("title", {}, text)),
    ),
  );
}

function thresholdLines(thresholds, { y }, frame) {
  let left = frame.right - 4;
  let above = Infinity;
  return [...new Set(thresholds)]
    .sort((one, other) => one - other)
    .flatMap((value) => {
      const at = pixel(y(value));
      const text = numberText(value);
      // A label steps aside where it would cover that of the threshold below.
      left = above - at < 12 ? left - (text.length + 1) * characterWidth : frame.right - 4;
      above = at;
      return [
        svg("path", { class: "threshold", d: `M${frame.left} ${at}H${frame.right}` }),
        svg("text", { class: "threshold-label", x: left, y: at < 14 ? at + 11 : at - 3 }, text),
      ];
    });
}
