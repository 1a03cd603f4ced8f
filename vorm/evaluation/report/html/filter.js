// Which assessments are shown: by verdict and by words, in the matrix and below it.

const verdictSigns = {
  FAIL: "✗",
  ERROR: "!",
  WARNING: "⚠",
  NO_RESULT: "?",
  OPEN: "?",
  INFO: "ℹ",
  PASS: "✓",
};

/** What can be shown or not: assessments, and errors that stand for a whole recording. */
function filterItems() {
  return [...document.querySelectorAll("section.recording")].flatMap((recording) => {
    const name = recording.querySelector("h2").textContent;
    const assessments = [...recording.querySelectorAll("details.assessment")].map((element) => ({
      element,
      recording,
      verdict: element.classList[1],
      text: [name, ...textsOf(element, "h3, .formula, .tags")].join("\n").toLowerCase(),
    }));
    const error = recording.querySelector(":scope > .error");
    const asItem = { element: error, recording, verdict: "ERROR", text: name.toLowerCase() };
    return error ? [asItem, ...assessments] : assessments;
  });
}

function textsOf(element, selector) {
  return [...element.querySelectorAll(selector)].map(({ textContent }) => textContent);
}

class Filter {
  #items = filterItems();
  #matrix = document.querySelector("table.matrix");
  #shownCount = html("p", { role: "status", class: "shown-count" });
  #search = html("input", { type: "search", id: "search", autocomplete: "off" });
  #verdictButtons = this.#makeVerdictButtons();

  element() {
    this.#search.addEventListener("input", () => this.apply());
    const actions = [html("button", { type: "button" }, "Close all")];
    actions[0].addEventListener("click", () => this.#close());
    if (this.#verdictButtons.FAIL) {
      actions.unshift(html("button", { type: "button" }, "Open all failing"));
      actions[0].addEventListener("click", () => this.#openFailing());
    }
    return html(
      "search",
      { class: "filter" },
      html(
        "div",
        { role: "group", "aria-label": "Verdicts" },
        ...Object.values(this.#verdictButtons),
      ),
      html("label", { for: "search" }, "Search"),
      this.#search,
      html("div", {}, ...actions),
      this.#shownCount,
    );
  }

  apply() {
    const words = this.#search.value.trim().toLowerCase();
    const verdicts = Object.keys(this.#verdictButtons).filter((verdict) =>
      this.#isPressed(verdict),
    );
    const recordings = new Map();
    let count = 0;
    for (const { element, recording, verdict, text } of this.#items) {
      const isShown = text.includes(words) && (!verdicts.length || verdicts.includes(verdict));
      element.hidden = !isShown;
      count += isShown ? 1 : 0;
      recordings.set(recording, recordings.get(recording) || isShown);
    }
    recordings.forEach((isShown, recording) => (recording.hidden = !isShown));
    filterMatrix(this.#matrix);
    this.#shownCount.textContent = `${count} of ${this.#items.length} shown`;
  }

  /** A link leads to what is filtered away as well. */
  reveal(element) {
    if (element.closest("[hidden]")) {
      this.#search.value = "";
      Object.values(this.#verdictButtons).forEach((each) =>
        each.setAttribute("aria-pressed", false),
      );
      this.apply();
    }
  }

  #makeVerdictButtons() {
    const made = Object.keys(verdictSigns).flatMap((verdict) => {
      const count = this.#items.filter((item) => item.verdict === verdict).length;
      return count ? [[verdict, this.#verdictButton(verdict, count)]] : [];
    });
    return Object.fromEntries(made);
  }

  #verdictButton(verdict, count) {
    const text = `${verdictSigns[verdict]} ${verdict} ${count}`;
    const attributes = { type: "button", "aria-pressed": "false", class: verdict };
    const element = html("button", attributes, text);
    element.addEventListener("click", () => {
      element.setAttribute("aria-pressed", !this.#isPressed(verdict));
      this.apply();
    });
    return element;
  }

  #isPressed(verdict) {
    return this.#verdictButtons[verdict].getAttribute("aria-pressed") === "true";
  }

  #openFailing() {
    for (const { element, verdict } of this.#items) {
      if (verdict === "FAIL" && !element.hidden) {
        openAssessment(element);
      }
    }
  }

  #close() {
    document.querySelectorAll("details[open]").forEach((details) => (details.open = false));
  }
}

/** Hides rows and columns all of whose cells lead to something hidden, and dims single cells. */
function filterMatrix(matrix) {
  const shownColumns = new Set([0]);
  for (const row of matrix.tBodies[0].rows) {
    row.hidden = isTargetHidden(row.cells[0]);
    cellsOf(row).forEach((cell, column) => {
      const isHidden = isTargetHidden(cell);
      cell.classList.toggle("unmatched", isHidden);
      if (!isHidden) {
        shownColumns.add(column);
      }
    });
  }
  for (const row of matrix.rows) {
    cellsOf(row).forEach((cell, column) => (cell.hidden = !shownColumns.has(column)));
    if (isOneCell(row)) {
      row.cells[1].colSpan = Math.max(shownColumns.size - 1, 1);
    }
  }
}

/** An error of a recording takes the place of the cells of all columns. */
function isOneCell(row) {
  return row.classList.contains("ERROR");
}

function cellsOf(row) {
  return isOneCell(row) ? [] : [...row.cells];
}

function isTargetHidden(cell) {
  const target = document.getElementById(cell.querySelector("a").hash.slice(1));
  return Boolean(target?.closest("[hidden]"));
}

function addFilter() {
  const filter = new Filter();
  const overview = document.querySelector(".overview");
  overview.before(filter.element());
  overview.setAttribute("tabindex", "0");
  filter.apply();
  document.addEventListener("reveal", ({ target }) => filter.reveal(target));
}
