"""What people see of the program in a terminal, compared with transcripts that are kept as text.

    transcripts.py ASSESS [--write]

Each command runs in a terminal multiplexer as wide as the transcript says, which tells whether a
line was too long, and what it then shows is compared with transcripts/; --write keeps it instead.
"""

import os
import subprocess
import sys
import tempfile
from pathlib import Path

TRANSCRIPTS = Path(__file__).parent / "transcripts"
WIDTHS = (80, 120)

REQUIREMENTS = """\
title = "Brakes and cruise control of the fleet"

[recording]
origin = "first"

[definitions]
braking = "brake > 20"

[[assessment]]
name = "speed limit"
formula = "speed <= 130"

[[assessment]]
name = "the brake lamp is lit whenever the driver brakes, within a tenth of a second"
formula = "rise(braking) -> eventually[0, 100 ms](lamp)"

[[assessment]]
name = "cruise control gives way to the brake without being switched off by the driver"
formula = "braking -> mode != 'cruise'"

[[assessment]]
name = "braking is strong"
description = "After two seconds of braking the car is slower by 20 km/h."
formula = "always[0, 2 s](braking) -> Fall[2 s](speed, 20)"

[[assessment]]
name = "never reverses"
formula = "speed < 0 -> brake > 0"

[[assessment]]
name = "lamp goes off"
formula = "lamp -> eventually[0, 20 s](~lamp)"
"""


# What the requirements were when the earlier report was written.
EARLIER = {
    "speed <= 130": "speed <= 150",
    "braking -> mode": "braking & speed < 110 -> mode",
    "[0, 100 ms](lamp)": "[0, 100 ms](lamp) & speed < 140",
    "never reverses": "never goes backwards",
}


def recording(number: int) -> str:
    """A drive of ten seconds: some have a lamp that is late, some a cruise control that goes on."""
    rows = ["time,speed,brake,lamp,mode"]
    for tick in range(41):
        seconds = tick / 4
        is_braking = 4 <= seconds < 7
        is_lit = is_braking and (number % 7 != 0 or seconds > 4.5)
        does_cruise = number % 10 == 3 if is_braking else seconds < 9
        speed = 120 - 12 * max(0.0, min(seconds, 7) - 4) + (number % 25 == 24) * 20
        time = f"2026-11-22 10:{number % 60:02}:{seconds:05.2f}"
        mode = "cruise" if does_cruise else "drive"
        rows.append(f"{time},{speed:g},{30 * is_braking},{str(is_lit).lower()},{mode}")
    if number % 40 == 13:
        rows[9] += ",7"
    return "\n".join(rows) + "\n"


def write_recordings(folder: Path) -> None:
    (folder / "brakes.toml").write_text(REQUIREMENTS, encoding="utf-8")
    (folder / "drive.csv").write_text(recording(7), encoding="utf-8")
    for name, count in ("fifty", 50), ("five_hundred", 500):
        (folder / name).mkdir()
        for number in range(1, count + 1):
            path = folder / name / f"test_drive_in_the_mountains_{number}.csv"
            path.write_text(recording(number), encoding="utf-8")


def write_earlier_report(folder: Path, assess: Path) -> None:
    requirements = REQUIREMENTS
    for now, earlier in EARLIER.items():
        requirements = requirements.replace(now, earlier)
    (folder / "earlier.toml").write_text(requirements, encoding="utf-8")
    command = "assess run earlier.toml fifty/*_2[1348].csv --quiet -f json=earlier.json"
    environment = {"PATH": f"{assess.parent}:{os.environ['PATH']}"}
    done = subprocess.run(
        ["sh", "-c", command],
        cwd=folder,
        env=environment,
        check=False,
        capture_output=True,
        encoding="utf-8",
    )
    if done.returncode != 1:
        raise SystemExit(f"{command}: {done.stderr}")


COMMANDS = {
    "one": "assess run brakes.toml drive.csv --explain",
    "show": "assess show brakes.toml 'braking is strong' drive.csv",
    "signals": "assess signals drive.csv",
    "fifty": "assess run brakes.toml fifty/*.csv",
    "five_hundred": "assess run brakes.toml five_hundred/*.csv",
    "baseline": "assess run brakes.toml fifty/*_2[1348].csv --baseline earlier.json",
}


class Terminal:
    """One terminal after the other, each of a server of its own: they take a while to go."""

    def __init__(self, folder: Path, assess: Path) -> None:
        self._folder = folder
        environment = {"PATH": f"{assess.parent}:{os.environ['PATH']}", "LC_ALL": "C.UTF-8"}
        self._environment = environment | {"HOME": str(folder), "TERM": "xterm-256color"}
        self._count = 0

    def _socket(self) -> str:
        return str(self._folder / f"socket{self._count}")

    def _tmux(self, *arguments: str) -> str:
        command = ["tmux", "-u", "-S", self._socket(), "-f", "/dev/null"]
        return subprocess.run(
            command + list(arguments),
            env=self._environment,
            cwd=self._folder,
            check=True,
            stdout=subprocess.PIPE,
            encoding="utf-8",
        ).stdout

    def shown(self, command: str, width: int, has_colours: bool) -> str:
        """What the terminal shows when the command has ended. Fails where a line is too long."""
        self._count += 1
        colours = "" if has_colours else "NO_COLOR=1 "
        script = f"{colours}{command}; tmux -S {self._socket()} wait-for -S ended; sleep 1000"
        options = ["set-option", "-g", "history-limit", "10000", ";"]
        new = ["new-session", "-d", "-x", str(width), "-y", "50", script]
        self._tmux(*options, *new)
        try:
            self._tmux("wait-for", "ended")
            capture = ["capture-pane", "-p", "-S", "-"]
            lines = self._tmux(*capture).rstrip("\n").split("\n")
            unwrapped = self._tmux(*capture, "-J").rstrip("\n").split("\n")
            too_long = [line for line in unwrapped if line.rstrip() not in map(str.rstrip, lines)]
            if len(lines) != len(unwrapped):
                raise SystemExit(f"{command}: longer than {width} columns:\n" + "\n".join(too_long))
            text = self._tmux(*capture, *(["-e"] if has_colours else []))
        finally:
            self._tmux("kill-server")
        return "\n".join(line.rstrip() for line in text.rstrip("\n").split("\n")) + "\n"


def compare(name: str, shown: str) -> bool:
    path = TRANSCRIPTS / f"{name}.txt"
    kept = path.read_text(encoding="utf-8") if path.exists() else ""
    if shown == kept:
        return True
    print(f"{path.name} (<) is not what the terminal shows (>):")
    subprocess.run(["diff", str(path), "-"], input=shown, encoding="utf-8", check=False)
    return False


def main(assess: Path, is_writing: bool) -> int:
    is_same = True
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        write_recordings(folder)
        write_earlier_report(folder, assess)
        terminal = Terminal(folder, assess)
        for command, text in COMMANDS.items():
            for width in WIDTHS:
                for colours in "", "_colours":
                    transcript = f"{command}_{width}{colours}"
                    shown = terminal.shown(text, width, bool(colours))
                    if is_writing:
                        (TRANSCRIPTS / f"{transcript}.txt").write_text(shown, encoding="utf-8")
                    else:
                        is_same = compare(transcript, shown) and is_same
    return 0 if is_same else 1


if __name__ == "__main__":
    sys.exit(main(Path(sys.argv[1]).resolve(), "--write" in sys.argv[2:]))
