"""Clicks through the tour again and again on one desktop, each time over what the run before has
installed, and fails if processes, files, or a run's windows and descriptors pile up.

soak.py STUB MAKE_SETUP MINUTES FOLDER
"""

import os
import sys
import time

import processes
from installer import Installer, program_of
from processes import Failure, wait_until
from screen import Screen
from session import Session
from tour import Samples
from walkthrough import Walk

# The first runs make what a run may leave behind once: caches, the copies that the copy list makes.
_FIRST = 2

# Programs that hold the run's text on the clipboard until another program replaces it.
_KEEPERS = ("clipboard_keeper", "xclip")


class CountingWalk(Walk):
    """Counts the descriptors that the program has open."""

    most = 0

    def look_at(self, window):
        self.most = max(self.most, len(os.listdir(f"/proc/{self._installer.process.pid}/fd")))


class Soak:
    """The tour's bundle, and the user's folders that all its runs share."""

    def __init__(self, session, stub, make_setup, folder):
        self._session = session
        self._screen = Screen(session.display)
        self._target, self._aside, self._user = (
            os.path.join(folder, name) for name in ("target", "aside", "user"))
        for made in (self._target, self._aside):
            os.makedirs(made)
        self._bundle = Samples(stub, make_setup, folder).make("tour", aside=self._aside)

    def run(self):
        """One run. Returns the paths of all files that exist after it, and the largest number of
        descriptors that it had open."""
        installer = Installer(self._screen, program_of(self._bundle), self._user)
        walk = CountingWalk(self._screen, installer, None, self._target)
        status = walk.run()
        if (status, len(installer.opened()), os.listdir(self._target)) != (0, 1, ["Juniper Notes"]):
            raise Failure(f"the run ended with status {status}, opened {installer.opened()} and "
                          f"left {os.listdir(self._target)}\n{installer.said()}")
        wait_until(lambda: not self._strays(), "the run's processes to end", 60,
                   lambda: "\n".join(" ".join(words) for words in self._strays()))
        wait_until(lambda: not self._screen.windows(), "its windows to close")
        return self._files(), walk.most

    def _strays(self):
        """The command lines of this desktop's processes, except its servers and one keeper of the
        clipboard."""
        own = set(self._session.servers())
        below = [processes.command_line(child) for child in processes.descendants()
                 if child not in own]
        # A process without words is a zombie, which only this process can reap.
        living = [words for words in below if words and "at-spi" not in " ".join(words)
                  and "dconf" not in words[0]]
        keepers = [words for words in living if os.path.basename(words[0]) in _KEEPERS]
        return [words for words in living if words not in keepers] + keepers[1:]

    def _files(self):
        """The paths of everything in the folders that a run may write to."""
        return sorted(os.path.join(place, name)
                      for top in (self._target, self._aside, os.path.join(self._user, "home"),
                                  os.path.join(self._user, "tmp"))
                      for place, folders, files in os.walk(top) for name in folders + files)


def main(stub, make_setup, minutes, folder):
    end = time.monotonic() + 60 * float(minutes)
    runs = 0
    with Session() as session:
        soak = Soak(session, stub, make_setup, os.path.abspath(folder))
        while runs <= _FIRST or time.monotonic() < end:
            files, descriptors = soak.run()
            runs += 1
            if runs <= _FIRST:
                usual, most = files, descriptors
            elif files != usual:
                raise Failure(f"run {runs} added {sorted(set(files) - set(usual))} and removed "
                              f"{sorted(set(usual) - set(files))}")
            elif descriptors > most + _FIRST:
                raise Failure(f"run {runs} had {descriptors} descriptors, the first ones {most}")
    print(f"{runs} runs left the same {len(usual)} files and folders, and had at most {most} "
          "descriptors")


if __name__ == "__main__":
    main(*sys.argv[1:])
