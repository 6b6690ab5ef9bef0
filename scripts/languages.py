"""Clicks through the tour in other languages at several scales and saves pictures of all windows.

languages.py STUB MAKE_SETUP PICTURES [LANGUAGE...]
"""

import os
import sys
import tempfile

from installer import Installer, program_of
from processes import Failure
from screen import Screen
from session import Session
from tour import Samples, languages
from walkthrough import Walk

_SCALES = (1, 1.25, 1.5, 2)

# The largest window fits at the largest scale.
_SIZE = (1760, 1240)


def walk_twice(screen, bundle, language, scale, pictures, folder):
    """One walk over an older version, and one into a folder that can't be written to."""
    locale = f"{language}.UTF-8"
    settings = {"QT_SCALE_FACTOR": str(scale), "LANG": locale, "LC_ALL": locale}
    seen = set()
    for name, mode in (("installed", 0o755), ("refused", 0o555)):
        parent = os.path.join(folder, name)
        os.makedirs(os.path.join(parent, "Juniper Notes") if mode & 0o200 else parent)
        os.chmod(parent, mode)
        own = os.path.join(pictures, language, str(scale), name)
        os.makedirs(own)
        run = Installer(screen, program_of(bundle), folder, settings)
        try:
            status = Walk(screen, run, own, parent, seen).run()
        except Failure:
            screen.picture(os.path.join(own, "failure.png"))
            raise
        installed = os.path.exists(os.path.join(parent, "Juniper Notes", "Library"))
        os.chmod(parent, 0o755)
        if status != 0 or installed != bool(mode & 0o200):
            raise Failure(f"{language} at scale {scale}, {name}: {run.said()}")


def main(stub, make_setup, pictures, *wanted):
    with Session(_SIZE) as session:
        screen = Screen(session.display)
        screen.cover((0x6B, 0x7F, 0x94))
        for language in wanted or languages():
            with tempfile.TemporaryDirectory() as made:
                bundle = Samples(stub, make_setup, made).make("tour", language)
                for scale in _SCALES:
                    with tempfile.TemporaryDirectory() as folder:
                        walk_twice(screen, bundle, language, scale, pictures, folder)
            print(f"{language}: {os.path.join(pictures, language)}", flush=True)


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
