"""Clicks through the tour under valgrind, then once more over what was installed, and fails if
valgrind finds an error or lost memory.

leaks.py STUB MAKE_SETUP SUPPRESSIONS FOLDER
"""

import os
import re
import shlex
import sys

from installer import Installer, program_of
from processes import Failure
from screen import Screen
from session import Session
from tour import Samples
from walkthrough import Walk


def write_starter(program, suppressions, report):
    """Writes a script that starts the program under valgrind, and returns its path."""
    command = ["valgrind", "--leak-check=full", "--show-leak-kinds=definite",
               "--errors-for-leak-kinds=definite", "--num-callers=30",
               "--child-silent-after-fork=yes", f"--suppressions={suppressions}",
               f"--log-file={report}", program]
    path = report + ".sh"
    with open(path, "w", encoding="utf-8") as script:
        script.write(f"#!/bin/sh\nexec {shlex.join(command)}\n")
    os.chmod(path, 0o755)
    return path


def main(stub, make_setup, suppressions, folder):
    folder = os.path.abspath(folder)
    target = os.path.join(folder, "target")
    os.mkdir(target)
    failed = False
    with Session() as session:
        screen = Screen(session.display)
        bundle = Samples(stub, make_setup, folder).make("tour", aside=folder)
        for name in ("first", "second"):
            report = os.path.join(folder, name + " report")
            starter = write_starter(program_of(bundle), os.path.abspath(suppressions), report)
            # Compiled regular expressions read past their input on purpose.
            installer = Installer(screen, starter, os.path.join(folder, "user"),
                                  {"QT_ENABLE_REGEXP_JIT": "0"})
            walk = Walk(screen, installer, None, target)
            walk.look_at = lambda window: None
            if walk.run() != 0 or os.listdir(target) != ["Juniper Notes"]:
                raise Failure(f"the {name} run failed\n{installer.said()}")
            with open(report, encoding="utf-8", errors="replace") as file:
                found = file.read()
            summary = re.search(r"ERROR SUMMARY: (\d+) errors.*", found)
            print(f"The {name} run: {summary[0] if summary else 'no summary'}")
            if not summary or summary[1] != "0":
                print(found)
                failed = True
    return failed


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
