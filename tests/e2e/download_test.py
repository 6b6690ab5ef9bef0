"""Options from servers that are good, poor, silent and strange."""

import http.server
import io
import os
import socket
import ssl
import subprocess
import threading
import time
import zipfile

import case

_FAILED = "Setup file download failed."


def archive(length):
    """An archive of exactly that many bytes, which holds one file "data"."""
    def packed(size):
        made = io.BytesIO()
        with zipfile.ZipFile(made, "w") as file:
            file.writestr("data", b"x" * size)
        return made.getvalue()
    return packed(length - len(packed(0)))


def content_of(length):
    """What that file holds."""
    with zipfile.ZipFile(io.BytesIO(archive(length))) as file:
        return file.read("data")


def page(body, status=200, promised=None, **headers):
    """An answer with that body; one that breaks off if more bytes are promised than come."""
    def answer(handler):
        handler.send_response(status)
        handler.send_header("Content-Length", str(promised or len(body)))
        for name, value in headers.items():
            handler.send_header(name, value)
        handler.end_headers()
        handler.wfile.write(body)
    return answer


class Server(http.server.ThreadingHTTPServer):
    """Answers on loopback by `pages`: functions of the request by their paths. `certificate`: the
    file of its certificate and key. `asked` tells of the requests, `met` counts the connections."""

    def __init__(self, pages, certificate=None):
        asked = self.asked = []
        self.met = 0

        class Handler(http.server.BaseHTTPRequestHandler):
            def do_GET(self):
                asked.append(self.path)
                pages[self.path](self)

            def log_message(self, *_):
                pass

        super().__init__(("127.0.0.1", 0), Handler)
        if certificate:
            context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
            context.load_cert_chain(certificate)
            self.socket = context.wrap_socket(self.socket, server_side=True,
                                              do_handshake_on_connect=False)
        threading.Thread(target=self.serve_forever, daemon=True).start()

    def get_request(self):
        connection = super().get_request()
        self.met += 1
        return connection

    def handle_error(self, *_):
        pass  # A client that hangs up is what some of these tests are about.


class Downloads(case.InstallerTest):
    def server(self, pages, certificate=None):
        """Gives the server and its address without the scheme."""
        server = Server(pages, certificate)
        self.addCleanup(server.server_close)
        self.addCleanup(server.shutdown)
        return server, f"127.0.0.1:{server.server_port}"

    def certificate(self, name):
        """Makes a certificate for the loopback address, signed by itself."""
        path = os.path.join(self.folder, name + ".pem")
        subprocess.run(["openssl", "req", "-x509", "-newkey", "ec", "-pkeyopt",
                        "ec_paramgen_curve:prime256v1", "-nodes", "-days", "2", "-subj",
                        "/CN=" + name, "-addext", "subjectAltName=IP:127.0.0.1", "-keyout", path,
                        "-out", path + ".public"], check=True, stderr=subprocess.DEVNULL)
        with open(path, "ab") as whole, open(path + ".public", "rb") as public:
            whole.write(public.read())
        return path

    def refusing_port(self):
        """A port that nobody listens on, nor can as long as the test runs."""
        taken = socket.socket()
        self.addCleanup(taken.close)
        taken.bind(("127.0.0.1", 0))
        return taken.getsockname()[1]

    def open_with(self, options, settings=None, **fields):
        """Starts an installer and takes it to the downloads: of (caption, address, folder)."""
        run = self.open(settings=settings, fInstallOptions=[
            {"caption": caption, "source": source, "folder": folder}
            for caption, source, folder in options], **fields)
        run.press("Install")
        page_of_options = run.window("Select Options")
        for caption, _, _ in options:
            run.press(caption, within=page_of_options)
        run.press("Continue", within=page_of_options)
        self.choose_folder(run)
        return run

    def close_messages(self, run, *messages):
        for message in messages:
            run.waits_for(message)
            run.press("OK")

    def test_each_kind_of_answer(self):
        plain, at = self.server({
            "/short.zip": page(archive(9999)),
            "/least.zip": page(archive(10000)),
            "/error.zip": page(b"<p>Not found</p>" * 1000, 404),
            "/moved.zip": page(b"Moved", 302, Location="/least.zip"),
            "/early.zip": page(archive(30000)[:9999], promised=30000),
            "/late.zip": page(archive(30000)[:15000], promised=30000)})
        ours = self.certificate("ours")
        safe, safely_at = self.server({"/safe.zip": page(archive(20000), 404)}, ours)
        strange, strangely_at = self.server({}, self.certificate("stranger"))
        rows = (("Short", f"http://{at}/short.zip", "both"),
                ("Least", f"http://{at}/least.zip", "none"),
                ("Error", f"http://{at}/error.zip", "own"),
                ("Moved", f"http://{at}/moved.zip", "both"),
                ("Refused", f"http://127.0.0.1:{self.refusing_port()}/refused.zip", "both"),
                ("Early", f"http://{at}/early.zip", "both"),
                ("Late", f"http://{at}/late.zip", "own"),
                ("Strange", f"https://{strangely_at}/strange.zip", "both"),
                ("Misnamed", f"https://localhost:{safe.server_port}/safe.zip", "both"),
                ("Safe", f"HTTPS://{safely_at}/safe.zip", "none"))
        run = self.open_with(
            # The last one comes through a folder of its own into the installed one.
            [(caption, address, "" if caption == "Safe" else caption)
             for caption, address, _ in rows], settings={"SSL_CERT_FILE": ours + ".public"})
        for caption, _, told in rows:
            messages = {"none": [], "own": ["Install failed for option " + caption],
                        "both": [_FAILED, "Install failed for option " + caption]}[told]
            self.close_messages(run, *messages)
        self.assert_ends(run)
        self.assertEqual(plain.asked, ["/short.zip", "/least.zip", "/error.zip", "/moved.zip",
                                       "/early.zip", "/late.zip"])
        self.assertEqual((strange.met, safe.met, safe.asked), (1, 2, ["/safe.zip"]))
        # A body that goes to the expansion gets a folder, also where nothing comes out of it.
        self.assertEqual(self.installed(), {
            "read me.txt": b"Hello", "Least": {"data": content_of(10000)}, "Error": {}, "Late": {},
            "data": content_of(20000)})
        self.assertEqual(os.listdir(self.target), ["Tool"])

    def test_silence_ends_a_download_and_slowness_does_not(self):
        begun = {}
        hold = threading.Event()
        self.addCleanup(hold.set)

        def trickle(handler):
            begun["trickle"] = time.monotonic()
            handler.send_response(200)
            handler.end_headers()
            body = archive(11000)
            for at in range(0, len(body), 1000):
                handler.wfile.write(body[at:at + 1000])
                hold.wait(2.1)

        def fall_silent(handler):
            handler.send_response(200)
            handler.send_header("Content-Length", "11000")
            handler.end_headers()
            handler.wfile.write(archive(11000)[:9999])
            begun["silence"] = time.monotonic()
            hold.wait()

        _, at = self.server({"/slow.zip": trickle, "/silent.zip": fall_silent})
        slow = self.open_with([("Slow", f"http://{at}/slow.zip", "Slow")], fTargetFolder="A")
        slow.waits_for("Installing Options Slow")
        silent = self.open_with([("Silent", f"http://{at}/silent.zip", "Silent")],
                                fTargetFolder="B")
        silent.waits_for("Installing Options Silent")
        self.assert_ends(slow)
        self.assertGreater(time.monotonic() - begun["trickle"], 21)
        self.assertEqual(self.installed("A")["Slow"], {"data": content_of(11000)})

        silent.waits_for(_FAILED)
        self.assertTrue(19 < time.monotonic() - begun["silence"] < 40)
        self.close_messages(silent, _FAILED, "Install failed for option Silent")
        self.assert_ends(silent)
        self.assertEqual(sorted(os.listdir(self.target)), ["A", "B"])
        self.assertEqual(self.installed("B"), {"read me.txt": b"Hello"})


if __name__ == "__main__":
    case.main()
