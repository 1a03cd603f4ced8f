// Times of day below the plots of a recording that has dates: ticks where clocks show round times.

const daySeconds = 86400;

/** Lengths from a second to a day that divide the next longer thing that clocks show. */
const clockSteps = [
  ...[1, 2, 5, 10, 15, 30],
  ...[1, 2, 5, 10, 15, 30].map((minutes) => minutes * 60),
  ...[1, 2, 3, 6, 12, 24].map((hours) => hours * 3600),
];

/** The least step that divides `span` into at most `count` parts. */
function clockStep(span, count) {
  const raw = span / count;
  if (raw <= 0.5) {
    return tickStep(span, count);
  }
  const step = clockSteps.find((some) => some >= raw);
  return step ?? daySeconds * tickStep(span / daySeconds, count);
}

/** How far the origin stands after a round time of clocks that are so far ahead of UTC. */
function shiftAt({ origin }, ahead, step) {
  const local = decimalSum(decimal(origin), { digits: BigInt(ahead), places: 0 });
  const unit = 10n ** BigInt(local.places);
  const length = BigInt(Math.max(step, 1)) * unit;
  const rest = local.digits - floorOfQuotient(local.digits, length) * length;
  return Number(decimalText({ digits: rest, places: local.places }));
}

/** Ticks within the window, anew from each time on at which clocks are put forward or back. */
function clockTicks({ from, to }, step, clock) {
  const starts = clock.offsets.map(({ since }) => secondsAfter(clock.origin, String(since)));
  return clock.offsets.flatMap(({ ahead }, index) => {
    const end = starts[index + 1] ?? Infinity;
    const part = { from: Math.max(from, starts[index]), to: Math.min(to, end) };
    return part.from > part.to
      ? []
      : ticks(part.from, part.to, step, shiftAt(clock, ahead, step)).filter((tick) => tick < end);
  });
}

/**
 * What stands below each tick: the time of day, as precise as the step, or where the day is another
 * one than that of what stands to the left the date.
 */
function clockLabels(window, step, clock) {
  const decimals = decimal(String(Math.min(step, 1))).places;
  let day = clockReading(clock, window.from, decimals).date;
  return clockTicks(window, step, clock).map((tick) => {
    const { date, time, fraction, offset } = clockReading(clock, tick, decimals);
    const timeOfDay = (step < 60 ? time + fraction : time.slice(0, 5)) + offset;
    const isNewDay = date !== day;
    day = date;
    const newDay = time === "00:00:00" ? date : `${date} ${timeOfDay}`;
    return { tick, text: isNewDay ? newDay : timeOfDay };
  });
}

/** As many labels as there is room for, each with its tick. */
function clockLabelsFor(window, pixels, clock) {
  const span = window.to - window.from;
  const decimals = Math.max(Math.ceil(-Math.log10(span / 10)), 0);
  const characters = "00:00:00+00:00".length + decimals + 1;
  const step = clockStep(span, Math.max(pixels / (characters * characterWidth), 1));
  return clockLabels(window, step, clock);
}
