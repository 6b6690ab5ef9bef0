"""Clicks through the tour in several languages at several scales and saves pictures of all windows.

languages.py STUB MAKE_SETUP PICTURES [LANGUAGE...]
"""

import json
import os
import re
import sys
import tempfile

from installer import Installer, program_of
from processes import Failure
from screen import Screen
from session import Session
from tour import SAMPLES, Samples
from walkthrough import Walk

_LANGUAGES = os.path.join(SAMPLES, "tour", "languages")
_SCALES = (1, 1.25, 1.5, 2)

# The largest window fits at the largest scale.
_SIZE = (1760, 1240)


def languages():
    """The codes of the tour's languages other than English."""
    return sorted(name.removesuffix(".json") for name in os.listdir(_LANGUAGES))


def translate(setup, language):
    """Replaces the texts of the tour in the folder `setup`."""
    with open(os.path.join(_LANGUAGES, language + ".json"), encoding="utf-8") as file:
        texts = json.load(file)
    for name, lines in texts.pop("pages").items():
        with open(os.path.join(setup, "pages", name), "w", encoding="utf-8") as page:
            page.write("\n".join(lines) + "\n")
    path = os.path.join(setup, "setup.json")
    with open(path, encoding="utf-8") as file:
        fields = json.loads(re.sub(r"^\s*//.*$", "", file.read(), flags=re.MULTILINE))
    fields = merged(fields, texts)
    # Only one of the record's two forms of a page can hold other scripts.
    fields["fAgreement"] = fields["fAgreement"]["file"]
    with open(path, "w", encoding="utf-8") as file:
        json.dump(fields, file, ensure_ascii=False)


def merged(fields, texts):
    """`fields` with the values of `texts` in place of its own; lists are merged item by item."""
    if isinstance(fields, dict) and isinstance(texts, dict):
        return {**fields, **{key: merged(fields.get(key), text) for key, text in texts.items()}}
    if isinstance(fields, list) and texts and isinstance(texts[0], dict):
        return [merged(*pair) for pair in zip(fields, texts, strict=True)]
    return texts


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
        for language in wanted or ["en", *languages()]:
            with tempfile.TemporaryDirectory() as made:
                samples = Samples(stub, make_setup, made)
                if language != "en":
                    translate(os.path.join(samples.setups, "tour"), language)
                bundle = samples.make()
                for scale in _SCALES:
                    with tempfile.TemporaryDirectory() as folder:
                        walk_twice(screen, bundle, language, scale, pictures, folder)
            print(f"{language}: {os.path.join(pictures, language)}", flush=True)


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
