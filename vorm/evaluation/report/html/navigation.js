// Keys, buttons and the pointer. One table says what there is, for all three and for the help.

const span = ({ window }) => window.to - window.from;

const commands = [
  { keys: ["ArrowLeft"], sign: "←", label: "Earlier", run: (stack) => stack.pan(-span(stack) / 5) },
  { keys: ["ArrowRight"], sign: "→", label: "Later", run: (stack) => stack.pan(span(stack) / 5) },
  { keys: ["ArrowUp", "+", "="], sign: "+", label: "Zoom in", run: (stack) => stack.zoom(0.5) },
  { keys: ["ArrowDown", "-"], sign: "−", label: "Zoom out", run: (stack) => stack.zoom(2) },
  { keys: ["0"], sign: "whole", label: "Whole range", run: (stack) => stack.show(stack.whole) },
  {
    keys: ["p"],
    sign: "← failure",
    label: "Previous failure",
    needsFailure: true,
    run: (stack) => stack.showFailure(-1),
  },
  {
    keys: ["n"],
    sign: "failure →",
    label: "Next failure",
    needsFailure: true,
    run: (stack) => stack.showFailure(1),
  },
  { keys: ["?"], sign: "?", label: "Help", run: (stack) => toggleHelp(stack) },
];

const cursorSteps = { ArrowLeft: -1, ArrowRight: 1 };

const keyNames = { ArrowLeft: "←", ArrowRight: "→", ArrowUp: "↑", ArrowDown: "↓" };

function commandsFor({ failures }) {
  return commands.filter(({ needsFailure }) => !needsFailure || failures.length > 0);
}

function commandButtons(stack) {
  return commandsFor(stack).map(({ label, sign, run }) => button(label, sign, () => run(stack)));
}

function helpOf(stack) {
  const keys = commandsFor(stack).flatMap((command) => [
    html("dt", {}, command.keys.map((key) => keyNames[key] ?? key).join(" ")),
    html("dd", {}, command.label),
  ]);
  return html(
    "div",
    { class: "help" },
    html(
      "p",
      {},
      "Drag to zoom, Shift+drag to move, Ctrl+wheel to zoom, double-click for all; keys once a plot " +
        "was clicked. Bars below a signal are causes, dashed lines what it is compared with.",
    ),
    html(
      "dl",
      { class: "keys", hidden: "" },
      ...keys,
      html("dt", {}, "Shift+← Shift+→"),
      html("dd", {}, "Move the cursor"),
    ),
  );
}

function toggleHelp({ surface }) {
  const keys = surface.parentElement.querySelector(".keys");
  keys.hidden = !keys.hidden;
}

function followKeys(stack) {
  stack.surface.addEventListener("keydown", (event) => {
    if (event.ctrlKey || event.altKey || event.metaKey) {
      return;
    }
    const step = event.shiftKey && cursorSteps[event.key];
    const command = commandsFor(stack).find(({ keys }) => keys.includes(event.key));
    if (step) {
      stack.stepCursor(step);
    } else if (command) {
      command.run(stack);
    } else {
      return;
    }
    event.preventDefault();
  });
}

function followPointer(stack) {
  const { surface } = stack;
  let drag = null;
  const xOf = (event) => event.clientX - surface.getBoundingClientRect().left;

  const begin = (event) => {
    if (event.button > 1 || !event.target.closest("svg")) {
      return;
    }
    // The middle button would scroll the page otherwise.
    event.preventDefault();
    surface.focus({ preventScroll: true });
    surface.setPointerCapture(event.pointerId);
    drag = { x: xOf(event), lastX: xOf(event), isPan: event.shiftKey || event.button === 1 };
  };
  const move = (event) => {
    const x = xOf(event);
    if (drag?.isPan) {
      stack.pan(stack.timeAt(drag.lastX) - stack.timeAt(x));
    } else if (drag) {
      stack.select(drag.x, x);
    }
    if (drag) {
      drag.lastX = x;
    }
    stack.moveCursor(stack.sampleTimeAt(x));
  };
  const end = (event) => {
    const selected = drag && !drag.isPan && Math.abs(xOf(event) - drag.x) > 4;
    if (selected) {
      const [from, to] = [stack.timeAt(drag.x), stack.timeAt(xOf(event))].sort((a, b) => a - b);
      stack.show(roundedWindow({ from, to }));
    }
    cancel();
  };
  const cancel = () => {
    drag = null;
    stack.select(0, 0);
  };
  const wheel = (event) => {
    if (event.ctrlKey) {
      event.preventDefault();
      stack.zoom(2 ** clamp(event.deltaY / 200, -1, 1), stack.timeAt(xOf(event)));
    }
  };

  surface.addEventListener("pointerdown", begin);
  surface.addEventListener("pointermove", move);
  surface.addEventListener("pointerup", end);
  surface.addEventListener("pointercancel", cancel);
  surface.addEventListener("pointerleave", () => stack.moveCursor(null));
  surface.addEventListener("dblclick", () => stack.show(stack.whole));
  surface.addEventListener("wheel", wheel, { passive: false });
}
