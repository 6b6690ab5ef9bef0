"""Walks through the tour in other languages at several scales, and leaves a picture of each window.

languages.py STUB MAKE_SETUP PICTURES [LANGUAGE...]
"""

import copy
import functools
import http.server
import json
import os
import re
import subprocess
import sys
import tempfile
import threading

from installer import Installer, program_of
from processes import Failure
from screen import Screen
from serve import Quiet
from session import Session
from walkthrough import Walk

_ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
_SAMPLES = os.path.join(_ROOT, "samples")
_LANGUAGES = os.path.join(_SAMPLES, "tour", "languages")
_SCALES = (1, 1.25, 1.5, 2)

# The largest window is shown whole at the largest scale.
_SIZE = (1760, 1240)


def languages():
    """The names of the languages that the tour speaks beside its own."""
    return sorted(name.removesuffix(".json") for name in os.listdir(_LANGUAGES))


def captions(language):
    """What the tour says in that language, under the names of its fields."""
    with open(os.path.join(_LANGUAGES, language + ".json"), encoding="utf-8") as file:
        return json.load(file)


def _laid_over(plain, said):
    """`plain` with the values of `said` in it: those of lists by their place."""
    if isinstance(plain, dict) and isinstance(said, dict):
        return {**plain, **{key: _laid_over(plain.get(key), value) for key, value in said.items()}}
    if isinstance(plain, list) and said and isinstance(said[0], dict):
        return [_laid_over(*pair) for pair in zip(plain, said, strict=True)]
    return said


def write_tour(language, folder):
    """Makes the tour in that language below a folder. Gives its own folder, one for make_setup."""
    subprocess.run([os.path.join(_SAMPLES, "generate"), folder], check=True)
    folder = os.path.join(folder, "tour")
    said = captions(language)
    for name, lines in said.pop("pages").items():
        with open(os.path.join(folder, "pages", name), "w", encoding="utf-8") as page:
            page.write("\n".join(lines) + "\n")
    path = os.path.join(folder, "setup.json")
    with open(path, encoding="utf-8") as file:
        setup = json.loads(re.sub(r"^\s*//.*$", "", file.read(), flags=re.MULTILINE))
    setup = _laid_over(setup, said)
    # A page in another script fits one of the record's two forms only.
    setup["fAgreement"] = setup["fAgreement"]["file"]
    with open(path, "w", encoding="utf-8") as file:
        json.dump(setup, file, ensure_ascii=False)
    return folder


class _Tours:
    """The tours of one language: makes them, and walks through them."""

    def __init__(self, screen, language, pictures):
        self._screen = screen
        self._language = language
        self._pictures = os.path.join(pictures, language)

    def make(self, stub, make_setup, folder):
        """Makes the installer in `folder`, from which its publisher's server serves, too."""
        handler = functools.partial(Quiet, directory=folder)
        server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), handler)
        threading.Thread(target=server.serve_forever, daemon=True).start()
        setup = write_tour(self._language, os.path.join(folder, "samples"))
        self._bundle = os.path.join(folder, "Tour.app")
        subprocess.run([make_setup, "--set", f"PORT={server.server_address[1]}", setup, stub,
                        self._bundle], check=True)

    def walk(self, scale, folder):
        """Two walks: over an older version, and into a folder that can't be written to."""
        target = os.path.join(folder, "target")
        os.makedirs(os.path.join(target, "Juniper Notes"))
        refusing = os.path.join(folder, "refusing")
        os.mkdir(refusing, 0o555)
        locale = f"{self._language}.UTF-8"
        settings = {"QT_SCALE_FACTOR": str(scale), "LANG": locale, "LC_ALL": locale}
        seen = set()
        for name, parent in (("installed", target), ("refused", refusing)):
            pictures = os.path.join(self._pictures, str(scale), name)
            os.makedirs(pictures)
            run = Installer(self._screen, program_of(self._bundle), folder, settings)
            try:
                status = Walk(self._screen, run, pictures, parent, seen).run()
            except Failure:
                self._screen.picture(os.path.join(pictures, "failure.png"))
                raise
            installed = os.path.exists(os.path.join(parent, "Juniper Notes", "Library"))
            if status != 0 or installed != (name == "installed"):
                raise Failure(f"{self._language} at scale {scale}, {name}: {run.said()}")


def main(stub, make_setup, pictures, *wanted):
    with Session(_SIZE) as session:
        screen = Screen(session.display)
        screen.cover((0x6B, 0x7F, 0x94))
        for language in wanted or languages():
            tours = _Tours(screen, language, pictures)
            with tempfile.TemporaryDirectory() as made:
                tours.make(stub, make_setup, made)
                for scale in _SCALES:
                    with tempfile.TemporaryDirectory() as folder:
                        tours.walk(scale, folder)
                        os.chmod(os.path.join(folder, "refusing"), 0o755)
            print(f"{language}: {os.path.join(pictures, language)}", flush=True)


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
