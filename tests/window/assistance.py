"""The windows as seen by assistive technology: a private message bus that is queried for the names of what is on the screen."""

import pathlib
import re
import shutil
import subprocess
import time

from screen import LIMIT

LAUNCHERS = ["/usr/libexec/at-spi-bus-launcher", "/usr/lib/at-spi2-core/at-spi-bus-launcher"]
ACCESSIBLE = "org.a11y.atspi.Accessible"


def missing_parts():
    missing = [tool for tool in ("gdbus", "dbus-daemon") if shutil.which(tool) is None]
    return missing + ([] if any(map(pathlib.Path.exists, map(pathlib.Path, LAUNCHERS))) else ["at-spi2-core"])


class Assistance:
    """Passed to a Watched by its environment; names() returns role and name of everything in its windows."""

    def __init__(self, screen):
        self.screen = screen
        self.bus = subprocess.Popen(["dbus-daemon", "--session", "--nofork", "--print-address=1"],
                                    env=screen.environment, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        self.environment = {"DBUS_SESSION_BUS_ADDRESS": self.bus.stdout.readline().strip(), "NO_AT_BRIDGE": "0"}
        answer = self._call("--session", "org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus.GetAddress")
        self.address = re.search(r"'([^']+)'", answer).group(1)

    def _call(self, bus, destination, path, method, *arguments):
        result = subprocess.run(["gdbus", "call", *([bus] if bus == "--session" else ["--address", bus]), "--dest",
                                 destination, "--object-path", path, "--method", method, *arguments],
                                env=dict(self.screen.environment, **self.environment), capture_output=True, text=True,
                                check=False)
        return result.stdout

    def _walk(self, destination, path, found):
        name = self._call(self.address, destination, path, "org.freedesktop.DBus.Properties.Get", ACCESSIBLE, "Name")
        role = self._call(self.address, destination, path, ACCESSIBLE + ".GetRoleName")
        found.append((role.strip()[2:-3], name.strip()[3:-4]))
        children = self._call(self.address, destination, path, ACCESSIBLE + ".GetChildren")
        for child in re.findall(r"\('([^']+)', (?:objectpath )?'([^']+)'\)", children):
            self._walk(*child, found)

    def names(self):
        found = []
        self._walk("org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root", found)
        return found

    def until(self, *wanted):
        """Waits until all these pairs of role and name exist; returns all pairs."""
        end = time.monotonic() + LIMIT
        while True:
            found = self.names()
            if all(pair in found for pair in wanted):
                return found
            if time.monotonic() > end:
                raise AssertionError(f"not found: {[pair for pair in wanted if pair not in found]} in {found}")

    def close(self):
        self.bus.terminate()
        self.bus.wait()
        self.bus.stdout.close()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()
