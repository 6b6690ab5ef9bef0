"""One run of an installer, driven and observed as by its user."""

import contextlib
import fcntl
import os
import subprocess
import tempfile

import accessible
import processes
from processes import Failure, wait_until

# Replaces the desktop's own xdg-open and records what it is asked to open.
_XDG_OPEN = """#!/bin/sh
printf '%s\\n' "$1" >> "$RECORD_OF_OPENED"
"""

# The sanitizers report to the output. They do not change how the program ends.
_SANITIZERS = {"ASAN_OPTIONS": "detect_leaks=0:handle_abort=0",
               "UBSAN_OPTIONS": "print_stacktrace=1"}


def applications_folder(home):
    """The folder in which the installer installs applications, for a user with that home."""
    if os.path.isdir("/Applications"):
        return "/Applications"
    return "/opt" if os.geteuid() == 0 else os.path.join(home, "Applications")


def program_of(bundle):
    """The program in an application bundle."""
    folder = os.path.join(bundle, "Contents", "MacOS")
    return os.path.join(folder, os.listdir(folder)[0])


@contextlib.contextmanager
def _no_other_starting(applications):
    # Each installer writes and deletes the same file there at its start. Two at the same time could
    # mistake each other's file for their own. The folder itself may not exist yet.
    guard = os.open(os.path.dirname(applications), os.O_RDONLY)
    try:
        fcntl.flock(guard, fcntl.LOCK_EX)
        yield
    finally:
        os.close(guard)


class Program:
    """A running program. `scale`: the number of screen points for one of its points."""

    def __init__(self, screen, process, scale=1):
        self.screen = screen
        self.id = process
        self._scale = scale

    # Windows and controls.

    def windows(self):
        """The visible windows in the order of their creation."""
        shown = accessible.program(self.id)
        return [window for window in (shown.children() if shown else ())
                if "showing" in window.states]

    def titles(self):
        return [window.name for window in self.windows()]

    def window(self, title, seconds=30):
        """Waits for the window with that title."""
        return wait_until(lambda: next((w for w in self.windows() if w.name == title), None),
                          f"a window {title!r}", seconds, self.described)

    def x_window(self, title):
        """Waits for the X window with that title. The accessibility tree has a window before the
        window manager does."""
        return wait_until(
            lambda: [w for w, name in self.screen.windows(self.id) if name == title],
            f"the window manager to have {title!r}", 30, self.described)[0]

    def controls(self, name=None, role=None, within=None):
        """The visible controls with that name and role, in all windows or below `within`."""
        roots = [within] if within else self.windows()
        return [node for root in roots for node in root.below()
                if (name is None or node.name == name) and (role is None or node.role == role)
                and "showing" in node.states]

    def find(self, name=None, role=None, within=None, seconds=30):
        """Waits for a control and returns it; the last one if there are several."""
        return wait_until(lambda: next(reversed(self.controls(name, role, within)), None),
                          f"a control {name!r} {role or ''}", seconds, self.described)

    def waits_for(self, text, seconds=30):
        """Waits until a control shows exactly that text, and returns the control."""
        return wait_until(
            lambda: next((node for node in self.controls()
                          if text in (node.name, node.text)), None),
            f"the text {text!r}", seconds, self.described)

    def wait_for_bar(self, share=0.01):
        """Waits until that share of the progress bar is filled. On a slow machine it may never be
        filled completely."""
        bar = self.find("Progress", "progress bar")

        def is_filled():
            value, most = bar.value or (0, 1)
            return value >= share * most
        wait_until(is_filled, f"the bar to be filled to {share:.0%}", 60, self.described)

    # Input.

    def press(self, *names, within=None):
        """Presses buttons in order, through their accessible actions."""
        for name in names:
            if not self.find(name, within=within).press():
                raise Failure(f"{name!r} has no action\n{self.described()}")

    def click(self, *names, within=None):
        """Clicks the middle of controls in order, with the mouse."""
        for name in names:
            self.click_on(self.find(name, within=within))

    def click_on(self, node, across=0.5, down=0.5):
        """Clicks a point of a control, given as fractions of its width and height."""
        x, y, width, height = self.on_screen(self.place_at_rest(node))
        self.screen.click(x + int(width * across), y + int(height * down))

    def click_text(self, node, text):
        """Clicks the first letter of a text in a text control."""
        self.place_at_rest(node)
        self.screen.click(*self.on_screen(node.place_of(text)))

    def on_screen(self, place):
        """Converts a point or an area of the toolkit, which has no scale, to the screen."""
        return tuple(round(part * self._scale) for part in place)

    def place_at_rest(self, node):
        """The area of a control after its window has stopped moving."""
        def settled():
            # A new window is elsewhere until the window manager has placed it.
            first = node.area
            return first and self.is_active() and first == node.area and first
        return wait_until(settled, f"{node.name!r} to rest", 30, self.described)

    def key(self, *chords):
        """Presses chords of keys in order. Waits before each until the program has the focus."""
        for chord in chords:
            wait_until(self.is_active, "its front window to have the focus", 30, self.described)
            self.screen.key(chord)

    def type(self, text):
        wait_until(self.is_active, "its front window to have the focus", 30, self.described)
        self.screen.type(text)

    def is_active(self):
        """Whether its front window has the focus, and the program knows all its windows."""
        windows = self.screen.windows(self.id)
        return (bool(windows) and windows[-1][0].id == self.screen.active_window()
                and len(windows) == len(self.windows()))

    def focused(self):
        """The name of the control that has the keyboard focus, or None."""
        return next((node.name for node in self.controls() if "focused" in node.states), None)

    def wait_for_focus(self, name):
        wait_until(lambda: self.focused() == name, f"{name!r} to have the focus", 30,
                   self.described)

    def dismiss(self, *messages):
        """Waits for messages in order and answers each by Return."""
        for message in messages:
            self.waits_for(message)
            self.key("Return")

    def ask_to_close(self, title):
        """Asks the window to close, as its close button does, even if it has none."""
        self.screen.ask_to_close(self.x_window(title))

    def described(self):
        """A readable list of all its windows and controls."""
        return "\n".join(window.tree() for window in self.windows())


class Installer(Program):
    """Starts `program` with a new home and temporary folder below `folder`, and waits until it
    handles events. `settings` are added to its environment."""

    def __init__(self, screen, program, folder, settings=None):
        self.home = os.path.join(folder, "home")
        self.applications = applications_folder(self.home)
        tools = os.path.join(folder, "bin")
        for made in (self.home, os.path.join(folder, "tmp"), tools):
            os.makedirs(made, exist_ok=True)
        opener = os.path.join(tools, "xdg-open")
        with open(opener, "w", encoding="utf-8") as script:
            script.write(_XDG_OPEN)
        os.chmod(opener, 0o755)
        own = tempfile.mkdtemp(prefix="run-", dir=folder)
        self._record = os.path.join(own, "opened")
        self._output = os.path.join(own, "output")
        environment = {**os.environ, **_SANITIZERS, "HOME": self.home, "LC_ALL": "C.UTF-8",
                       "TMPDIR": os.path.join(folder, "tmp"),
                       "PATH": tools + ":" + os.environ["PATH"],
                       "RECORD_OF_OPENED": self._record, "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1",
                       **(settings or {})}
        with _no_other_starting(self.applications):
            with open(self._output, "wb") as output:
                self.process = subprocess.Popen(
                    [program], stdin=subprocess.DEVNULL, stdout=output, stderr=output,
                    env=environment, preexec_fn=processes.start_as_user)
            super().__init__(screen, self.process.pid,
                             float(environment.get("QT_SCALE_FACTOR", 1)))
            wait_until(self._is_past_start, "the program to start", 60, self.said)

    def _is_past_start(self):
        if not self.runs():
            return True
        shown = accessible.program(self.id)
        return (shown and shown.answers()
                and not os.path.exists(os.path.join(self.applications, "X.txt")))

    # Results.

    def status(self, seconds=60):
        """Waits for the end of the program and returns its exit status."""
        wait_until(lambda: not self.runs(), "the program to end", seconds, self.described)
        if "Sanitizer" in self.said() or "runtime error:" in self.said():
            raise Failure(self.said())
        return self.process.returncode

    def runs(self):
        return self.process.poll() is None

    def said(self):
        """Its output and error output."""
        with open(self._output, encoding="utf-8", errors="replace") as output:
            return output.read()

    def opened(self):
        """The items that it asked the desktop to open."""
        if not os.path.exists(self._record):
            return []
        with open(self._record, encoding="utf-8", errors="replace") as record:
            return record.read().splitlines()

    def described(self):
        if not self.runs():
            return f"the program has ended with status {self.process.returncode}\n{self.said()}"
        return super().described() + "\n" + self.said()
