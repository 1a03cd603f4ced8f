// What a signal is at a time.

/** The first of `count` indices for which `isBefore` no longer holds. */
function partitionPoint(count, isBefore) {
  let low = 0;
  let high = count;
  while (low < high) {
    const middle = (low + high) >>> 1;
    if (isBefore(middle)) {
      low = middle + 1;
    } else {
      high = middle;
    }
  }
  return low;
}

/** The index of the sample that counts at `time`; -1 before the first. */
function indexAt({ times, values }, time) {
  const index = partitionPoint(times.length, (i) => times[i] <= time) - 1;
  // A piece is known at its end, too, whatever begins just after it and shares its time.
  for (let i = index; i >= 0 && times[i] === time; --i) {
    if (!Number.isNaN(values[i])) {
      return i;
    }
  }
  return index;
}

/** Held, or on the line between two samples; not a number in holes. */
function valueAt(signal, time) {
  const { kind, times, values } = signal;
  const index = indexAt(signal, time);
  if (index < 0) {
    return NaN;
  }
  if (kind !== "lines" || times[index] === time || index + 1 === times.length) {
    return values[index];
  }
  const share = (time - times[index]) / (times[index + 1] - times[index]);
  return values[index] * (1 - share) + values[index + 1] * share;
}

/** Whether there is a value, if only NaN. */
function isKnownAt(signal, time) {
  const index = indexAt(signal, time);
  return index >= 0 && !signal.closes[index];
}

function hasSampleAt(signal, time) {
  return signal.times[indexAt(signal, time)] === time;
}

function signalText({ kind, levels, unit }, value) {
  if (Number.isNaN(value)) {
    return "no value";
  }
  if (kind === "truth") {
    return value ? "true" : "false";
  }
  if (kind === "levels") {
    return levels[value];
  }
  return unit ? `${numberText(value)} ${unit}` : numberText(value);
}

/** Between samples of a thinned signal others may stand that the page does not have. */
function readingAt(signal, time) {
  const value = valueAt(signal, time);
  if (Number.isNaN(value)) {
    return isKnownAt(signal, time) ? "NaN" : "no value";
  }
  if (hasSampleAt(signal, time)) {
    return signalText(signal, value);
  }
  const text = signalText(signal, signal.kind === "lines" ? Number(value.toPrecision(9)) : value);
  return signal.shown < signal.samples ? `≈ ${text}` : text;
}

/** Times of the samples next to `time`, on both sides. */
function neighbourTimes({ times }, time) {
  const before = partitionPoint(times.length, (i) => times[i] < time) - 1;
  const after = partitionPoint(times.length, (i) => times[i] <= time);
  return [times[before], times[before + 1], times[after]].filter((near) => near !== undefined);
}
