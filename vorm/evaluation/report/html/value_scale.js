// The vertical axis of a signal: where its values stand, and which of them are named.

/** Pixels above the greatest and below the least value. */
const valueMargin = 8;

/** Gives `height`, `y` for the place of a value, and `ticks` as values with texts. */
function valueScale(signal, thresholds) {
  if (signal.kind === "truth") {
    return { height: 44, y: placing(0, 1, 44), ticks: levelTicks(["false", "true"]) };
  }
  if (signal.kind === "levels") {
    return levelScale(signal.levels);
  }
  const height = 120;
  const { least, greatest } = valueRange(signal.values, thresholds);
  const step = tickStep(greatest / 5 - least / 5, 1);
  const values = ticks(least, greatest, step);
  return {
    height,
    y: placing(least, greatest, height),
    ticks: values.map((value) => ({ value, text: numberText(value) })),
  };
}

function levelScale(levels) {
  const height = clamp(levels.length * 16 + 2 * valueMargin, 48, 260);
  const spacing = (height - 2 * valueMargin) / Math.max(levels.length - 1, 1);
  const every = Math.ceil(12 / spacing);
  return {
    height,
    y: placing(0, Math.max(levels.length - 1, 1), height),
    ticks: levelTicks(levels).filter(({ value }) => value % every === 0),
  };
}

function levelTicks(levels) {
  return levels.map((text, value) => ({ value, text }));
}

function valueRange(values, thresholds) {
  let least = Infinity;
  let greatest = -Infinity;
  for (const some of [values, thresholds]) {
    for (const value of some) {
      if (Number.isFinite(value)) {
        least = Math.min(least, value);
        greatest = Math.max(greatest, value);
      }
    }
  }
  if (least > greatest) {
    return { least: 0, greatest: 1 };
  }
  if (least === greatest) {
    const margin = Math.abs(least) * 0.1 || 1;
    return { least: least - margin, greatest: greatest + margin };
  }
  return { least, greatest };
}

/** Infinite values stand at the edges. Halves, because the greatest doubles are as far apart. */
function placing(least, greatest, height) {
  const bottom = height - valueMargin;
  return (value) => {
    const share = (value / 2 - least / 2) / (greatest / 2 - least / 2);
    return clamp(bottom - share * (bottom - valueMargin), 2, height - 2);
  };
}

function valueAxis({ height, y, ticks: marks }, frame) {
  const lines = marks.map(({ value }) => `M${frame.left} ${pixel(y(value))}H${frame.right}`);
  const room = Math.floor((frame.left - 8) / characterWidth);
  return [
    svg("path", { class: "grid", d: lines.join("") }),
    svg("path", { class: "frame", d: `M${frame.left} 0V${height}` }),
    ...marks.map(({ value, text }) =>
      shortText(text, room, { class: "label", x: frame.left - 6, y: pixel(y(value)) + 4 }),
    ),
  ];
}
