// Links to an assessment (#r1a2) and to a part of its time (#r1a2@12.5..14), in absolute times.

const linkForm = /^#(r\d+a\d+)(?:@(-?\d+(?:\.\d+)?)\.\.(-?\d+(?:\.\d+)?))?$/;

function linkTo({ id, origin, window, isZoomed }) {
  const { from, to } = window;
  const times = `@${absoluteTime(origin, from)}..${absoluteTime(origin, to)}`;
  return `#${id}${isZoomed ? times : ""}`;
}

function followLink() {
  const [, id, from, to] = linkForm.exec(location.hash) ?? [];
  const details = id && document.getElementById(id);
  if (!details) {
    return;
  }
  details.dispatchEvent(new CustomEvent("reveal", { bubbles: true }));
  openAssessment(details);
  const box = details.querySelector(".plots");
  if (box && from !== undefined) {
    const stack = stackOf(box);
    const [start, end] = [from, to].map((time) => secondsAfter(stack.origin, time));
    stack.show(clippedWindow({ from: start, to: end }, stack.whole));
  }
  details.scrollIntoView();
}

function keepLinks() {
  let timer = 0;
  document.addEventListener("zoom", ({ detail: stack }) => {
    // Browsers refuse more than a few changes of the address a second.
    clearTimeout(timer);
    timer = setTimeout(() => history.replaceState(null, "", linkTo(stack)), 200);
  });
  addEventListener("hashchange", followLink);
  followLink();
}
