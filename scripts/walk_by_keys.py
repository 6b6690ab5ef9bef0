"""Walks through an installer by keys alone, on a system that has no accessibility bus. Each window
is answered by Return, the one that asks for a folder by its path and Return.

walk_by_keys.py PICTURES FOLDER_TITLE PARENT_FOLDER COMMAND...

COMMAND must end in the program itself (`exec`): its windows are found by the process id. `DISPLAY`
is set for it.
"""

import os
import subprocess
import sys

import processes
from processes import Failure, wait_until
from screen import Screen
from session import Session


# Of the main window until the setup record has been read.
_EARLY_TITLE = "Install"


class Walk:
    """One walk. `answers`: the text to type into a window, by its title."""

    def __init__(self, screen, process, pictures, answers):
        self._screen = screen
        self._process = process
        self._pictures = pictures
        self._answers = answers
        self._first = None
        self._answered = []

    def run(self):
        """Returns the titles of the windows in the order in which they were answered."""
        while self._process.poll() is None:
            wait_until(self._step, "another window, or the end", 90)
        return [title for _, title in self._answered]

    def _step(self):
        if self._process.poll() is not None:
            return True
        active = self._screen.active_window()
        windows = [(window.id, title)
                   for window, title in self._screen.windows(self._process.pid)]
        if windows and not self._first:
            self._first = windows[0][0]
        # The main window, the first, appears for a moment under another title than its own. A key
        # may be ignored then, or count as well as the next one.
        found = next((each for each in windows if each[0] == active
                      and each != (self._first, _EARLY_TITLE) and each not in self._answered), None)
        if not found:
            return False
        self._answered.append(found)
        title = found[1]
        self._screen.picture(os.path.join(self._pictures, f"{len(self._answered):02}.png"))
        self._screen.type(self._answers.get(title, "") + "\n")
        return True


def main(pictures, folder_title, parent, *command):
    os.makedirs(pictures, exist_ok=True)
    with Session() as session:
        screen = Screen(session.display)
        with subprocess.Popen(command, stdin=subprocess.DEVNULL,
                              preexec_fn=processes.end_with_parent) as process:
            try:
                titles = Walk(screen, process, pictures, {folder_title: parent}).run()
            except Failure:
                screen.picture(os.path.join(pictures, "failure.png"))
                process.kill()
                raise
    print("\n".join(titles))
    return process.returncode


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
