"""A virtual screen with a window manager, and a program on it that is observed through its state lines.

Nothing here waits for a time: Screen waits until the window manager does what it is asked, Watched.until until the program has
written the state that is wanted. The limits are there so that a broken program ends the test.
"""

import os
import pathlib
import re
import select
import shutil
import subprocess
import tempfile
import time

TOOLS = ["Xvfb", "openbox", "xdotool", "xprop"]
WINE = os.environ.get("Z7_WINE_PREFIX")  # where Wine keeps its files, for programs of Windows
LIMIT = 60.0  # seconds until a state that does not come is a failure


def missing_tools():
    return [tool for tool in TOOLS + (["wine"] if WINE else []) if shutil.which(tool) is None]


class Screen:
    """A private X server on a free display, with openbox and a private home folder. Programs of Windows run under Wine, whose
    own files are in the folder wine."""

    def __init__(self, scale=1, size="1600x1000", wine=None):
        self.under_wine = wine is not None
        self.home = tempfile.mkdtemp(prefix="z7window")
        settings = pathlib.Path(self.home, ".config/gtk-3.0/settings.ini")
        settings.parent.mkdir(parents=True)
        settings.write_text("[Settings]\ngtk-cursor-blink=0\ngtk-enable-animations=0\n", encoding="utf-8")
        read_end, write_end = os.pipe()
        self.server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(write_end), "-noreset", "-nolisten", "tcp", "-screen", "0", size + "x24"],
            pass_fds=[write_end], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(write_end)
        with os.fdopen(read_end) as pipe:
            number = pipe.readline().strip()
        if not number:
            raise RuntimeError("Xvfb did not start")
        self.environment = dict(
            os.environ, DISPLAY=":" + number, HOME=self.home, GTK_THEME="Adwaita", NO_AT_BRIDGE="1", LC_ALL="C.UTF-8",
            GDK_SCALE=str(scale), GDK_BACKEND="x11", XDG_CONFIG_HOME=self.home + "/.config")
        self.environment.pop("Z7CF_CONNECT", None)
        if wine is not None:
            self.environment.update(WINEPREFIX=wine, WINEARCH="win64", WINEDEBUG="-all",
                                    WINEDLLOVERRIDES="mscoree,mshtml=;winemenubuilder.exe=d;winedbg.exe=d")
        self.manager = subprocess.Popen(["openbox"], env=self.environment, stdout=subprocess.DEVNULL,
                                        stderr=subprocess.DEVNULL)
        # The window manager announces itself before it handles events, and a window that appears in between never gets the
        # keys. Therefore request another desktop until it is shown.
        end = time.monotonic() + LIMIT
        while self._asked_for_desktop("1") != "1":
            if time.monotonic() > end or self.manager.poll() is not None:
                raise RuntimeError("openbox did not start")
        if wine is not None:
            self.run("wineboot", "--init")

    def _asked_for_desktop(self, number):
        self.output("xdotool", "set_desktop", number)
        return self.output("xdotool", "get_desktop").strip()

    def output(self, *command):
        return subprocess.run(command, env=self.environment, capture_output=True, text=True, check=False).stdout

    def program(self, *command):
        """The words that start a program here: itself, or Wine with it."""
        return ["wine", *command] if self.under_wine else list(command)

    def run(self, *command, check=True):
        """Runs a program to its end; returns what it wrote. It writes to a file, because the services that Wine starts with it
        would keep a pipe open."""
        with tempfile.TemporaryFile("w+", encoding="utf-8") as written:
            subprocess.run(self.program(*command), env=self.environment, stdin=subprocess.DEVNULL, stdout=written,
                           stderr=subprocess.DEVNULL, check=check)
            written.seek(0)
            return written.read()

    def close(self):
        if self.under_wine:
            subprocess.run(["wineserver", "-k", "-w"], env=self.environment, check=False)  # its services belong to this screen
        for process in (self.manager, self.server):
            process.terminate()
            process.wait()
        shutil.rmtree(self.home, ignore_errors=True)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()


class GrowingFile:
    """What a program writes to a file; see Screen.run."""

    def __init__(self, process, file):
        self.process, self.file = process, file

    def read(self, end):
        """More of it; empty at the end of the program. None when the time is up."""
        while True:
            ended = self.process.poll() is not None
            more = self.file.read()
            if more or ended:
                return more
            if time.monotonic() > end:
                return None
            time.sleep(0.005)


class Pipe:
    """What a program writes to a pipe; read as of GrowingFile."""

    def __init__(self, stream):
        self.stream = stream

    def read(self, end):
        rest = end - time.monotonic()
        if rest <= 0 or not select.select([self.stream], [], [], rest)[0]:
            return None
        return os.read(self.stream.fileno(), 65536)


def unescaped(value):
    return re.sub(r"\\(.)", lambda found: {"n": "\n", "t": "\t"}.get(found.group(1), found.group(1)), value)


class Watched:
    """A program with windows. state is its last state line, places where its controls are, log what else it wrote."""

    def __init__(self, screen, *command, **environment):
        self.screen = screen
        self.errors = tempfile.TemporaryFile("w+", encoding="utf-8")
        written = tempfile.NamedTemporaryFile("wb") if screen.under_wine else None
        self.process = subprocess.Popen(screen.program(*command), env=dict(screen.environment, **environment), stdin=subprocess.DEVNULL,
                                        stdout=written or subprocess.PIPE, stderr=self.errors)
        self.output = (GrowingFile(self.process, open(written.name, "rb")) if written else Pipe(self.process.stdout))
        self.pending = b""
        self.state, self.places, self.log = {}, {}, []
        self.presses = 0

    # What the program writes

    def _line(self, end):
        """The next line; None at the end of the output."""
        while b"\n" not in self.pending:
            more = self.output.read(end)
            if more is None:
                raise AssertionError(f"the state did not come; the last one is {self.state}, log {self.log[-5:]}")
            if not more:
                return None
            self.pending += more
        line, self.pending = self.pending.split(b"\n", 1)
        return line.decode("utf-8", "replace").rstrip("\r")

    def _take(self, line):
        if line.startswith("STATE "):
            pairs = (pair.split("=", 1) for pair in line[6:].split("\t"))
            self.state = {name: unescaped(value) for name, value in pairs}
            return True
        if line.startswith("PLACE "):
            name, *numbers = line[6:].split(" ")
            self.places[name] = [int(number) for number in numbers]
        else:
            self.log.append(line)
        return False

    def matches(self, wanted):
        return all(self.state.get(name) == value for name, value in wanted.items())

    def until(self, **wanted):
        """Waits for a state with these values; returns it."""
        end = time.monotonic() + LIMIT
        while not self.matches(wanted):
            line = self._line(end)
            if line is None:
                raise AssertionError(f"the program ended before {wanted}: {self.log[-5:]} {self.error_text()}")
            self._take(line)
        return self.state

    def until_event(self, count):
        """Waits until the program has written this many events."""
        end = time.monotonic() + LIMIT
        while len(self.events()) < count:
            line = self._line(end)
            if line is None:
                raise AssertionError(f"the program ended before event {count}: {self.log[-5:]} {self.error_text()}")
            self._take(line)

    def until_ended(self):
        """Reads to the end; returns the exit code."""
        end = time.monotonic() + LIMIT
        while (line := self._line(end)) is not None:
            self._take(line)
        return self.process.wait()

    def error_text(self):
        self.errors.seek(0)
        return self.errors.read()

    def events(self):
        return [line[6:] for line in self.log if line.startswith("EVENT ")]

    # What the user does

    def _until_active(self):
        """Under Wine a window is active for its program before the window manager has given it the keyboard. Waits until the
        active window is the one on top, with the title of the state."""
        end = time.monotonic() + LIMIT
        while True:
            order = re.findall("0x[0-9a-f]+", self.screen.output("xprop", "-root", "_NET_CLIENT_LIST_STACKING"))
            active = re.findall("0x[0-9a-f]+", self.screen.output("xprop", "-root", "_NET_ACTIVE_WINDOW"))
            if order and active == order[-1:]:
                title = self.screen.output("xdotool", "getwindowname", active[0]).rstrip("\n")
                if title == self.state.get("top"):
                    return
            if time.monotonic() > end:
                raise AssertionError(f"no window became active for {self.state}")
            time.sleep(0.005)

    def _xdotool(self, *arguments):
        if self.screen.under_wine and arguments[0] in ("key", "type"):
            self._until_active()
        subprocess.run(["xdotool", *arguments], env=self.screen.environment, check=True, capture_output=True)

    def keys(self, *names, **wanted):
        """Presses keys one by one, each after the window has received the previous one, and waits for a state after the last."""
        for name in names:
            self.presses = int(self.state["keys"]) + 1
            self._xdotool("key", name)
            end = time.monotonic() + LIMIT
            while int(self.state["keys"]) < self.presses:
                line = self._line(end)
                if line is None:
                    return
                self._take(line)
        if wanted:
            self.until(**wanted)

    def write(self, typed, /, **wanted):
        """Types a text as fast as possible."""
        self._xdotool("type", "--delay", "5", typed)
        if wanted:
            self.until(**wanted)

    def click(self, place, *, times=1, at=None, **wanted):
        """Clicks on the middle of a place, or at an offset from its upper left corner."""
        x, y, width, height = self.places[place] if isinstance(place, str) else place
        dx, dy = at or (width // 2, height // 2)
        self._xdotool("mousemove", str(x + dx), str(y + dy), "click", "--repeat", str(times), "--delay", "40", "1")
        if wanted:
            self.until(**wanted)

    def cell(self, row, col):
        """The position of a cell, relative to the current one."""
        _, top, _, height = self.places["cell"]
        left, _, width, _ = self.places[f"column.{col}"]
        return [left, top + (row - int(self.state["row"])) * height, width, height]

    def drag_border(self, col, by):
        """Drags the right border of a column's title."""
        x, y, width, height = self.places[f"column.{col}"]
        at = [str(x + width), str(y + height // 2)]
        self._xdotool("mousemove", *at)
        self._xdotool("mousedown", "1")
        for step in (by // 3, 2 * by // 3, by):
            self._xdotool("mousemove", str(x + width + step), at[1])
        self._xdotool("mouseup", "1")

    def close_window(self):
        """Alt+F4, which the window manager turns into the close box."""
        self._xdotool("key", "alt+F4")
