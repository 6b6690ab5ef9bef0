"""A desktop of its own to drive a program on: an X server without a screen, a session bus, the
accessibility bus and a window manager. Whatever was started on it ends with it.

One process has at most one session in its life, since the accessibility library keeps to the
first bus that it has met. Any number of processes may have one at the same time.
"""

import os
import re
import shutil
import signal
import subprocess
import sys
import tempfile

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Gio, GLib  # noqa: E402
from Xlib import X, display as xdisplay  # noqa: E402

import processes  # noqa: E402
from processes import wait_until  # noqa: E402

_LAUNCHER = ("/usr/libexec/at-spi-bus-launcher", "/usr/lib/at-spi2-core/at-spi-bus-launcher")

# Variables of the user's own session. A program would use them to leave this one.
_FOREIGN = ("DBUS_SESSION_BUS_ADDRESS", "AT_SPI_BUS_ADDRESS", "WAYLAND_DISPLAY", "XDG_SESSION_TYPE",
            "XAUTHORITY", "DISPLAY", "QT_QPA_PLATFORM", "QT_PLUGIN_PATH", "QT_STYLE_OVERRIDE",
            "QT_QPA_PLATFORMTHEME", "XDG_CURRENT_DESKTOP", "NO_AT_BRIDGE")


class Session:
    """In `with Session() as session:` the desktop runs. `os.environ` has its addresses."""

    def __init__(self, size=(1280, 1024)):
        self._size = size
        self._started = []

    def __enter__(self):
        processes.adopt_orphans()
        for number in (signal.SIGTERM, signal.SIGHUP):
            signal.signal(number, lambda *_: sys.exit(1))
        # Names of sockets must be short, so the folder is directly in /tmp.
        self.folder = tempfile.mkdtemp(prefix="desk-", dir="/tmp")
        try:
            self._start()
        except BaseException:
            self.close()
            raise
        return self

    def __exit__(self, *_):
        self.close()

    def _start(self):
        for name in _FOREIGN:
            os.environ.pop(name, None)
        for name, variable in (("run", "XDG_RUNTIME_DIR"), ("home", "HOME")):
            folder = os.path.join(self.folder, name)
            os.mkdir(folder, 0o700)
            os.environ[variable] = folder
        os.environ["DISPLAY"] = self.add_screen()
        os.environ["DBUS_SESSION_BUS_ADDRESS"] = self._answer_of(
            "dbus-daemon", "--session", "--nofork", "--print-address={}")
        launcher = next((path for path in _LAUNCHER if os.path.exists(path)), _LAUNCHER[0])
        self._run(launcher, "--launch-immediately")
        wait_until(_accessibility_is_up, "the accessibility bus")
        self._start_window_manager()
        self.display = xdisplay.Display()
        check = self.display.intern_atom("_NET_SUPPORTING_WM_CHECK")
        root = self.display.screen().root
        wait_until(lambda: root.get_full_property(check, X.AnyPropertyType), "the window manager")

    def _start_window_manager(self):
        self._run("openbox", "--sm-disable")

    def add_screen(self):
        """Starts an X server and returns its name. `kill_screen` ends it."""
        # -noreset: otherwise the server loses its state when its last client disconnects.
        number = self._answer_of("Xvfb", "-displayfd", "{}", "-noreset", "-nolisten", "tcp",
                                 "-screen", "0", f"{self._size[0]}x{self._size[1]}x24")
        return f":{number}"

    def kill_screen(self):
        """Kills the X server that was added last, as a crash would."""
        server = next(s for s in reversed(self._started) if s.args[0] == "Xvfb")
        server.terminate()
        server.wait()

    def _run(self, *command, **options):
        log = open(os.path.join(self.folder, os.path.basename(command[0]) + ".log"), "wb")
        with log:
            self._started.append(subprocess.Popen(
                command, stdin=subprocess.DEVNULL, stdout=log, stderr=log,
                preexec_fn=processes.end_with_parent, **options))

    def _answer_of(self, *command):
        """Starts a server that writes one line to the descriptor whose number replaces "{}"."""
        readable, writable = os.pipe()
        with open(readable, encoding="ascii") as answer:
            self._run(*(word.format(writable) for word in command), pass_fds=(writable,))
            os.close(writable)
            line = answer.readline().strip()
        if not line:
            raise processes.Failure(f"{command[0]} did not start:\n{self.logs()}")
        return line

    def logs(self):
        """The output of this session's servers."""
        texts = []
        for name in sorted(os.listdir(self.folder)):
            if name.endswith(".log"):
                with open(os.path.join(self.folder, name), errors="replace") as log:
                    texts.append(f"{name}: {log.read()}")
        return "\n".join(texts)

    def servers(self):
        """The process ids of this desktop's servers."""
        return [server.pid for server in self._started]

    def end_others(self):
        """Kills all other programs on this desktop."""
        # The accessibility bus starts its registry late, as an orphan.
        keep = [child for child in processes.children()
                if child in self.servers()
                or "at-spi" in " ".join(processes.command_line(child))]
        processes.end_descendants(keep)

    def close(self):
        """Ends the desktop and all its programs, and deletes its folder in /tmp."""
        for server in reversed(self._started):
            # A killed server would leave its lock file.
            server.terminate()
        for server in self._started:
            try:
                server.wait(5)
            except subprocess.TimeoutExpired:
                server.kill()
                server.wait()
        processes.end_descendants()
        shutil.rmtree(self.folder, ignore_errors=True)


class WaylandSession(Session):
    """A Wayland desktop, which shows X windows through XWayland. It has no mouse, no keyboard and
    no pictures of the screen."""

    def _start_window_manager(self):
        pass  # The compositor is the window manager.

    def add_screen(self):
        os.environ["WAYLAND_DISPLAY"] = "wayland-1"
        os.environ["XDG_SESSION_TYPE"] = "wayland"
        return self.start_compositor()

    def start_compositor(self):
        """Returns the name of its X server."""
        self._run("weston", "--backend=headless-backend.so", "--xwayland", "--no-config",
                  "--idle-time=0", "--socket=" + os.environ["WAYLAND_DISPLAY"])

        def named():
            found = re.search(r"xserver listening on display (:\d+)", self.logs())
            return found and found[1]
        return wait_until(named, "the compositor's X server", 30, self.logs)


def _accessibility_is_up():
    bus = Gio.DBusConnection.new_for_address_sync(
        os.environ["DBUS_SESSION_BUS_ADDRESS"],
        Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT
        | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION, None, None)
    try:
        # A call to a name without an owner would make the bus start a second launcher.
        owned = bus.call_sync("org.freedesktop.DBus", "/", "org.freedesktop.DBus", "NameHasOwner",
                              GLib.Variant("(s)", ("org.a11y.Bus",)), None, 0, 5000, None)
        return owned.unpack()[0] and bus.call_sync(
            "org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress", None, None, 0, 5000,
            None).unpack()[0]
    finally:
        bus.close_sync(None)


if __name__ == "__main__":
    with Session():
        sys.exit(subprocess.call(sys.argv[1:]))
