// When plots are drawn: as they come into view, as their width changes, and for paper.

const stacks = new Map();

function stackOf(box) {
  if (!stacks.has(box)) {
    stacks.set(box, new PlotStack(box, island(box.dataset.recording)));
  }
  return stacks.get(box);
}

/** About what a sheet of paper takes, so that texts keep their size on it. */
const paperWidth = 680;

function drawForPaper() {
  for (const box of document.querySelectorAll("details[open] .plots")) {
    if (!box.closest("[hidden]")) {
      stackOf(box).draw(paperWidth);
    }
  }
}

function drawPlots() {
  document.body.append(hatchPatterns());
  const widths = new ResizeObserver((changes) => {
    changes.forEach(({ target }) => stackOf(target).schedule());
  });
  const views = new IntersectionObserver(
    (changes) => {
      for (const { target, isIntersecting } of changes) {
        if (isIntersecting) {
          views.unobserve(target);
          stackOf(target);
          widths.observe(target);
        }
      }
    },
    { rootMargin: "400px" },
  );
  document.addEventListener("unfold", ({ target }) => {
    target.querySelectorAll(".plots").forEach((box) => views.observe(box));
  });
  addEventListener("beforeprint", drawForPaper);
  addEventListener("afterprint", () => stacks.forEach((stack) => stack.schedule()));
}
