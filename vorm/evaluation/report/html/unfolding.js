// Of each assessment what stands below its formula becomes elements when it is first opened: of
// thousands on a page few ever are.

/** What noscript holds was written as a part of the page, its texts escaped as all others are. */
function unfold(details) {
  const folded = details.querySelector(":scope > noscript");
  if (folded) {
    folded.insertAdjacentHTML("afterend", folded.textContent);
    folded.remove();
    details.dispatchEvent(new CustomEvent("unfold", { bubbles: true }));
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
