"""Clicks through an installer on a desktop of its own, agrees to everything, and leaves a picture
of each window.

walkthrough.py BUNDLE PICTURES PARENT_FOLDER
"""

import os
import re
import sys
import tempfile

from installer import Installer, program_of
from processes import Failure, wait_until
from screen import Screen
from session import Session

# The most that the window manager draws around a window.
_FRAME = 24


class Walk:
    """One walk through an installer. `seen`: what needs no picture, since another walk took it."""

    def __init__(self, screen, installer, pictures, parent, seen=None):
        self._screen = screen
        self._installer = installer
        self._pictures = pictures
        self._parent = parent
        self._count = 0
        self._seen = set() if seen is None else seen
        self._last = None
        self._done = set()

    def run(self):
        """Returns the exit status of the installer."""
        while self._installer.runs():
            wait_until(self._step, "something new to happen", 120, self._installer.described)
        return self._installer.status()

    def _step(self):
        """Looks at the front window and answers it. Returns False if nothing has changed."""
        if not self._installer.runs():
            return True
        window = self.front()
        if not window:
            return False
        controls = [node for node in window.below() if "showing" in node.states]
        look = (window.name, self._half_of_bar(controls),
                tuple((node.text, "checked" in node.states) for node in controls
                      if node.role != "progress bar"))
        if look == self._last:
            return False
        is_new = look not in self._seen
        if is_new:
            self._seen.add(look)
            self.look_at(window)
        # A window without an answer may get its default button later, with the focus.
        is_answered = self._answer(window, controls)
        if is_answered:
            self._last = look
        return is_new or is_answered

    def front(self):
        """The window that has the focus, or None."""
        titles = [title for _, title in self._screen.windows(self._installer.process.pid)]
        windows = {window.name: window for window in self._installer.windows()}
        return windows.get(titles[-1]) if titles and self._installer.is_active() else None

    @staticmethod
    def _half_of_bar(controls):
        """The filled part of the bar in the steps that get a picture: 0 for empty, 1 for half, 2
        for full; None without a bar."""
        for value, most in (node.value for node in controls if node.role == "progress bar"):
            return most and int(2 * min(value / most, 1))
        return None

    def _answer(self, window, controls):
        """Returns False if there is nothing to do in the window."""
        buttons = {node.name: node for node in controls if node.role == "push button"}
        field = next((node for node in controls if node.role == "text"
                      and "editable" in node.states), None)
        boxes = [node for node in controls
                 if node.role == "check box" and "checked" not in node.states]
        default = next((name for name, b in buttons.items() if "is-default" in b.states), None)
        info = None
        if len(buttons) == 3:
            # The main window. The button that was clicked last has the focus and is the default.
            info, _, default = sorted(buttons, key=lambda name: buttons[name].area[0])
        if info and info not in self._done:
            self._done.add(info)
            self._installer.click_on(buttons[info])
        elif boxes and window.name not in self._done:
            self._done.add(window.name)
            for box in boxes:
                self._installer.click_on(box)
        elif field and window.name not in self._done:
            self._done.add(window.name)
            self._screen.type(self._parent + "\n")
        elif default and (window.name, default) not in self._done:
            if window.role != "alert":
                self._done.add((window.name, default))
            self._installer.click_on(buttons[default])
        else:
            return False
        return True

    def look_at(self, window):
        """Takes a picture of a window that looks new, unless another window covers it meanwhile."""
        title = re.sub(r"[^a-z0-9]+", "-", window.name.lower()).strip("-") or "window"
        area = window.area
        if not area:
            return  # It has just closed.
        x, y, width, height = self._installer.on_screen(area)
        path = os.path.join(self._pictures, f"{self._count + 1:02}-{title}.png")
        self._screen.picture(path,
                             (x - _FRAME, y - _FRAME, width + 2 * _FRAME, height + 2 * _FRAME))
        front = self.front()
        if front and front.name == window.name:
            self._count += 1
        else:
            os.remove(path)


def main(bundle, pictures, parent):
    os.makedirs(pictures, exist_ok=True)
    os.makedirs(parent, exist_ok=True)
    with Session() as session, tempfile.TemporaryDirectory(dir=pictures) as folder:
        screen = Screen(session.display)
        screen.cover((0x6B, 0x7F, 0x94))
        installer = Installer(screen, program_of(bundle), folder)
        try:
            status = Walk(screen, installer, pictures, parent).run()
        except Failure:
            screen.picture(os.path.join(pictures, "failure.png"))
            raise
        for address in installer.opened():
            print(f"Opened {address}")
    return status


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
