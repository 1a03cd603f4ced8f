// What is drawn of data that has more of it than a plot has pixels: no extreme ever vanishes.

/** Of the samples in a column of pixels: first, least, greatest, last, and the ends of its gaps. */
function columnSamples(values, begin, end) {
  const kept = new Set();
  let least = -1;
  let greatest = -1;
  let last = -1;
  for (let i = begin; i < end; ++i) {
    if (!Number.isNaN(values[i])) {
      if (last < 0) {
        least = greatest = i;
        kept.add(i);
      }
      least = values[i] < values[least] ? i : least;
      greatest = values[i] > values[greatest] ? i : greatest;
      last = i;
    }
  }
  const column = values.subarray(begin, end);
  const gaps = [column.findIndex(Number.isNaN), column.findLastIndex(Number.isNaN)];
  gaps.filter((gap) => gap >= 0).forEach((gap) => kept.add(begin + gap));
  [least, greatest, last].filter((i) => i >= 0).forEach((i) => kept.add(i));
  return [...kept];
}

/** Indices in [begin, end) of the samples that are drawn, in order. */
function keptSamples({ times, values }, begin, end, column) {
  const kept = [];
  let columnBegin = begin;
  while (columnBegin < end) {
    const current = column(times[columnBegin]);
    let columnEnd = columnBegin + 1;
    while (columnEnd < end && column(times[columnEnd]) === current) {
      ++columnEnd;
    }
    kept.push(...columnSamples(values, columnBegin, columnEnd).sort((one, other) => one - other));
    columnBegin = columnEnd;
  }
  return kept;
}

/** Where a signal goes in a frame: points, with its values at both edges and NaN in gaps. */
function visiblePoints(signal, frame) {
  const { times, values } = signal;
  const begin = partitionPoint(times.length, (i) => times[i] < frame.from);
  const end = partitionPoint(times.length, (i) => times[i] <= frame.to);
  const points = [{ x: frame.left, value: valueAt(signal, frame.from) }];
  for (const index of keptSamples(signal, begin, end, frame.column)) {
    points.push({ x: frame.x(times[index]), value: values[index] });
  }
  if (end === 0 || times[end - 1] < frame.to) {
    points.push({ x: frame.right, value: valueAt(signal, frame.to) });
  }
  return points;
}

/**
 * Visible intervals of `ends` (start, end, start, end, ...) in pixels: none narrower than
 * `leastWidth`, and those that touch each other merged.
 */
function visibleSpans(ends, frame, leastWidth = 2) {
  const spans = [];
  const first = partitionPoint(ends.length / 2, (i) => ends[2 * i + 1] < frame.from);
  for (let i = 2 * first; i < ends.length && ends[i] <= frame.to; i += 2) {
    const left = frame.x(Math.max(ends[i], frame.from));
    const right = frame.x(Math.min(ends[i + 1], frame.to));
    const missing = Math.max(leastWidth - (right - left), 0);
    const start = clamp(left - missing / 2, frame.left, frame.right - leastWidth);
    const end = Math.max(right, start + leastWidth);
    const last = spans.at(-1);
    if (last && start <= last.end) {
      last.end = Math.max(last.end, end);
    } else {
      spans.push({ start, end });
    }
  }
  return spans;
}
