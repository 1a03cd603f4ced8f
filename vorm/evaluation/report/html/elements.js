// Elements are made of names, attributes and texts: no text of a report is ever read as markup.

function fill(element, attributes, children) {
  for (const [name, value] of Object.entries(attributes)) {
    if (value !== undefined) {
      element.setAttribute(name, value);
    }
  }
  element.append(...children);
  return element;
}

function html(name, attributes = {}, ...children) {
  return fill(document.createElement(name), attributes, children);
}

function svg(name, attributes = {}, ...children) {
  return fill(document.createElementNS("http://www.w3.org/2000/svg", name), attributes, children);
}

function button(label, text, action) {
  const element = html("button", { type: "button", "aria-label": label, title: label }, text);
  element.addEventListener("click", action);
  return element;
}

/** A text that at most `length` characters are shown of, and all where the pointer rests on it. */
function shortText(text, length, attributes) {
  const characters = [...text];
  if (characters.length <= length) {
    return svg("text", attributes, text);
  }
  const shown = `${characters.slice(0, Math.max(length - 1, 1)).join("")}…`;
  return svg("text", attributes, shown, svg("title", {}, text));
}
