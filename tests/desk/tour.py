"""Makes installers from the sample setups, and serves what the tour downloads.

tour.py STUB MAKE_SETUP FOLDER [SAMPLE...]

Makes FOLDER/SAMPLE.app for each sample ("tour" without any), prints a line when all are complete,
and serves FOLDER to this machine until its parent process ends.
"""

import functools
import http.server
import json
import os
import re
import shutil
import subprocess
import sys
import threading

from processes import end_with_parent

SAMPLES = os.path.normpath(os.path.join(os.path.dirname(__file__), "..", "..", "samples"))
_LANGUAGES = os.path.join(SAMPLES, "tour", "languages")


class Server(http.server.ThreadingHTTPServer):
    """Serves a folder on the loopback address. `asked` lists the paths of all requests."""

    def __init__(self, folder):
        asked = self.asked = []

        class Handler(http.server.SimpleHTTPRequestHandler):
            def do_GET(self):
                asked.append(self.path)
                super().do_GET()

            def log_message(self, *_):
                pass

        super().__init__(("127.0.0.1", 0), functools.partial(Handler, directory=folder))
        threading.Thread(target=self.serve_forever, daemon=True).start()


class Samples:
    """Makes the bundles of the samples in `folder`, which its server serves."""

    def __init__(self, stub, make_setup, folder):
        self._stub = stub
        self._make_setup = make_setup
        self._folder = folder
        self._setups = os.path.join(folder, "samples")
        subprocess.run([os.path.join(SAMPLES, "generate"), self._setups], check=True)
        shutil.copy(os.path.join(SAMPLES, "tour", "thanks.html"), folder)
        self.server = Server(folder)

    def make(self, sample="tour", language=None, aside=None):
        """Returns the path of the bundle. `language`: one of `languages()` in place of English.
        `aside`: the folder outside the target that the tour's copy list writes to."""
        setup = os.path.join(self._setups, sample)
        if language:
            _translate(setup, language)
        values = {"PORT": self.server.server_port, "ASIDE": aside} if sample == "tour" else {}
        bundle = os.path.join(self._folder, sample.capitalize() + ".app")
        subprocess.run([self._make_setup, *(word for name, value in values.items() if value
                                            for word in ("--set", f"{name}={value}")),
                        setup, self._stub, bundle], stdout=sys.stderr, check=True)
        return bundle


def languages():
    """The codes of the tour's languages other than English."""
    return sorted(name.removesuffix(".json") for name in os.listdir(_LANGUAGES))


def _translate(setup, language):
    """Replaces the texts of the tour in the folder `setup`."""
    with open(os.path.join(_LANGUAGES, language + ".json"), encoding="utf-8") as file:
        texts = json.load(file)
    for name, lines in texts.pop("pages").items():
        with open(os.path.join(setup, "pages", name), "w", encoding="utf-8") as page:
            page.write("\n".join(lines) + "\n")
    path = os.path.join(setup, "setup.json")
    with open(path, encoding="utf-8") as file:
        fields = json.loads(re.sub(r"^\s*//.*$", "", file.read(), flags=re.MULTILINE))
    fields = _merged(fields, texts)
    # Only one of the record's two forms of a page can hold other scripts.
    fields["fAgreement"] = fields["fAgreement"]["file"]
    with open(path, "w", encoding="utf-8") as file:
        json.dump(fields, file, ensure_ascii=False)


def _merged(fields, texts):
    """`fields` with the values of `texts` in place of its own; lists are merged item by item."""
    if isinstance(fields, dict) and isinstance(texts, dict):
        return {**fields, **{key: _merged(fields.get(key), text) for key, text in texts.items()}}
    if isinstance(fields, list) and texts and isinstance(texts[0], dict):
        return [_merged(*pair) for pair in zip(fields, texts, strict=True)]
    return texts


def main(stub, make_setup, folder, *names):
    end_with_parent()
    samples = Samples(stub, make_setup, folder)
    for sample in names or ("tour",):
        samples.make(sample)
    print("ready", flush=True)
    threading.Event().wait()


if __name__ == "__main__":
    main(*sys.argv[1:])
