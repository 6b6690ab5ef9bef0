"""Shared by the tests in real windows: one desktop for each file of tests, a new installer for each
test, and a picture of the screen after a failure."""

import http.server
import json
import os
import pathlib
import shutil
import signal
import ssl
import subprocess
import sys
import tempfile
import threading
import unittest

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
# The driver of the desktop, and the makers of the sample installers.
sys.path[:0] = [os.path.join(ROOT, "tests", "desk"), os.path.join(ROOT, "scripts")]

from installer import Installer, Program, applications_folder, program_of  # noqa: E402,F401
from processes import Failure, command_line, descendant_where, wait_until  # noqa: E402,F401
from screen import Screen  # noqa: E402
from session import Session  # noqa: E402

_BUILD = os.path.abspath(os.environ.get("ZEPHIN_BUILD", os.path.join(ROOT, "build", "debug")))
# The stub of another build may be used instead.
STUB = os.environ.get("ZEPHIN_STUB", os.path.join(_BUILD, "stage", "Setup.app"))
MAKE_SETUP = os.path.join(_BUILD, "tools", "make_setup", "make_setup")
_PICTURES = os.path.join(_BUILD, "Testing", "e2e")
PAUSES = os.path.join(_BUILD, "tests", "e2e", "libzephin_pauses.so")

# A file of tests that hangs ends and cleans up before CTest kills it.
_LIMIT = 840

# The bar of such a setup takes three seconds, long enough to interrupt it.
LONG = {"payload": {"noise": os.urandom(17000000)}}


def write_tree(folder, tree):
    """Writes files below `folder`: a dictionary of texts, bytes and, for folders, dictionaries."""
    os.makedirs(folder, exist_ok=True)
    for name, content in tree.items():
        path = pathlib.Path(folder, name)
        if isinstance(content, dict):
            write_tree(path, content)
        else:
            path.write_bytes(content.encode() if isinstance(content, str) else content)


def write_script(path, text):
    """Writes an executable shell script and returns its path."""
    pathlib.Path(path).write_text("#!/bin/sh\n" + text, encoding="utf-8")
    os.chmod(path, 0o755)
    return path


def read_tree(folder):
    """The tree in the form that `write_tree` takes, with all contents as bytes."""
    return {item.name: read_tree(item) if item.is_dir() else item.read_bytes()
            for item in pathlib.Path(folder).iterdir()}


def clipboard():
    """The text on the clipboard."""
    return subprocess.run(["xclip", "-selection", "clipboard", "-o"], check=True, timeout=30,
                          stdout=subprocess.PIPE, encoding="utf-8").stdout


def page(body, status=200, promised=None, **headers):
    """A server's answer: bytes, or an iterable of blocks. It breaks off if `promised` is larger
    than its length."""
    def answer(request):
        request.send_response(status)
        request.send_header("Content-Length", str(promised or len(body)))
        for name, value in headers.items():
            request.send_header(name, value)
        request.end_headers()
        for block in [body] if isinstance(body, bytes) else body:
            request.wfile.write(block)
    return answer


class Server(http.server.ThreadingHTTPServer):
    """A server on loopback. `pages` maps paths to functions that answer a request. `certificate`:
    the files of the certificate and its key. `asked` lists requests, `met` counts connections."""

    def __init__(self, pages, certificate=None):
        asked = self.asked = []
        self.met = 0

        class Handler(http.server.BaseHTTPRequestHandler):
            def do_GET(self):
                asked.append(self.path)
                pages.get(self.path, page(b"", 404))(self)

            def log_message(self, *_):
                pass

        super().__init__(("127.0.0.1", 0), Handler)
        self.address = f"127.0.0.1:{self.server_port}"
        if certificate:
            context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
            context.load_cert_chain(*certificate)
            self.socket = context.wrap_socket(self.socket, server_side=True,
                                              do_handshake_on_connect=False)
        threading.Thread(target=self.serve_forever, daemon=True).start()

    def get_request(self):
        connection = super().get_request()
        self.met += 1
        return connection

    def handle_error(self, *_):
        pass  # In some tests the client closes the connection early.


class InstallerTest(unittest.TestCase):
    """A test that opens installers. `self.folder` is its scratch folder, `self.target` the parent
    of the installed folder."""

    session = None  # Shared by the file, see main().
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

    def bundle(self, files=None, payload=None, **fields):
        """Makes an installer from `fields` of setup.json and the `files` that they name."""
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

    def open(self, bundle=None, settings=None, **fields):
        """Starts a bundle, or a new one with `fields`."""
        executable = program_of(bundle or self.bundle(**fields))
        run = Installer(self.screen, executable, os.path.join(self.folder, "user"), settings)
        self.opened.append(run)
        return run

    def choose_folder(self, run, folder=None):
        """Selects `folder`, by default the target, in the folder dialog."""
        field = run.find("Directory:", "text")
        wait_until(lambda: field.enter(folder or self.target), "the field to take a text")
        run.press("Select")

    def begin(self, run, *pressed):
        """Presses Install and the buttons `pressed`, and selects the folder."""
        run.press("Install", *pressed)
        self.choose_folder(run)
        return run

    def install(self, run, *pressed):
        """The same, and waits for the end of the run."""
        self.assert_ends(self.begin(run, *pressed))

    def installed(self, name="Tool"):
        """The contents of the installed folder; None if it does not exist."""
        folder = os.path.join(self.target, name)
        return read_tree(folder) if os.path.isdir(folder) else None

    def assert_ends(self, run, seconds=60):
        """Waits for the end of the run, which always has status 0."""
        self.assertEqual(run.status(seconds), 0, run.said())

    def assert_opens(self, run, *addresses):
        """Waits until the desktop was asked to open these addresses and no others."""
        wait_until(lambda: len(run.opened()) >= len(addresses), f"{addresses} to be opened")
        self.assertEqual(run.opened(), list(addresses))

    def certificate(self, name, host="IP:127.0.0.1"):
        """Makes a self-signed certificate for a host. Returns its file and key."""
        files = [os.path.join(self.folder, name + end) for end in (".pem", ".key")]
        subprocess.run(["openssl", "req", "-x509", "-newkey", "ec", "-pkeyopt",
                        "ec_paramgen_curve:prime256v1", "-nodes", "-days", "2", "-subj",
                        "/CN=" + name, "-addext", "subjectAltName=" + host,
                        "-out", files[0], "-keyout", files[1]],
                       check=True, stderr=subprocess.DEVNULL)
        return files

    def serve(self, pages, certificate=None):
        """Starts a server, which ends with the test."""
        server = Server(pages, certificate)
        self.addCleanup(server.server_close)
        self.addCleanup(server.shutdown)
        return server


class _Result(unittest.TextTestResult):
    """Saves a picture of the screen and prints the windows when a test fails."""

    def addFailure(self, test, err):
        super().addFailure(test, err)
        self._report(test)

    def addError(self, test, err):
        super().addError(test, err)
        self._report(test)

    def addSubTest(self, test, subtest, err):
        super().addSubTest(test, subtest, err)
        if err:
            self._report(test)

    def _report(self, test):
        os.makedirs(_PICTURES, exist_ok=True)
        path = os.path.join(_PICTURES, test.id().removeprefix("__main__.") + ".png")
        try:
            test.screen.picture(path)
            print(f"The screen: {path}", file=sys.stderr)
        except Exception as error:  # The display itself may have failed.
            print(f"No picture of the screen: {error!r}", file=sys.stderr)
        for run in getattr(test, "opened", ()):
            print(run.described(), file=sys.stderr)


def _too_long(*_):
    raise Failure(f"the tests of this file took longer than {_LIMIT} s")


def main(kind=Session):
    """Runs the tests of the calling file on a new desktop of that kind."""
    signal.signal(signal.SIGALRM, _too_long)
    signal.alarm(_LIMIT)
    with kind() as session:
        InstallerTest.session = session
        InstallerTest.screen = Screen(session.display)
        runner = unittest.TextTestRunner(verbosity=2, resultclass=_Result)
        passed = unittest.main(module="__main__", testRunner=runner, exit=False).result
    sys.exit(0 if passed.wasSuccessful() and passed.testsRun else 1)
