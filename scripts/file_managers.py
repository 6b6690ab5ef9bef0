"""Double-clicks an installer's desktop entry in a real file manager and prints what starts: one row
of a table, with a column for each path.

file_managers.py MANAGER BUNDLE PICTURES

The columns hold the instance and the class of the installer's window, which its entry has to name;
or "-" if nothing starts. The last one is the button of the manager's question, if it asks. The
status is 1 if nothing starts where the manager can start it.
"""

import os
import shutil
import subprocess
import sys
import time

import processes
from processes import Failure, wait_until
from screen import Screen
from session import Session

_COMMANDS = {
    "thunar": ["thunar"],
    "pcmanfm": ["pcmanfm", "--no-desktop"],
    "pcmanfm-qt": ["pcmanfm-qt"],
    "nemo": ["nemo"],
    "caja": ["caja", "--no-desktop"],
    "dolphin": ["dolphin"],
    "nautilus": ["nautilus", "--new-window"],
    "gio": ["gio", "launch"],  # Without a window: what other programs use to start an entry.
}
# The folder and the name in which bundle and entry are, each a column of the table.
_PLACES = (("place", "My Setup"), ("two words é 日本", "Renamed é 日本"),
           ("it's é \"a\"", "Renamed 'it'"))
# In which of them a manager does not start the entry: GNOME's starts none, LXDE's two pass the path
# on in a way that gives quotes a meaning.
_CANNOT = {"nautilus": {0, 1, 2}, "pcmanfm": {2}, "pcmanfm-qt": {2}}
# The button that agrees to a manager's question, and the letter that presses it, with Alt.
_BUTTONS = {"thunar": ("Launch Anyway", "l"), "caja": ("Launch Anyway", "l"),
            "dolphin": ("Execute", "e"), "pcmanfm": ("Execute", "e"),
            "pcmanfm-qt": ("Execute", "x")}


def _new_icon(before, after):
    """The middle of the highest block of the screen that has changed and is as high as a letter: an
    icon, or its name where the desktop has no icons."""
    changed = []
    for y, (old, new) in enumerate(zip(before + [b""], after + [b""])):
        if old != new:
            changed.append(y)
        elif len(changed) >= 8:
            middle = changed[len(changed) // 4]
            points = [x for x in range(len(before[middle]) // 3)
                      if before[middle][3 * x:3 * x + 3] != after[middle][3 * x:3 * x + 3]]
            # The last item in its row: the bundle, a folder, comes first, and may show late.
            gaps = [i for i in range(1, len(points)) if points[i] - points[i - 1] > 20]
            return (points[gaps[-1] if gaps else 0] + points[-1]) // 2, middle
        else:
            changed = []
    return None


class Manager:
    """A file manager on a desktop of its own."""

    def __init__(self, name, session):
        self._name = name
        self._session = session
        self._screen = Screen(session.display)
        self._size = (1280, 1024)
        self._folder = session.folder
        self.asked = ""
        self._window = None
        self._place = None
        self._clicked = 0

    def starts(self, bundle, entry, picture):
        """Double-clicks the entry, which is put beside its bundle once the folder shows. Returns
        the instance and the class of the installer's window, or None if there is none."""
        with open(os.path.join(self._folder, "manager.log"), "ab") as log:
            if self._name == "gio":
                shutil.copy2(bundle.removesuffix(".app") + ".desktop", entry)
            given = entry if self._name == "gio" else os.path.dirname(entry)
            with subprocess.Popen([*_COMMANDS[self._name], given],
                                  stdin=subprocess.DEVNULL, stdout=log, stderr=log,
                                  cwd=os.path.dirname(entry) if self._name == "gio" else "/",
                                  preexec_fn=processes.end_with_parent) as manager:
                try:
                    if self._name != "gio":
                        self._put_and_click(bundle.removesuffix(".app") + ".desktop", entry)
                    return self._answer_until(entry.removesuffix(".desktop") + ".app")
                except Failure:
                    return None
                finally:
                    self._screen.picture(picture)
                    manager.kill()
                    self._session.end_others()

    def _put_and_click(self, source, entry):
        self._window = wait_until(self._screen.windows, "the window", 90)[0][0].id
        before = self._at_rest()
        # A busy manager rests before it shows the folder; one that shows this file is done.
        probe = os.path.join(os.path.dirname(entry), "probe")
        for change in (lambda: shutil.copy2(source, probe), lambda: os.remove(probe)):
            change()
            wait_until(lambda: _new_icon(before, self._rows()), "the folder", 60)
            before = self._at_rest()
        shutil.copy2(source, entry)
        wait_until(lambda: _new_icon(before, self._rows()), "the entry's icon", 60)
        self._place = _new_icon(before, self._at_rest())
        self._double_click()

    def _double_click(self):
        self._clicked = time.monotonic()
        for pause in (0.08, 0):  # As long as a hand takes.
            self._screen.click(*self._place)
            time.sleep(pause)

    def _rows(self):
        return self._screen.rows(0, 0, *self._size)

    def _at_rest(self):
        """The screen, once it has been the same for two seconds."""
        seen = [(time.monotonic(), self._rows())]

        def rests():
            rows = self._rows()
            if rows != seen[-1][1]:
                seen.append((time.monotonic(), rows))
            return time.monotonic() - seen[-1][0] > 2
        wait_until(rests, "the screen to rest", 60)
        return seen[-1][1]

    def _answer(self):
        """Agrees to a question, if there is one. Returns its button."""
        button, letter = _BUTTONS.get(self._name, (None, None))
        windows = [window.id for window, _ in self._screen.windows()]
        if not button or not windows or windows[-1] == self._window:
            return None
        self._screen.key("Alt_L+" + letter)
        return button

    def _answer_until(self, bundle):
        """Agrees to a question. Returns the class of the installer's window, or None."""
        # Where nothing passes the path on, the entry starts what is beside it.
        program_path = os.path.basename(bundle) + "/Contents/MacOS/Setup"

        def opened():
            program = processes.descendant_where(
                lambda words: words and words[0].endswith("/" + program_path))
            windows = self._screen.windows(program) if program else []
            return windows and windows[0][0].get_wm_class()

        def step():
            found = opened()
            if found:
                return found
            button = self._answer()
            self.asked = button or self.asked
            # A busy manager takes two clicks that come late for single ones.
            if (self._place and len(self._screen.windows()) == 1
                    and time.monotonic() - self._clicked > 40):
                self._double_click()
            return None
        return wait_until(step, "the installer's window", 150)


def main(name, bundle, pictures):
    with Session() as session:
        manager = Manager(name, session)
        cells, failed = [], False
        for number, (folder, called) in enumerate(_PLACES):
            folder = os.path.join(session.folder, "home", folder)
            os.makedirs(folder)
            shutil.copytree(bundle, os.path.join(folder, called + ".app"), symlinks=True)
            found = manager.starts(bundle, os.path.join(folder, called + ".desktop"),
                                   os.path.join(pictures, f"{name}-{number + 1}.png"))
            cells.append("/".join(found) if found else "-")
            failed = failed or not found and number not in _CANNOT.get(name, ())
        print(name.ljust(12), *(cell.ljust(12) for cell in cells), manager.asked or "-")
        if failed:
            with open(os.path.join(session.folder, "manager.log"), errors="replace") as log:
                print(log.read()[-2000:], file=sys.stderr)
    return failed


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
