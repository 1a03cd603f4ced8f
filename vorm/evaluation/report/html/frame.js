// Where things stand in the plots of an assessment: one time axis for all of them.

/** Pixels right of the plots, so that marks at the edge are not cut. */
const rightMargin = 8;

function timeFrame(window, width, gutter, origin) {
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
function timeLabel(frame, tick, origin) {
  const text = absoluteTime(origin, tick);
  const x = frame.x(tick);
  const half = (text.length * characterWidth) / 2;
  const end = x + half > frame.width ? "end" : "middle";
  const anchor = x - half < frame.left - 8 ? "start" : end;
  return svg("text", { x: pixel(x), y: 15, class: "tick", "text-anchor": anchor }, text);
}

function timeGrid(frame, height) {
  const path = frame.ticks.map((tick) => `M${pixel(frame.x(tick))} 0v${height}`).join("");
  return svg("path", { class: "grid", d: path });
}

function timeAxis(frame, origin) {
  const height = 20;
  const marks = frame.ticks.map((tick) => `M${pixel(frame.x(tick))} 0v4`).join("");
  return svg(
    "svg",
    { class: "axis", viewBox: `0 0 ${frame.width} ${height}`, "aria-hidden": "true" },
    svg("path", { class: "frame", d: `M${frame.left} 0.5H${frame.right}${marks}` }),
    svg("text", { x: frame.left - 8, y: 15, class: "label" }, "time [s]"),
    ...frame.ticks.map((tick) => timeLabel(frame, tick, origin)),
  );
}

/** Times that fail and times that are open, through the whole height of a plot. */
function shading(frame, drawing, height) {
  return [
    svg("path", { class: "open", d: spansPath(visibleSpans(drawing.open, frame), 0, height) }),
    svg("path", { class: "fails", d: spansPath(visibleSpans(drawing.failures, frame), 0, height) }),
  ];
}
