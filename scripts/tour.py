"""Makes installers from the sample setups, and serves what the tour downloads.

tour.py STUB MAKE_SETUP FOLDER [SAMPLE...]

Makes FOLDER/SAMPLE.app for each sample ("tour" without any), prints a line when all are complete,
and serves FOLDER to this machine until its parent process ends.
"""

import functools
import http.server
import os
import shutil
import subprocess
import sys
import threading

from processes import end_with_parent

SAMPLES = os.path.normpath(os.path.join(os.path.dirname(__file__), "..", "samples"))


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
    """Makes the bundles of the samples in `folder`, which its server serves. `setups` has a folder
    for each sample, with what its bundle is made of."""

    def __init__(self, stub, make_setup, folder):
        self._stub = stub
        self._make_setup = make_setup
        self._folder = folder
        self.setups = os.path.join(folder, "samples")
        subprocess.run([os.path.join(SAMPLES, "generate"), self.setups], check=True)
        shutil.copy(os.path.join(SAMPLES, "tour", "thanks.html"), folder)
        self.server = Server(folder)

    def make(self, sample="tour", aside=None):
        """Returns the path of the bundle. `aside`: the folder outside the target that the tour's
        copy list writes to."""
        setup = os.path.join(self.setups, sample)
        values = {"PORT": self.server.server_port, "ASIDE": aside} if sample == "tour" else {}
        bundle = os.path.join(self._folder, sample.capitalize() + ".app")
        subprocess.run([self._make_setup, *(word for name, value in values.items() if value
                                            for word in ("--set", f"{name}={value}")),
                        setup, self._stub, bundle], stdout=sys.stderr, check=True)
        return bundle


def main(stub, make_setup, folder, *names):
    end_with_parent()
    samples = Samples(stub, make_setup, folder)
    for sample in names or ("tour",):
        samples.make(sample)
    print("ready", flush=True)
    threading.Event().wait()


if __name__ == "__main__":
    main(*sys.argv[1:])
