"""Clicks through the tour under valgrind, first afresh and then over what was installed, and fails if
valgrind finds an error, or memory that is lost.

leaks.py STUB MAKE_SETUP SUPPRESSIONS FOLDER
"""

import os
import re
import shlex
import sys

from installer import Installer, program_of
from processes import Failure
from session import Session
from soak import Soak
from walkthrough import Walk


def watched(program, suppressions, report):
    """A script that starts the program under valgrind."""
    command = ["valgrind", "--leak-check=full", "--show-leak-kinds=definite",
               "--errors-for-leak-kinds=definite", "--num-callers=30", "--child-silent-after-fork=yes",
               f"--suppressions={suppressions}", f"--log-file={report}", program]
    path = report + ".sh"
    with open(path, "w", encoding="utf-8") as script:
        script.write(f"#!/bin/sh\nexec {shlex.join(command)}\n")
    os.chmod(path, 0o755)
    return path


def main(stub, make_setup, suppressions, folder):
    folder = os.path.abspath(folder)
    failed = False
    with Session() as session:
        soak = Soak(session, folder)
        soak.make(stub, make_setup)
        for name in ("first", "second"):
            report = os.path.join(folder, name + " report")
            program = watched(program_of(soak.bundle), os.path.abspath(suppressions), report)
            # Code that is made as it runs reads past what it needs, on purpose.
            installer = Installer(soak.screen, program, soak.user, {"QT_ENABLE_REGEXP_JIT": "0"})
            walk = Walk(soak.screen, installer, None, soak.target)
            walk.look_at = lambda window: None
            if walk.run() != 0 or os.listdir(soak.target) != ["Juniper Notes"]:
                raise Failure(f"the {name} run went wrong\n{installer.said()}")
            with open(report, encoding="utf-8", errors="replace") as file:
                told = file.read()
            summary = re.search(r"ERROR SUMMARY: (\d+) errors.*", told)
            print(f"The {name} run: {summary[0] if summary else 'no summary'}")
            if not summary or summary[1] != "0":
                print(told)
                failed = True
    return failed


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
