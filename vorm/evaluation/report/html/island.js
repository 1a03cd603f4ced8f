// The data of a recording: parsed when its first plot is drawn, since most are never looked at.

const islands = new Map();

function island(recording) {
  if (!islands.has(recording)) {
    const data = JSON.parse(document.getElementById(`data-${recording}`).textContent);
    islands.set(recording, { ...data, signals: data.signals.map(flatSignal) });
  }
  return islands.get(recording);
}

/**
 * A signal whose pieces stand in one array, each closed by a sample that is not a number, which
 * `closes` tells from one that was recorded, so that one search finds a time and one pass draws
 * everything.
 */
function flatSignal({ pieces, ...signal }) {
  const length = pieces.reduce((sum, piece) => sum + piece.t.length + 2, 0);
  const times = new Float64Array(length);
  const values = new Float64Array(length);
  const closes = new Uint8Array(length);
  let count = 0;
  const push = (time, value) => {
    times[count] = time;
    values[count++] = value ?? NaN;
  };
  for (const { t, v, end } of pieces) {
    t.forEach((time, index) => push(time, v[index]));
    if (end > t.at(-1)) {
      push(end, v.at(-1));
    }
    closes[count] = 1;
    push(end, NaN);
  }
  return { ...signal, times: times.subarray(0, count), values: values.subarray(0, count), closes };
}
