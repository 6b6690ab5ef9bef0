"""What others do to the disk and the clipboard while an installer is at work: it goes on, or Quit ends
it, and nothing of it stays in the way of the next one."""

import os
import shutil
import stat
import subprocess

import case
from case import wait_until

_SAY = "printf '%s' \"$1\" | xclip -selection clipboard -i >/dev/null 2>&1"


class Others(case.InstallerTest):
    def install(self, bundle):
        run = self.open(bundle)
        run.press("Install")
        self.choose_folder(run)
        return run

    def bar_of(self, run):
        bar = run.find("Progress", "progress bar")
        wait_until(lambda: bar.value[0] > 0, "the bar to move", 30, run.described)

    def close_messages(self, run, seconds=60):
        """Closes what is told until the run ends. Gives the titles and texts."""
        told = []

        def is_over():
            for window in run.windows():
                if window.role == "alert":
                    told.append(" ".join(node.name for node in window.below() if node.role == "label"))
                    run.press("OK", within=window)
            return not run.runs()
        wait_until(is_over, "the end", seconds, run.described)
        self.assert_ends(run)
        return told

    def assert_next_is_whole(self, bundle):
        run = self.install(bundle)
        self.assert_ends(run)
        self.assertEqual(os.listdir(self.target), ["Tool"])
        self.assertEqual(len(self.installed()["noise"]), 17000000)

    def test_the_same_setup_twice_at_once(self):
        bundle = self.bundle(**case.LONG)
        first = self.install(bundle)
        self.bar_of(first)
        second = self.install(bundle)
        for run in (first, second):
            self.close_messages(run)
        self.assertNotIn("Tool.zip", os.listdir(self.target))
        self.assert_next_is_whole(bundle)

    def test_folders_taken_away_while_the_bar_fills(self):
        bundle = self.bundle(**case.LONG)
        for gone in (os.path.join(self.target, "Tool"), self.target):
            with self.subTest(gone):
                run = self.install(bundle)
                self.bar_of(run)
                wait_until(lambda: os.path.exists(os.path.join(self.target, "Tool")), "the expansion")
                shutil.rmtree(gone, ignore_errors=True)
                self.assertEqual(self.close_messages(run), [])
                os.makedirs(self.target, exist_ok=True)
                self.assertNotIn("Tool.zip", os.listdir(self.target))
        self.assert_next_is_whole(bundle)

    def test_folder_made_read_only_while_the_bar_fills(self):
        bundle = self.bundle(**case.LONG)
        run = self.install(bundle)
        self.bar_of(run)
        os.chmod(self.target, stat.S_IRUSR | stat.S_IXUSR)
        bar = run.find("Progress", "progress bar")
        wait_until(lambda: bar.value[0] >= bar.value[1], "the bar to be full", 60, run.described)
        # The archive can't be deleted, and is tried again and again: Quit ends that.
        run.click("Quit")
        self.assert_ends(run)
        self.assertIn("Tool.zip", os.listdir(self.target))
        os.chmod(self.target, stat.S_IRWXU)
        self.assert_next_is_whole(bundle)

    def test_clipboard_taken_while_a_helper_works(self):
        started = os.path.join(self.folder, "started")
        helper = os.path.join(self.folder, "helper.sh")
        case.write_tree(self.folder, {"helper.sh": f"#!/bin/sh\nset ZephinInstallWait\n{_SAY}\n"
                                                   f"touch '{started}'\nexec sleep 1000\n"})
        os.chmod(helper, 0o755)
        for text in ("what a user has copied", "", "x" * 5000000):
            with self.subTest(text[:30]):
                run = self.open(helpers=["../helper.sh"], fExecuteBeforeName="helper.sh")
                wait_until(lambda: os.path.exists(started), "the helper to start")
                self.assertEqual(run.titles(), [])
                subprocess.run(["xclip", "-selection", "clipboard", "-i"], input=text.encode(),
                               stdout=subprocess.DEVNULL, check=True, timeout=30)
                run.window("Install")
                self.assertEqual(run.titles(), ["Install"])
                run.click("Quit")
                self.assert_ends(run)
                os.remove(started)


if __name__ == "__main__":
    case.main()
