"""What the tests in a real window share: one desktop for a file of tests, an installer made for each
test, and a picture of the screen where one fails."""

import http.server
import json
import os
import shutil
import signal
import subprocess
import sys
import tempfile
import threading
import unittest

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
sys.path.insert(0, os.path.join(ROOT, "scripts", "desk"))

from accessible import program  # noqa: E402,F401
from installer import Installer, program_of  # noqa: E402
from processes import Failure, command_line, descendants, wait_until  # noqa: E402,F401
from screen import Screen  # noqa: E402
from session import Session  # noqa: E402

_BUILD = os.path.abspath(os.environ.get("ZEPHIN_BUILD", os.path.join(ROOT, "build", "debug")))
# Another build's stub may take the place of this one's.
STUB = os.environ.get("ZEPHIN_STUB", os.path.join(_BUILD, "stage", "Setup.app"))
MAKE_SETUP = os.path.join(_BUILD, "tools", "make_setup", "make_setup")
_PICTURES = os.path.join(_BUILD, "Testing", "e2e")
PAUSES = os.path.join(_BUILD, "tests", "e2e", "libzephin_pauses.so")

# A file of tests that hangs ends by itself, and cleans up, before CTest would kill it.
_LIMIT = 840

# The bar of such a setup takes three seconds, so that there is something to interrupt.
LONG = {"generate": [{"path": "noise", "kind": "noise", "bytes": 17000000, "seed": 1}]}


def write_tree(folder, tree):
    """Writes files below `folder`: a dictionary of texts, bytes and, for folders, dictionaries."""
    os.makedirs(folder, exist_ok=True)
    for name, content in tree.items():
        path = os.path.join(folder, name)
        if isinstance(content, dict):
            write_tree(path, content)
        else:
            mode = "wb" if isinstance(content, bytes) else "w"
            with open(path, mode, **({} if mode == "wb" else {"encoding": "utf-8"})) as file:
                file.write(content)


def read_tree(folder):
    """What `write_tree` would have written there, all as bytes."""
    tree = {}
    for name in os.listdir(folder):
        path = os.path.join(folder, name)
        if os.path.isdir(path):
            tree[name] = read_tree(path)
        else:
            with open(path, "rb") as file:
                tree[name] = file.read()
    return tree


class InstallerTest(unittest.TestCase):
    """A test that opens installers. `self.folder` is its scratch folder, `self.target` the parent
    folder for what it installs."""

    session = None  # Of the whole file, see main().
    screen = None

    def setUp(self):
        self.folder = tempfile.mkdtemp(prefix="installer-")
        self.target = os.path.join(self.folder, "target")
        os.mkdir(self.target)
        self.opened = []
        self.addCleanup(self._clean_up)

    def _clean_up(self):
        self.session.end_others()
        subprocess.run(["chmod", "-R", "u+w", self.folder], check=True)
        shutil.rmtree(self.folder, ignore_errors=True)

    def bundle(self, files=None, payload=None, values=None, **fields):
        """Makes an installer: `fields` of setup.json, beside the `files` that they name."""
        setup = {"fTargetFolder": "Tool", "fMessage": "Welcome", **fields}
        if "patch" not in fields:
            setup["payload"] = "payload"
        folder = tempfile.mkdtemp(prefix="setup ", dir=self.folder)
        write_tree(folder, {"setup.json": json.dumps(setup), **(files or {}),
                            "payload": payload or {"read me.txt": "Hello"}})
        made = folder.replace("setup ", "Install ") + ".app"
        subprocess.run([MAKE_SETUP, folder, STUB, made], check=True)
        return made

    @staticmethod
    def resource(bundle, name):
        """The path of a file beside the bundle's record."""
        return os.path.join(bundle, "Contents", "Resources", name)

    def rewrite(self, bundle, position, text):
        """Writes a text into the record that make_setup would refuse, at a place from 1 on."""
        path = self.resource(bundle, "TextData")
        with open(path, "rb") as record:
            fields = record.read().split(b"|#|")
        fields[position - 1] = text.encode()
        with open(path, "wb") as record:
            record.write(b"|#|".join(fields))

    def open(self, bundle=None, settings=None, **fields):
        """Starts a bundle, or the one that `fields` describe."""
        executable = program_of(bundle or self.bundle(**fields))
        run = Installer(self.screen, executable, os.path.join(self.folder, "user"), settings)
        self.opened.append(run)
        return run

    def choose_folder(self, run, folder=None):
        """Answers the folder dialog by keys."""
        run.find("Directory:", "text")
        run.type((folder or self.target) + "\n")

    def installed(self, name="Tool"):
        """What stands in the installed folder; None if there is none."""
        folder = os.path.join(self.target, name)
        return read_tree(folder) if os.path.isdir(folder) else None

    def assert_ends(self, run, seconds=60):
        """The run ends by itself, and with status 0 like every run."""
        self.assertEqual(run.status(seconds), 0, run.said())

    def assert_opens(self, run, *addresses):
        """The desktop is asked to open these and no others."""
        wait_until(lambda: len(run.opened()) >= len(addresses), f"{addresses} to be opened")
        self.assertEqual(run.opened(), list(addresses))

    def serve(self, pages, hosts=None):
        """Serves bytes by their paths, or what gives them, on loopback. Gives the address, without a slash at its end,
        and the list of the paths that are asked for, which grows. So does `hosts`, by the names under
        which the server is asked."""
        asked = []

        class Handler(http.server.BaseHTTPRequestHandler):
            def do_GET(self):
                asked.append(self.path)
                if hosts is not None:
                    hosts.append(self.headers["Host"].partition(":")[0])
                body = pages.get(self.path)
                body = body() if callable(body) else body
                self.send_response(200 if body is not None else 404)
                self.end_headers()
                self.wfile.write(body or b"")

            def log_message(self, *_):
                pass

        return self.start_server(Handler), asked

    def start_server(self, handler):
        """Starts a server on loopback. Gives its address, without a slash at its end."""
        server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), handler)
        threading.Thread(target=server.serve_forever, daemon=True).start()
        self.addCleanup(server.server_close)
        self.addCleanup(server.shutdown)
        return f"http://127.0.0.1:{server.server_address[1]}"


class _Result(unittest.TextTestResult):
    """Leaves a picture of the screen and tells what was on it when a test fails."""

    def addFailure(self, test, err):
        super().addFailure(test, err)
        self._tell(test)

    def addError(self, test, err):
        super().addError(test, err)
        self._tell(test)

    def _tell(self, test):
        os.makedirs(_PICTURES, exist_ok=True)
        path = os.path.join(_PICTURES, test.id().removeprefix("__main__.") + ".png")
        try:
            test.screen.picture(path)
            print(f"The screen: {path}", file=sys.stderr)
        except Exception as error:  # The display may be what has failed.
            print(f"No picture of the screen: {error!r}", file=sys.stderr)
        for run in getattr(test, "opened", ()):
            print(run.described(), file=sys.stderr)


def _too_long(*_):
    raise Failure(f"the tests of this file took longer than {_LIMIT} s")


def main(kind=Session):
    """Runs the tests of the calling file on a desktop of their own, of that kind."""
    signal.signal(signal.SIGALRM, _too_long)
    signal.alarm(_LIMIT)
    with kind() as session:
        InstallerTest.session = session
        InstallerTest.screen = Screen(session.display)
        runner = unittest.TextTestRunner(verbosity=2, resultclass=_Result)
        passed = unittest.main(module="__main__", testRunner=runner, exit=False).result
    sys.exit(0 if passed.wasSuccessful() and passed.testsRun else 1)
