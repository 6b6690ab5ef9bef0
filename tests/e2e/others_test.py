"""Changes to the disk by other programs during an install. The run continues and ends, and the next
one succeeds."""

import os
import shutil

import case
from case import wait_until


class Others(case.InstallerTest):
    def begin_to_expand(self, bundle):
        """Starts an install and waits until the bar begins to fill."""
        run = self.begin(self.open(bundle))
        run.wait_for_bar()
        return run

    def assert_whole(self, name="Tool"):
        self.assertEqual(len(self.installed(name)["noise"]), 17000000)

    def assert_next_is_whole(self, bundle):
        self.install(self.open(bundle))
        self.assertEqual(os.listdir(self.target), ["Tool"])
        self.assert_whole()

    def test_two_setups_at_once(self):
        runs = {name: self.begin(self.open(fTargetFolder=name, **case.LONG))
                for name in ("One", "Two")}
        for name, run in runs.items():
            self.assert_ends(run)
            self.assert_whole(name)
        self.assertEqual(sorted(os.listdir(self.target)), ["One", "Two"])

    def test_the_same_setup_twice_at_once(self):
        bundle = self.bundle(**case.LONG)
        for run in [self.begin_to_expand(bundle), self.begin(self.open(bundle))]:
            def is_over(run=run):
                for button in run.controls("OK", "push button"):
                    button.press()  # Of any message.
                return not run.runs()
            wait_until(is_over, "the end", 60, run.described)
            self.assert_ends(run)
        self.assertNotIn("Tool.zip", os.listdir(self.target))
        self.assert_next_is_whole(bundle)

    def test_folders_deleted_while_the_bar_fills(self):
        bundle = self.bundle(**case.LONG)
        installed = os.path.join(self.target, "Tool")
        for gone in (installed, self.target):
            with self.subTest(gone):
                run = self.begin_to_expand(bundle)
                wait_until(lambda: os.path.exists(installed), "the expansion")
                shutil.rmtree(gone, ignore_errors=True)
                self.assert_ends(run)
                os.makedirs(self.target, exist_ok=True)
                self.assertNotIn("Tool.zip", os.listdir(self.target))
        self.assert_next_is_whole(bundle)


if __name__ == "__main__":
    case.main()
