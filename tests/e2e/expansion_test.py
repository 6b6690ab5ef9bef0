"""The window of an expansion: nothing for a short one, progress for a long one, and after a failure
what is missing, why, and what to do, until the user closes it."""

import contextlib
import os
import resource
import shutil
import signal
import struct
import subprocess
import threading
import time
import unittest
import zipfile

import case
from case import wait_until
from processes import descendant_where, start_as_user

_HELPERS = os.path.join(case.STUB, "Contents", "Helpers")
_SETTINGS = {"LC_ALL": "C.UTF-8", "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1",
             "ASAN_OPTIONS": "detect_leaks=0:handle_abort=0"}
# As words_table.cpp has them.
_FAILED = "Unpacking failed"
_PROGRESS = "Unpacking “Tool”"
_NOISE = {f"file {i}": os.urandom(300_000) for i in range(20)}


def write_archive(path, files, name="Tool"):
    with zipfile.ZipFile(path, "w", zipfile.ZIP_STORED) as archive:
        for file, content in files.items():
            archive.writestr(f"{name}/{file}", content)


def damage(path, name):
    """Changes a byte of a stored file's data."""
    with zipfile.ZipFile(path) as archive:
        info = archive.getinfo(name)
    with open(path, "r+b") as file:
        file.seek(info.header_offset + 26)
        place = info.header_offset + 30 + sum(struct.unpack("<HH", file.read(4)))
        file.seek(place)
        byte = file.read(1)[0]
        file.seek(place)
        file.write(bytes([byte ^ 1]))


@contextlib.contextmanager
def small_disk(folder, size):
    """Mounts a file system of that many bytes; only the system's user can."""
    mount = subprocess.run(["mount", "-t", "tmpfs", "-o", f"size={size}", "tmpfs", folder],
                           stderr=subprocess.PIPE, check=False)
    if mount.returncode != 0:
        raise unittest.SkipTest("this machine allows no mounts: " + mount.stderr.decode())
    try:
        yield
    finally:
        # At once, also if a window of a failed test were to hold it.
        subprocess.run(["umount", "--lazy", folder], check=True)


class ExpansionTest(case.InstallerTest):
    def setUp(self):
        super().setUp()
        self.archive = os.path.join(self.target, "Tool.zip")

    def start(self, program="expand_beside", *arguments, limit=None, **settings):
        """Starts the expander as an installer does: detached, without output."""
        def prepare():
            start_as_user()
            if limit:
                resource.setrlimit(*limit)
        return subprocess.Popen(
            [os.path.join(_HELPERS, program), *(arguments or [self.archive])], cwd="/",
            env={**os.environ, **_SETTINGS, **settings}, preexec_fn=prepare,
            stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def window_process(self):
        return descendant_where(lambda words: words and words[0].endswith("expansion_window"))

    def window_of(self, seconds=30):
        """Waits for the window program."""
        process = wait_until(self.window_process, "a window program", seconds)
        shown = case.Program(self.screen, process)
        self.opened.append(shown)
        return shown

    def assert_closes(self, shown):
        wait_until(lambda: self.window_process() != shown.id, "the window to end", 30,
                   shown.described)

    def assert_fails(self, *texts, **options):
        """The expansion ends with a window that has these texts. Gives it."""
        process = self.start(**options)
        self.assertEqual(process.wait(60), 1)
        shown = self.window_of()
        window = shown.window(_FAILED)
        self.assertEqual(window.role, "alert")
        found = [node.name for node in shown.controls(role="label", within=window)]
        for text in texts:
            self.assertTrue(any(text in name for name in found), f"{text!r} in {found}")
        return shown

    def close(self, shown):
        shown.key("Return")
        self.assert_closes(shown)


class Failures(ExpansionTest):
    def test_disk_without_room(self):
        with small_disk(self.target, 10_000_000):
            write_archive(self.archive, _NOISE)
            shown = self.assert_fails("“Tool” could not be unpacked.", f"Folder: {self.target}",
                                      "not enough space", "6.1\u00a0MB are needed",
                                      "Nothing was unpacked.", "open the installer again")
            self.assertEqual(os.listdir(self.target), ["Tool.zip"])
            self.close(shown)

    def test_disk_filled_by_others(self):
        """Each file is small enough, but one is larger than the user's limit."""
        write_archive(self.archive, {**_NOISE, "large": bytes(5_000_000)})
        shown = self.assert_fails(
            "“Tool” was not unpacked completely.", "larger than this disk", "“Tool/large”",
            "20 items were unpacked and left in “Tool”", "another disk",
            limit=(resource.RLIMIT_FSIZE, (2_000_000, 2_000_000)))
        self.close(shown)

    def test_damaged_entries(self):
        write_archive(self.archive, _NOISE)
        for number in range(5):
            damage(self.archive, f"Tool/file {number}")
        shown = self.assert_fails(
            "data in the archive are damaged",
            "Missing: “Tool/file 0”, “Tool/file 1”, “Tool/file 2” and 2 others.",
            "15 items were unpacked and left in “Tool”.", "Get the installer again")
        self.assertTrue(shown.screen.icon_of(shown.x_window(_FAILED)))
        self.assertEqual(shown.controls("Missing items"), [])
        shown.press("Details")
        names = shown.find("Missing items", "text")
        self.assertEqual(names.text, "\n".join(f"Tool/file {i}" for i in range(5)))
        shown.wait_for_focus("Close")
        self.close(shown)

    def test_truncated_archive(self):
        write_archive(self.archive, _NOISE)
        os.truncate(self.archive, os.path.getsize(self.archive) // 2)
        shown = self.assert_fails("“Tool” could not be unpacked.", "damaged or incomplete")
        shown.key("Escape")
        self.assert_closes(shown)

    def test_read_only_folder(self):
        write_archive(self.archive, _NOISE)
        os.chmod(self.target, 0o500)
        self.close(self.assert_fails("“Tool” could not be unpacked.", "right to write",
                                     "choose a folder that you may change"))

    def test_two_at_once(self):
        for name in ("One", "Two"):
            self.archive = os.path.join(self.target, name + ".zip")
            write_archive(self.archive, _NOISE, name)
            damage(self.archive, f"{name}/file 7")
            self.start().wait(60)
        # The window manager has a window before its title.
        wait_until(lambda: [title for _, title in self.screen.windows()] == [_FAILED] * 2,
                   "two windows")

    def test_installer(self):
        """The window comes beside the installer's, doesn't take its focus and outlives it."""
        bundle = self.bundle(payload=_NOISE)
        # Incompressible files fill the payload: the middle is in one of them.
        with open(self.resource(bundle, "Data2"), "r+b") as payload:
            payload.seek(os.path.getsize(payload.name) // 2)
            byte = payload.read(1)[0]
            payload.seek(-1, os.SEEK_CUR)
            payload.write(bytes([byte ^ 1]))
        run = self.begin(self.open(bundle))
        shown = self.window_of()
        x_window = shown.x_window(_FAILED)
        self.assertNotEqual(self.screen.active_window(), x_window.id)
        left, top, width, height = shown.window(_FAILED).area
        for window in run.windows():
            x, y, w, h = window.area
            self.assertTrue(left >= x + w or x >= left + width or top >= y + h or y >= top + height,
                            (shown.window(_FAILED).area, window.area))
        self.assert_ends(run)
        self.assertEqual(shown.titles(), [_FAILED])
        shown.press("Close")
        self.assert_closes(shown)


class LongOnes(ExpansionTest):
    def begin_large(self, program="expand_beside", *arguments):
        """Starts a long expansion and stops it with its window open. Gives the process and the
        window."""
        with zipfile.ZipFile(self.archive, "w", zipfile.ZIP_DEFLATED, compresslevel=1) as archive:
            for number in range(4):
                with archive.open(f"Tool/zeros {number}", "w") as file:
                    for _ in range(100):
                        file.write(bytes(1_000_000))
        process = self.start(program, *arguments)
        wait_until(lambda: os.path.exists(os.path.join(self.target, "Tool")), "the expansion")
        # A second passes for its window, while it makes no progress.
        begin = time.monotonic()
        os.kill(process.pid, signal.SIGSTOP)
        wait_until(lambda: time.monotonic() > begin + 1.1, "some time")

        # In short turns, or a busy machine could end it before its window is seen.
        def goes_on():
            begin = time.monotonic()
            os.kill(process.pid, signal.SIGCONT)
            wait_until(lambda: time.monotonic() > begin + 0.02, "a moment")
            os.kill(process.pid, signal.SIGSTOP)
            return self.window_process()
        wait_until(goes_on, "a window program")
        shown = self.window_of()
        turns = [time.monotonic()]

        # It may not yet have said what to show, and gets a few turns more for that.
        def is_shown():
            if time.monotonic() > turns[-1] + 1:
                turns.append(time.monotonic())
                goes_on()
            return _PROGRESS in shown.titles()
        wait_until(is_shown, "a window of the progress")
        return process, shown

    def assert_goes_on(self, process):
        os.kill(process.pid, signal.SIGCONT)
        self.assertEqual(process.wait(120), 0)
        self.assertEqual(len(os.listdir(os.path.join(self.target, "Tool"))), 4)

    def test_progress(self):
        process, shown = self.begin_large()
        bar = shown.find(_PROGRESS, "progress bar")
        self.assertEqual(bar.value[1], 100)
        self.assertNotEqual(self.screen.active_window(), shown.x_window(_PROGRESS).id)
        self.assertTrue(any("of 400\u00a0MB" in node.name for node in shown.controls()),
                        shown.described())
        shown.waits_for("The installer has ended. Unpacking continues.")
        # Hiding it stops nothing.
        shown.press("Hide")
        wait_until(lambda: not shown.windows(), "the window to hide")
        self.assert_goes_on(process)
        self.assert_closes(shown)

    def test_window_killed(self):
        process, shown = self.begin_large()
        os.kill(shown.id, signal.SIGKILL)
        self.assert_goes_on(process)

    def test_expander_killed(self):
        process, shown = self.begin_large()
        process.kill()
        process.wait()
        shown.window(_FAILED)
        shown.waits_for("Unpacking was broken off before it was complete.")
        shown.press("Close")
        self.assert_closes(shown)

    def test_tree_taken_away(self):
        process, shown = self.begin_large()
        shutil.rmtree(os.path.join(self.target, "Tool"))
        os.kill(process.pid, signal.SIGCONT)
        process.wait(60)
        self.assert_closes(shown)

    def test_ditto_shows_progress_only(self):
        process, shown = self.begin_large("ditto", "-xk", self.archive, self.target)
        process.kill()
        process.wait()
        self.assert_closes(shown)

    def test_no_display(self):
        write_archive(self.archive, _NOISE)
        damage(self.archive, "Tool/file 3")
        for display in ("", ":9999"):
            self.assertEqual(self.start(DISPLAY=display).wait(60), 1)
            wait_until(lambda: not self.window_process(), "the window program to end")

    def test_short_ones_show_nothing(self):
        """Three times an expansion of 0.9 s. One that this machine makes longer or
        shorter does not count."""
        counted = []

        def expands():
            self.archive = os.path.join(self.target, f"Short {len(os.listdir(self.target))}.zip")
            write_archive(self.archive, {"small": "Hello"})
            begin = time.monotonic()
            process = self.start()
            process.send_signal(signal.SIGSTOP)
            threading.Timer(0.8, process.send_signal, (signal.SIGCONT,)).start()
            seen = []
            while process.poll() is None:
                seen.append(self.window_process())
            if 0.8 < time.monotonic() - begin < 1:
                self.assertEqual(process.returncode, 0)
                self.assertFalse(any(seen) or self.window_process())
                counted.append(process)
            return len(counted) == 3
        wait_until(expands, "three short expansions", 120)


if __name__ == "__main__":
    case.main()
