// The part of an assessment's time that its plots show: { from, to } within { from, to }.

/** Below this, neighbouring pixels would stand for the same double. */
function leastSpan(whole) {
  return Math.max(1e-9, Math.abs(whole.from) * 2 ** -40, Math.abs(whole.to) * 2 ** -40);
}

function fittedWindow({ from, to }, whole) {
  if (from >= whole.from && to <= whole.to && to - from >= leastSpan(whole)) {
    return { from, to };
  }
  const length = whole.to - whole.from;
  const span = clamp(to - from, Math.min(leastSpan(whole), length), length);
  const start = clamp((from + to - span) / 2, whole.from, whole.to - span);
  return span === length ? { ...whole } : { from: start, to: start + span };
}

/** Without the digits that no pixel shows, for links that people can read. */
function roundedWindow({ from, to }) {
  const places = clamp(Math.ceil(4 - Math.log10(to - from)), 0, 20);
  return { from: Number(from.toFixed(places)), to: Number(to.toFixed(places)) };
}

/** What two windows have in common. */
function clippedWindow({ from, to }, whole) {
  return { from: Math.max(from, whole.from), to: Math.min(to, whole.to) };
}

function zoomedWindow({ from, to }, factor, centre = (from + to) / 2) {
  return { from: centre - (centre - from) * factor, to: centre + (to - centre) * factor };
}

function pannedWindow({ from, to }, seconds, whole) {
  const shift = clamp(seconds, whole.from - from, whole.to - to);
  return { from: from + shift, to: to + shift };
}

/** So wide that an interval fills a quarter, or that a few samples stand around an instant. */
function windowAround(start, end, signals, whole) {
  const nearby = signals.map((signal) => {
    const index = indexAt(signal, start);
    const at = (i) => signal.times[clamp(i, 0, signal.times.length - 1)];
    return at(index + 10) - at(index - 10);
  });
  const context = Math.min(whole.to - whole.from, ...nearby.filter((span) => span > 0));
  const half = Math.max(2 * (end - start), context / 2);
  const centre = (start + end) / 2;
  return { from: centre - half, to: centre + half };
}
