// Points as path data. Runs are points between gaps.

function pixel(number) {
  return Math.round(number * 100) / 100;
}

function runsOf(points) {
  const runs = [];
  let run = null;
  for (const point of points) {
    if (!Number.isNaN(point.value)) {
      if (!run) {
        run = { points: [], end: point.x };
        runs.push(run);
      }
      run.points.push(point);
      run.end = point.x;
    } else if (run) {
      run.end = point.x;
      run = null;
    }
  }
  return runs;
}

function runPath({ points, end }, y, isHeld) {
  let path = "";
  for (const { x, value } of points) {
    const to = `${pixel(x)} ${pixel(y(value))}`;
    if (path === "") {
      path = `M${to}`;
    } else {
      path += isHeld ? `H${pixel(x)}V${pixel(y(value))}` : `L${to}`;
    }
  }
  return isHeld ? `${path}H${pixel(end)}` : path;
}

function areaPath(run, y, bottom) {
  return `${runPath(run, y, true)}V${bottom}H${pixel(run.points[0].x)}Z`;
}

function dotPath({ x, value }, y, radius = 2.5) {
  const arc = `a${radius} ${radius} 0 1 0`;
  return `M${pixel(x - radius)} ${pixel(y(value))}${arc} ${2 * radius} 0${arc} ${-2 * radius} 0`;
}

/** Runs so short that a stroke would hardly show them. */
function isDot(run) {
  return run.end - run.points[0].x < 2 && run.points.at(-1).x - run.points[0].x < 2;
}

/** A triangle at the edge beyond which an infinite value lies. */
function infinityPath({ x, value }, y) {
  const edge = pixel(y(value));
  const inward = value > 0 ? 6 : -6;
  return `M${pixel(x)} ${edge}l4 ${inward}h-8z`;
}

function spansPath(spans, top, height) {
  return spans
    .map(({ start, end }) => `M${pixel(start)} ${top}H${pixel(end)}v${height}H${pixel(start)}z`)
    .join("");
}
