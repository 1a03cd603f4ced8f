// What clocks show, where a recording has dates. The page brings along how far its zone is ahead of
// UTC, and never asks for the zone of the browser, nor for what that knows of zones.

function floorOfQuotient(number, divisor) {
  return (number - (((number % divisor) + divisor) % divisor)) / divisor;
}

/** Rounded to so many decimals, halves to the greater number: its floor, and `.25`. */
function wholeAndFraction({ digits, places }, decimals) {
  const excess = 10n ** BigInt(Math.max(places - decimals, 0));
  const kept = digits * 10n ** BigInt(Math.max(decimals - places, 0));
  const rounded = floorOfQuotient(kept + excess / 2n, excess);
  const unit = 10n ** BigInt(decimals);
  const whole = floorOfQuotient(rounded, unit);
  const fraction = String(rounded - whole * unit).padStart(decimals, "0");
  return { whole: Number(whole), fraction: decimals ? `.${fraction}` : "" };
}

/** The place of the offset that clocks have at a second of UTC. */
function offsetIndex(offsets, utc) {
  return Math.max(partitionPoint(offsets.length, (i) => offsets[i].since <= utc) - 1, 0);
}

/** Whether clocks show the same at another time, since they were put back between the two. */
function isShownTwice(offsets, utc, index) {
  return [index - 1, index + 1].some((other) => {
    const there = offsets[other];
    const same = there && utc + offsets[index].ahead - there.ahead;
    return there && same >= there.since && offsetIndex(offsets, same) === other;
  });
}

/** `+02:00` */
function offsetText(ahead) {
  const minutes = Math.floor(Math.abs(ahead) / 60);
  const parts = [Math.floor(minutes / 60), minutes % 60];
  return (ahead < 0 ? "-" : "+") + parts.map((part) => String(part).padStart(2, "0")).join(":");
}

/**
 * The parts of what clocks show at a time, rounded to so many decimals of a second: `date`, `time`
 * up to whole seconds, `fraction`, and `offset`, which is empty but where they show it twice.
 */
function clockReading({ origin, offsets }, seconds, decimals) {
  const instant = decimalSum(decimal(origin), decimal(String(seconds)));
  const { whole, fraction } = wholeAndFraction(instant, decimals);
  const index = offsetIndex(offsets, whole);
  const { ahead } = offsets[index];
  const [date, time] = new Date((whole + ahead) * 1000).toISOString().slice(0, 19).split("T");
  const offset = isShownTwice(offsets, whole, index) ? offsetText(ahead) : "";
  return { date, time, fraction, offset };
}

/** To the digits of the seconds that stand beside it, and to milliseconds at least. */
function dateParts(clock, seconds) {
  const decimals = Math.max(decimal(String(seconds)).places, 3);
  const { date, time, fraction, offset } = clockReading(clock, seconds, decimals);
  return { date, time: time + fraction.replace(/\.?0+$/, "") + offset };
}

/** `4.5 s (2026-11-22 10:30:00.25)` */
function momentText({ origin, clock }, seconds) {
  const number = `${absoluteTime(origin, seconds)} s`;
  if (!clock) {
    return number;
  }
  const { date, time } = dateParts(clock, seconds);
  return `${number} (${date} ${time})`;
}

/** `from 3 s to 4.5 s (2026-11-22 10:30:00 to 10:30:01.5)` */
function spanText({ origin, clock }, { from, to }) {
  const numbers = `from ${absoluteTime(origin, from)} s to ${absoluteTime(origin, to)} s`;
  if (!clock) {
    return numbers;
  }
  const [start, end] = [from, to].map((time) => dateParts(clock, time));
  const endDate = end.date === start.date ? "" : `${end.date} `;
  return `${numbers} (${start.date} ${start.time} to ${endDate}${end.time})`;
}
