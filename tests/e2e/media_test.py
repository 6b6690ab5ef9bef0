"""Setups that come in parts: options from a server, payloads cut into pieces, patches."""

import os
import socket
import subprocess
import threading

import case
from case import wait_until


def option(caption, source, folder="Extras"):
    return {"caption": caption, "source": source, "folder": folder}


class Downloads(case.InstallerTest):
    def open_at_the_choice(self, *options, **fields):
        run = self.open(fInstallOptions=list(options), **fields)
        run.click("Install")
        run.window("Select Options")
        for entry in options:
            run.click_on(run.find(entry["caption"], "check box"))
        run.click("Continue")
        self.choose_folder(run)
        return run

    def trickle(self):
        """A server that sends a byte now and then, and never ends. Gives its address."""
        listener = socket.create_server(("127.0.0.1", 0))
        stop = threading.Event()

        def serve():
            client, _ = listener.accept()
            with client:
                client.recv(65536)
                client.sendall(b"HTTP/1.1 200 OK\r\nContent-Length: 1000000\r\n\r\n")
                while not stop.wait(0.2):
                    try:
                        client.sendall(b"x")
                    except OSError:
                        return

        threading.Thread(target=serve, daemon=True).start()
        self.addCleanup(listener.close)
        self.addCleanup(stop.set)
        return f"http://127.0.0.1:{listener.getsockname()[1]}"

    def test_option_comes_from_the_server_and_failed_ones_are_told(self):
        case.write_tree(os.path.join(self.folder, "songs"), {"song.txt": os.urandom(20000)})
        bundle = self.bundle(fInstallOptions=[{**option("Songs", "http://x.example/songs.zip"),
                                               "content": "../songs"}])
        with open(os.path.join(os.path.dirname(bundle), "songs.zip"), "rb") as archive:
            address, asked = self.serve({"/songs.zip": archive.read(), "/short.zip": b"x" * 9999,
                                         "/error.zip": b"<html>" * 3000})
        run = self.open_at_the_choice(option("Songs", f"{address}/songs.zip"),
                                      option("Short", f"{address}/short.zip"),
                                      option("Error", f"{address}/error.zip"))
        for message in ("Setup file download failed.", "Install failed for option Short",
                        "Install failed for option Error"):
            run.waits_for(message)
            run.key("Return")
        self.assert_ends(run)
        self.assertEqual(asked, ["/songs.zip", "/short.zip", "/error.zip"])
        self.assertEqual(len(self.installed()["Extras"]["song.txt"]), 20000)

    def test_window_lives_during_a_slow_download(self):
        run = self.open_at_the_choice(option("Songs", self.trickle() + "/songs.zip"))
        run.waits_for("Installing Options Songs")
        area = run.window("Install").area
        plain = self.screen.rows(*area)
        with self.screen.covered(area):
            self.assertNotEqual(self.screen.rows(*area)[100], plain[100])
        # Only the program itself can bring back what was covered.
        wait_until(lambda: self.screen.rows(*area) == plain, "the window to be painted")
        run.click("Quit")
        self.assert_ends(run)


class Pieces(case.InstallerTest):
    def test_split_setup_relocates_itself_and_goes_on(self):
        bundle = self.bundle(
            files={"release.txt": "What is new"}, fPostInstallNotes="release.txt",
            fCompletionURL="http://tool.example/done", pieceSize=1000,
            payload={"noise": os.urandom(2500)})
        run = self.open(bundle)
        run.click("Install")
        # The copy runs for itself, from the temporary folder.
        copy = wait_until(self.copied_program, "the copy to start")
        wait_until(lambda: "Drag the installer out of the Downloads folder before running it."
                   in self.named_controls(copy), "the copy's message")
        held = subprocess.run(["xclip", "-selection", "clipboard", "-o"], check=True,
                              stdout=subprocess.PIPE, timeout=30, encoding="utf-8").stdout
        self.assertEqual(held, os.path.dirname(bundle) + "/")
        self.assertTrue(self.named_controls(copy)["OK"].press())
        wait_until(lambda: not case.command_line(copy), "the copy to end")
        run.press("OK", within=run.window("Release Notes"))
        self.assert_ends(run)
        self.assert_opens(run, "http://tool.example/done")
        self.assertEqual(os.listdir(self.target), [])

    @staticmethod
    def named_controls(process):
        shown = case.program(process)
        return {node.name: node for node in shown.below()} if shown else {}

    def copied_program(self):
        """The id of the process that runs in the temporary folder, if any does."""
        return next((process for process in case.descendants()
                     if any("/user/tmp/zephin-" in word and word.endswith("/Setup")
                            for word in case.command_line(process))), None)


class Patches(case.InstallerTest):
    def test_patch_changes_what_is_installed(self):
        installed = os.path.join(self.target, "Tool")
        old = {"keep.txt": "keep", "change.txt": "old", "Gone": {"a": "a"}, "sub": {"gone.txt": "x"}}
        new = {"keep.txt": "keep", "change.txt": "new", "sub": {"added.txt": "y"}}
        case.write_tree(installed, old)
        run = self.open(files={"old": old, "new": new}, patch={"old": "old", "new": "new"})
        run.click("Install")
        self.choose_folder(run)
        self.assert_ends(run)
        case.write_tree(os.path.join(self.folder, "expected"), new)
        self.assertEqual(self.installed(), case.read_tree(os.path.join(self.folder, "expected")))
        self.assertEqual(os.listdir(self.target), ["Tool"])

    def test_patch_without_a_target_is_refused(self):
        run = self.open(fInstallationPatch=True)
        run.click("Install")
        self.choose_folder(run)
        run.waits_for("Patch Failed.  No installation folder exists.")
        run.key("Return")
        self.assert_ends(run)
        self.assertEqual(os.listdir(self.target), [])


if __name__ == "__main__":
    case.main()
