"""Clicks through the tour again and again on a desktop of its own, over what the run before has
installed, and fails if anything piles up: processes, files, or descriptors and windows of a run.

soak.py STUB MAKE_SETUP MINUTES FOLDER
"""

import functools
import http.server
import os
import subprocess
import sys
import threading
import time

import processes
from installer import Installer, program_of
from processes import Failure, wait_until
from screen import Screen
from serve import Quiet
from session import Session
from walkthrough import Walk

_GENERATE = os.path.join(os.path.dirname(__file__), "..", "samples", "generate")

# Runs until all is there that a run may leave, once: caches, what the copy list puts elsewhere.
_FIRST = 2

# What the run's text stays on the clipboard by, until another program takes it over.
_KEEPERS = ("clipboard_keeper", "xclip")


class CountingWalk(Walk):
    """Counts what the program holds open."""

    most = 0

    def look_at(self, window):
        self.most = max(self.most, len(os.listdir(f"/proc/{self._installer.process.pid}/fd")))


class Soak:
    """The tour's bundle, and the user's folders that all its runs share."""

    def __init__(self, session, folder):
        self.session = session
        self.screen = Screen(session.display)
        self.folder = folder
        self.bundle = os.path.join(folder, "Tour.app")
        self.target = os.path.join(folder, "target")
        self.aside = os.path.join(folder, "aside")
        self.user = os.path.join(folder, "user")
        for made in (self.target, self.aside):
            os.makedirs(made)

    def make(self, stub, make_setup):
        server = http.server.ThreadingHTTPServer(
            ("127.0.0.1", 0), functools.partial(Quiet, directory=self.folder))
        threading.Thread(target=server.serve_forever, daemon=True).start()
        samples = os.path.join(self.folder, "samples")
        subprocess.run([_GENERATE, samples], check=True)
        subprocess.run([make_setup, "--set", f"PORT={server.server_address[1]}", "--set",
                        f"ASIDE={self.aside}", os.path.join(samples, "tour"), stub,
                        self.bundle], check=True)

    def run(self):
        """One run. Gives what is left of it, and how many descriptors it had at most."""
        installer = Installer(self.screen, program_of(self.bundle), self.user)
        walk = CountingWalk(self.screen, installer, None, self.target)
        status = walk.run()
        if status != 0:
            raise Failure(f"the run ended with status {status}\n{installer.said()}")
        if len(installer.opened()) != 1:
            raise Failure(f"the run opened {installer.opened()}\n{installer.said()}")
        if os.listdir(self.target) != ["Juniper Notes"]:
            raise Failure(f"the run left {os.listdir(self.target)}\n{installer.said()}")
        wait_until(lambda: not self.strays(), "the run's processes to end", 60,
                   lambda: "\n".join(" ".join(words) for words in self.strays()))
        wait_until(lambda: not self.screen.windows(), "its windows to go")
        return self.files(), walk.most

    def strays(self):
        """The processes on this desktop that are neither part of it nor one keeper of the clipboard."""
        own = set(self.session.servers())
        below = [processes.command_line(child) for child in processes.descendants()
                 if child not in own]
        # Without words: one that has ended. This process alone has to look after it.
        living = [words for words in below if words and "at-spi" not in " ".join(words)
                  and "dconf" not in words[0]]
        keepers = [words for words in living if os.path.basename(words[0]) in _KEEPERS]
        return [words for words in living if words not in keepers] + keepers[1:]

    def files(self):
        """All that stands below the folders that a run may write to, but its own record of the test."""
        return sorted(os.path.join(place, name)
                      for top in (self.target, self.aside, os.path.join(self.user, "home"),
                                  os.path.join(self.user, "tmp"))
                      for place, folders, files in os.walk(top) for name in folders + files)


def main(stub, make_setup, minutes, folder):
    end = time.monotonic() + 60 * float(minutes)
    runs = 0
    with Session() as session:
        soak = Soak(session, os.path.abspath(folder))
        soak.make(stub, make_setup)
        while runs <= _FIRST or time.monotonic() < end:
            files, descriptors = soak.run()
            runs += 1
            if runs <= _FIRST:
                usual, most = files, descriptors
            elif files != usual:
                raise Failure(f"run {runs} left {sorted(set(files) - set(usual))} and took "
                              f"{sorted(set(usual) - set(files))}")
            elif descriptors > most + _FIRST:
                raise Failure(f"run {runs} had {descriptors} descriptors, the first ones {most}")
    print(f"{runs} runs left {len(usual)} files and folders, the same each time, and had at most "
          f"{most} descriptors")


if __name__ == "__main__":
    main(*sys.argv[1:])
