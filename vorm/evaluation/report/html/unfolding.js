// Of each assessment what stands below its formula becomes elements when it is first opened: of
// thousands on a page few ever are.

const unfoldingActions = [];

/** What is to be done with each assessment that has its elements, now or later. */
function onUnfolding(action) {
  unfoldingActions.push(action);
}

/** What noscript holds was written as a part of the page, its texts escaped as all others are. */
function unfold(details) {
  const folded = details.querySelector(":scope > noscript");
  if (folded) {
    folded.insertAdjacentHTML("afterend", folded.textContent);
    folded.remove();
    unfoldingActions.forEach((action) => action(details));
  }
}

function openAssessment(details) {
  unfold(details);
  details.setAttribute("open", "");
}

function unfoldWhatIsOpen() {
  // The event does not bubble.
  document.addEventListener("toggle", ({ target }) => target.open && unfold(target), true);
  document.querySelectorAll("details[open]").forEach(unfold);
}
