"""Downloads from good, slow, silent and untrusted servers."""

import io
import os
import time
import zipfile

import case
from case import page, wait_until

_FAILED = "Setup file download failed."
_AROUND = 106  # Length of an archive minus that of its single file.


def content(length):
    """The content of the file in an archive of that length."""
    return b"x" * (length - _AROUND)


def archive(length):
    """An archive of exactly that length with one file, "data"."""
    made = io.BytesIO()
    with zipfile.ZipFile(made, "w") as file:
        file.writestr("data", content(length))
    assert len(made.getvalue()) == length
    return made.getvalue()


class Downloads(case.InstallerTest):
    def open_with(self, options, settings=None, **fields):
        """Starts an installer up to the downloads. `options`: (caption, address, folder)."""
        run = self.open(settings=settings, fInstallOptions=[
            {"caption": caption, "source": source, "folder": folder}
            for caption, source, folder in options], **fields)
        return self.begin(run, *(caption for caption, _, _ in options), "Continue")

    def test_each_kind_of_answer(self):
        plain = self.serve({
            "/least.zip": page(archive(10000)),
            "/moved.zip": page(b"Moved", 302, Location="/least.zip"),
            "/late.zip": page(archive(30000)[:15000], promised=30000)})
        ours = self.certificate("ours")
        safe = self.serve({"/safe.zip": page(archive(20000), 404)}, ours)
        strange = self.serve({}, self.certificate("stranger"))
        rows = (("Least", f"http://{plain.address}/least.zip", "none"),
                ("Moved", f"http://{plain.address}/moved.zip", "both"),
                ("Late", f"http://{plain.address}/late.zip", "own"),
                ("Strange", f"https://{strange.address}/strange.zip", "both"),
                ("Misnamed", f"https://localhost:{safe.server_port}/safe.zip", "both"),
                ("Safe", f"HTTPS://{safe.address}/safe.zip", "none"))
        run = self.open_with(
            # The last one is merged into the installed folder.
            [(caption, address, "" if caption == "Safe" else caption)
             for caption, address, _ in rows], settings={"SSL_CERT_FILE": ours[0]})
        for caption, _, messages_of in rows:
            messages = [_FAILED, "Install failed for option " + caption]
            run.dismiss(*messages[{"both": 0, "own": 1, "none": 2}[messages_of]:])
        self.assert_ends(run)
        self.assertEqual(plain.asked, ["/least.zip", "/moved.zip", "/late.zip"])
        self.assertEqual((strange.met, safe.met, safe.asked), (1, 2, ["/safe.zip"]))
        # The expansion of a damaged archive still creates its folder.
        self.assertEqual(self.installed(), {
            "read me.txt": b"Hello", "Least": {"data": content(10000)}, "Late": {},
            "data": content(20000)})
        self.assertEqual(os.listdir(self.target), ["Tool"])

    def test_silence_ends_a_download_and_slowness_does_not(self):
        body = archive(11000)
        silence = []

        def trickle():
            for at in range(0, len(body), 1000):
                yield body[at:at + 1000]
                time.sleep(2.1)  # In total more than the limit on silence.

        def fall_silent(request):
            page(body[:9999], promised=len(body))(request)
            begin = time.monotonic()
            request.rfile.read(1)  # Returns when the client disconnects.
            silence.append(time.monotonic() - begin)

        server = self.serve({"/slow.zip": page(trickle(), promised=len(body)),
                             "/silent.zip": fall_silent})
        slow, silent = (
            self.open_with([(name, f"http://{server.address}/{name}.zip", "Songs")],
                           fTargetFolder=name) for name in ("slow", "silent"))
        silent.waits_for("Installing Options silent")
        self.assert_ends(slow)
        self.assertEqual(self.installed("slow")["Songs"], {"data": content(11000)})

        silent.dismiss(_FAILED, "Install failed for option silent")
        self.assert_ends(silent)
        wait_until(lambda: silence, "the installer to disconnect")
        self.assertTrue(19 < silence[0] < 40, silence)
        self.assertEqual(sorted(os.listdir(self.target)), ["silent", "slow"])
        self.assertEqual(self.installed("silent"), {"read me.txt": b"Hello"})

    def test_window_repaints_during_a_slow_download(self):
        def trickle():
            while True:
                yield b"x"
                time.sleep(0.2)

        server = self.serve({"/endless.zip": page(trickle(), promised=1000000)})
        run = self.open_with([("Songs", f"http://{server.address}/endless.zip", "")])
        run.waits_for("Installing Options Songs")
        area = run.place_at_rest(run.window("Install"))
        plain = self.screen.rows(*area)
        with self.screen.covered(area):
            self.assertNotEqual(self.screen.rows(*area)[100], plain[100])
        # Only the program itself can repaint the covered part.
        wait_until(lambda: self.screen.rows(*area) == plain, "the window to be painted")
        run.click("Quit")
        self.assert_ends(run)


if __name__ == "__main__":
    case.main()
