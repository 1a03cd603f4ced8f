// Numbers as people read them: texts, and ticks at 1, 2 and 5 times powers of ten.

function clamp(value, least, greatest) {
  return Math.min(Math.max(value, least), greatest);
}

function numberText(number) {
  if (!Number.isFinite(number)) {
    return number > 0 ? "∞" : "-∞";
  }
  const size = Math.abs(number);
  const isPlain = size === 0 || (size >= 1e-4 && size < 1e7);
  return isPlain ? String(number + 0) : number.toExponential().replace("e+", "e");
}

/** The least of 1, 2 and 5 times a power of ten that divides `span` into at most `count` parts. */
function tickStep(span, count) {
  const raw = span / count;
  const exponent = Math.floor(Math.log10(raw));
  // From a text, because powers of ten that are computed can be off by a digit.
  const steps = ["1", "2", "5", "10"].map((factor) => Number(`${factor}e${exponent}`));
  return steps.find((step) => step >= raw) ?? steps.at(-1);
}

/** Multiples of `step` in [from, to], where `shift` is how far 0 stands after a multiple. */
function ticks(from, to, step, shift = 0) {
  const first = Math.ceil((from + shift) / step);
  const count = Math.floor((to + shift) / step) - first + 1;
  // Counted, because adding 1 no longer changes a multiple beyond 2^53.
  const length = clamp(count, 0, 100) || 0;
  return Array.from({ length }, (_, index) =>
    Number(((first + index) * step - shift).toPrecision(15)),
  );
}
