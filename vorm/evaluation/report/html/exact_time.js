// Times are decimals of any length: a double cannot hold the nanoseconds of a time since 1970.

function decimal(text) {
  const [, sign, whole, fraction = "", exponent = "0"] =
    /^(-?)(\d+)(?:\.(\d+))?(?:e([+-]\d+))?$/.exec(text);
  const places = fraction.length - Number(exponent);
  const digits = BigInt(sign + whole + fraction);
  return places < 0 ? { digits: digits * 10n ** BigInt(-places), places: 0 } : { digits, places };
}

function decimalSum(one, other) {
  const places = Math.max(one.places, other.places);
  const widened = (term) => term.digits * 10n ** BigInt(places - term.places);
  return { digits: widened(one) + widened(other), places };
}

function decimalText({ digits, places }) {
  const text = String(digits < 0n ? -digits : digits).padStart(places + 1, "0");
  const point = text.length - places;
  const fraction = text.slice(point).replace(/0+$/, "");
  return (digits < 0n ? "-" : "") + text.slice(0, point) + (fraction && `.${fraction}`);
}

/** The time that stands `seconds` after `origin`, a text of whole seconds, to the last digit. */
function absoluteTime(origin, seconds) {
  return decimalText(decimalSum(decimal(origin), decimal(String(seconds))));
}

/** The inverse of `absoluteTime`: seconds after `origin` of a time as the page writes it. */
function secondsAfter(origin, time) {
  const { digits, places } = decimal(origin);
  return Number(decimalText(decimalSum(decimal(time), { digits: -digits, places })));
}
