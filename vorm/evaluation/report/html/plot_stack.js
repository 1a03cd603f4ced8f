// The plots of an assessment, on one time axis, with a cursor through all of them.

class PlotStack {
  #box;
  #drawing;
  #signals;
  #plots;
  #frame;
  #axis = svg("svg");
  #cursorLine = svg("line", { class: "cursor", y1: 0, y2: "100%" });
  #selection = svg("rect", { class: "selection", y: 0, height: "100%" });
  #time = html("span", { class: "time" });
  #spoken = html("p", { role: "status", class: "spoken" });
  #cursor = null;
  #shownFailure = null;
  #isScheduled = false;
  whole;
  window;
  surface;

  constructor(box, { origin, clock, signals, assessments }) {
    this.#box = box;
    this.#drawing = { times: { origin, clock }, ...assessments[Number(box.dataset.assessment)] };
    this.#signals = this.#drawing.signals.map((index) => signals[index]);
    this.whole = wholeWindow(this.#drawing);
    this.window = this.whole;
    this.#plots = [new VerdictBand(this.#drawing), ...this.#signalPlots(signals)];
    // A place to read times from until the first drawing.
    this.#frame = timeFrame(this.whole, paperWidth, this.#gutter(paperWidth), this.#times);
    this.surface = html("div", { class: "surface", role: "group", tabindex: 0 });
    this.#build();
  }

  get id() {
    return this.#box.closest("details").id;
  }

  get origin() {
    return this.#times.origin;
  }

  get failures() {
    return this.#drawing.failures;
  }

  get isZoomed() {
    return this.window.from !== this.whole.from || this.window.to !== this.whole.to;
  }

  show(window) {
    this.window = fittedWindow(window, this.whole);
    this.#shownFailure = null;
    this.schedule();
    this.#box.dispatchEvent(new CustomEvent("zoom", { bubbles: true, detail: this }));
  }

  zoom(factor, centre) {
    this.show(roundedWindow(zoomedWindow(this.window, factor, centre)));
  }

  pan(seconds) {
    this.show(roundedWindow(pannedWindow(this.window, seconds, this.whole)));
  }

  /** Drawing waits for the next frame, so that many events in one cost one drawing. */
  schedule() {
    if (!this.#isScheduled) {
      this.#isScheduled = true;
      requestAnimationFrame(() => {
        this.#isScheduled = false;
        this.draw(this.#box.clientWidth);
      });
    }
  }

  draw(width) {
    if (width === 0) {
      return;
    }
    this.#frame = timeFrame(this.window, width, this.#gutter(width), this.#times);
    this.#plots.forEach((plot) => plot.draw(this.#frame, this.#drawing));
    const axis = timeAxis(this.#frame, this.#times);
    this.#axis.replaceWith(axis);
    this.#axis = axis;
    this.#drawCursor();
  }

  timeAt(x) {
    return this.#frame.timeAt(x);
  }

  /** The sample nearest to a pixel, or else a time with no more digits than pixels tell apart. */
  sampleTimeAt(x) {
    const time = this.#frame.timeAt(x);
    const distance = (near) => Math.abs(this.#frame.x(near) - x);
    const nearest = this.#neighbours(time).reduce(
      (best, near) => (distance(near) < distance(best) ? near : best),
      Infinity,
    );
    return distance(nearest) <= 4 ? nearest : this.#roundTime(time);
  }

  select(x, otherX) {
    const { left, right } = this.#frame;
    const [start, end] = [
      clamp(Math.min(x, otherX), left, right),
      clamp(Math.max(x, otherX), left, right),
    ];
    this.#selection.setAttribute("x", start);
    this.#selection.setAttribute("width", end - start);
  }

  moveCursor(time) {
    this.#cursor = time;
    this.#drawCursor();
  }

  /** To the next sample on that side that is at least a pixel away, but never far. */
  stepCursor(direction) {
    const { from, to } = this.window;
    const pixelTime = (to - from) / (this.#frame.right - this.#frame.left);
    const start = this.#cursor ?? (from + to) / 2;
    const farthest = this.#roundTime(start + direction * 20 * pixelTime);
    const isNear = (time) =>
      (time - start) * direction >= pixelTime && (time - farthest) * direction <= 0;
    const next = this.#neighbours(start + direction * pixelTime).filter(isNear);
    const order = (one, other) => (one - other) * direction;
    const target = next.sort(order)[0] ?? farthest;
    this.moveCursor(clamp(target, this.whole.from, this.whole.to));
    if (target < from || target > to) {
      this.pan(target - (from + to) / 2);
    }
    this.#say(this.#readings());
  }

  /**
   * Shows the failing interval after (1) or before (-1) the cursor, the one that was shown last, or
   * the middle; the first or the last one where nothing was looked at yet.
   */
  showFailure(direction) {
    const { failures } = this;
    const middle = (this.window.from + this.window.to) / 2;
    const place = this.isZoomed ? middle : -direction * Infinity;
    const time = this.#cursor ?? this.#shownFailure ?? place;
    const count = failures.length / 2;
    const index =
      direction > 0
        ? partitionPoint(count, (i) => failures[2 * i] <= time)
        : partitionPoint(count, (i) => failures[2 * i] < time) - 1;
    if (index < 0 || index >= count) {
      this.#say(direction > 0 ? "No later failure" : "No earlier failure");
      return;
    }
    const [start, end] = failures.slice(2 * index, 2 * index + 2);
    this.show(roundedWindow(windowAround(start, end, this.#signals, this.whole)));
    this.#shownFailure = start;
    this.moveCursor(start);
    this.#say(`Failure ${index + 1} of ${count}; ${this.#readings()}`);
  }

  #build() {
    const name = this.#box.closest("details").querySelector("h3").textContent;
    this.#box.setAttribute("role", "group");
    this.#box.setAttribute("aria-label", `Plots of ${name}`);
    this.surface.setAttribute("aria-label", `Plots of ${name}, press ? for keys`);
    const overlay = svg("svg", { class: "overlay", "aria-hidden": "true" });
    overlay.append(this.#selection, this.#cursorLine);
    this.surface.append(...this.#plots.map(({ element }) => element), this.#axis, overlay);
    const bar = html("div", { class: "bar" }, ...commandButtons(this), this.#time);
    this.#box.append(bar, this.surface, helpOf(this), this.#spoken);
    followKeys(this);
    followPointer(this);
  }

  #signalPlots(all) {
    const { signals, thresholds, causes } = this.#drawing;
    return signals.map((index) => {
      const compared = thresholds.filter(({ signal }) => signal === index);
      return new SignalPlot(
        all[index],
        compared.map(({ value }) => value),
        causes.filter((cause) => cause.signals.includes(index)),
      );
    });
  }

  /** What tells the times of the page: `origin`, and the `clock` of a recording with dates. */
  get #times() {
    return this.#drawing.times;
  }

  #gutter(width) {
    const date = this.#times.clock ? "2026-11-22".length : 0;
    const longest = Math.max(date, ...this.#plots.map(({ labelLength = 0 }) => labelLength));
    return Math.round(clamp(longest * characterWidth + 14, 62, Math.max(width * 0.3, 62)));
  }

  #neighbours(time) {
    const samples = this.#signals.flatMap((signal) => neighbourTimes(signal, time));
    return [...samples, ...neighbourTimes({ times: this.failures }, time)];
  }

  #roundTime(time) {
    const density = (this.#frame.right - this.#frame.left) / (this.window.to - this.window.from);
    return Number(time.toFixed(clamp(Math.ceil(Math.log10(density)), 0, 20)));
  }

  #drawCursor() {
    const time = this.#cursor;
    const isVisible = time !== null && time >= this.window.from && time <= this.window.to;
    this.#cursorLine.classList.toggle("shown", isVisible);
    if (isVisible) {
      this.#cursorLine.setAttribute("x1", this.#frame.x(time));
      this.#cursorLine.setAttribute("x2", this.#frame.x(time));
    }
    this.#time.textContent = time === null ? "" : `at ${momentText(this.#times, time)}`;
    this.#plots.forEach((plot) => plot.read(time));
  }

  #readings() {
    return [this.#time.textContent, ...this.#plots.map((plot) => plot.read(this.#cursor))].join(
      ", ",
    );
  }

  /** Only what keys and buttons do is said: a moving pointer would never stop talking. */
  #say(text) {
    this.#spoken.textContent = text;
  }
}

/** An instant is shown with some time around it. */
function wholeWindow({ from, to }) {
  return from < to ? { from, to } : { from: from - 0.5, to: to + 0.5 };
}
