"""Clicks through an installer on a desktop of its own as a user would who agrees to everything, and
leaves a picture of each window.

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

# What the window manager draws around a window, at most.
_FRAME = 24


class Walk:
    """One walk through an installer. What is in `seen` has its picture from another walk."""

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
        while self._installer.runs():
            wait_until(self._step, "something new to happen", 120, self._installer.described)
        return self._installer.status()

    def _step(self):
        """Looks at the front window and answers it. False: there is nothing to do yet."""
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
        self._last = look
        if look not in self._seen:
            self._seen.add(look)
            self.look_at(window)
        self._answer(window, controls)
        return True

    def front(self):
        """The window that has the focus; None while there is none."""
        titles = [title for _, title in self._screen.windows(self._installer.process.pid)]
        windows = {window.name: window for window in self._installer.windows()}
        return windows.get(titles[-1]) if titles and self._installer.is_active() else None

    @staticmethod
    def _half_of_bar(controls):
        """How far the bar is, in steps that are worth a picture: empty, half, full."""
        for value, most in (node.value for node in controls if node.role == "progress bar"):
            return most and int(2 * min(value / most, 1))
        return None

    def _answer(self, window, controls):
        buttons = {node.name: node for node in controls if node.role == "push button"}
        default = next((b for b in buttons.values() if "is-default" in b.states), None)
        field = next((node for node in controls if node.role == "text"
                      and "editable" in node.states), None)
        boxes = [node for node in controls
                 if node.role == "check box" and "checked" not in node.states]
        # Beside Quit and Install, the main window may have a button for a page to read before.
        info = min(buttons.values(), key=lambda node: node.area[0]) if len(buttons) == 3 else None
        if info and info.name not in self._done:
            self._done.add(info.name)
            self._installer.click_on(info)
            return
        if info and default and info.name == default.name:
            # It has the focus since it was clicked, and Return would press it again.
            default = max(buttons.values(), key=lambda node: node.area[0])
        if boxes and window.name not in self._done:
            self._done.add(window.name)
            for box in boxes:
                self._installer.click_on(box)
        elif field:
            self._screen.type(self._parent + "\n")
        elif default and (window.name, default.name) not in self._done:
            if window.role != "alert":
                self._done.add((window.name, default.name))
            self._installer.click_on(default)

    def look_at(self, window):
        """Takes a picture of a window that looks new, unless another one covers it meanwhile."""
        title = re.sub(r"[^a-z0-9]+", "-", window.name.lower()).strip("-") or "window"
        area = window.area
        if not area:
            return  # It has just gone.
        x, y, width, height = self._installer.on_screen(area)
        path = os.path.join(self._pictures, f"{self._count + 1:02}-{title}.png")
        self._screen.picture(path, (x - _FRAME, y - _FRAME, width + 2 * _FRAME, height + 2 * _FRAME))
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
