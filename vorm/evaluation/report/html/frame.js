// Where things stand in the plots of an assessment: one time axis for all of them.

/** Pixels right of the plots, so that marks at the edge are not cut. */
const rightMargin = 8;

function timeFrame(window, width, gutter, { origin, clock }) {
  const left = gutter;
  const right = Math.max(width - rightMargin, gutter + 1);
  const density = (right - left) / (window.to - window.from);
  return {
    ...window,
    left,
    right,
    width,
    x: (time) => left + (time - window.from) * density,
    column: (time) => Math.floor((time - window.from) * density),
    timeAt: (x) => clamp(window.from + (x - left) / density, window.from, window.to),
    ticks: timeTicks(window, right - left, origin),
    clockLabels: clock ? clockLabelsFor(window, right - left, clock) : [],
  };
}

/** Pixels that a character of a tick takes, with some room. */
const characterWidth = 7;

/** Ticks at round absolute times, as many as their labels leave room for. */
function timeTicks({ from, to }, pixels, origin) {
  const decimals = Math.max(Math.ceil(-Math.log10((to - from) / 10)), 0);
  const characters = absoluteTime(origin, Math.round(to)).length + decimals + 4;
  const step = tickStep(to - from, Math.max(pixels / (characters * characterWidth), 1));
  const shift = step > 1 ? Number(BigInt(origin) % BigInt(step)) : 0;
  return ticks(from, to, step, shift);
}

/** A label in the middle below its tick, unless it would not fit there. */
function tickLabel(frame, tick, text, y) {
  const x = frame.x(tick);
  const half = (text.length * characterWidth) / 2;
  const end = x + half > frame.width ? "end" : "middle";
  const anchor = x - half < frame.left - 8 ? "start" : end;
  return svg("text", { x: pixel(x), y, class: "tick", "text-anchor": anchor }, text);
}

function tickMarks(frame, marked, top, height) {
  return marked.map((tick) => `M${pixel(frame.x(tick))} ${top}v${height}`).join("");
}

/** Along times of day where the axis has these. */
function timeGrid(frame, height) {
  const labelled = frame.clockLabels.map(({ tick }) => tick);
  const path = tickMarks(frame, labelled.length ? labelled : frame.ticks, 0, height);
  return svg("path", { class: "grid", d: path });
}

/** Pixels that a line of labels takes. */
const labelHeight = 20;

function timeAxis(frame, times) {
  const rows = [...(times.clock ? [clockRow(frame, times.clock)] : []), secondsRow(frame, times)];
  const height = rows.length * labelHeight;
  const line = `M${frame.left} 0.5H${frame.right}`;
  const marks = rows.map(({ marked }, row) => tickMarks(frame, marked, row * labelHeight, 4));
  return svg(
    "svg",
    { class: "axis", viewBox: `0 0 ${frame.width} ${height}`, "aria-hidden": "true" },
    svg("path", { class: "frame", d: line + marks.join("") }),
    ...rows.flatMap(({ name, marked, text }, row) => {
      const y = row * labelHeight + 15;
      return [
        svg("text", { x: frame.left - 8, y, class: "label" }, ...name),
        ...marked.map((tick, index) => tickLabel(frame, tick, text(index), y)),
      ];
    }),
  );
}

function secondsRow({ ticks: marked }, { origin }) {
  return { name: ["time [s]"], marked, text: (index) => absoluteTime(origin, marked[index]) };
}

/** Its name is the date at the left end. */
function clockRow({ from, clockLabels }, clock) {
  const marked = clockLabels.map(({ tick }) => tick);
  const { date } = clockReading(clock, from, 0);
  const zone = svg("title", {}, `dates in ${clock.zone}`);
  return { name: [date, zone], marked, text: (index) => clockLabels[index].text };
}

/** Times that fail and times that are open, through the whole height of a plot. */
function shading(frame, drawing, height) {
  return [
    svg("path", { class: "open", d: spansPath(visibleSpans(drawing.open, frame), 0, height) }),
    svg("path", { class: "fails", d: spansPath(visibleSpans(drawing.failures, frame), 0, height) }),
  ];
}
