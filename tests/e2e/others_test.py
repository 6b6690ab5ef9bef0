"""Two installers at once. Both end, and the next install succeeds."""

import os

import case
from case import wait_until


class Others(case.InstallerTest):
    def assert_whole(self, name="Tool"):
        self.assertEqual(len(self.installed(name)["noise"]), 17000000)

    def test_two_setups_at_once(self):
        runs = {name: self.begin(self.open(fTargetFolder=name, **case.LONG))
                for name in ("One", "Two")}
        for name, run in runs.items():
            self.assert_ends(run)
            self.assert_whole(name)
        self.assertEqual(sorted(os.listdir(self.target)), ["One", "Two"])

    def test_the_same_setup_twice_at_once(self):
        bundle = self.bundle(**case.LONG)
        first = self.begin(self.open(bundle))
        first.wait_for_bar()
        for run in [first, self.begin(self.open(bundle))]:
            def is_over(run=run):
                for button in run.controls("OK", "push button"):
                    button.press()  # Of any message.
                return not run.runs()
            wait_until(is_over, "the end", 60, run.described)
            self.assert_ends(run)
        self.assertNotIn("Tool.zip", os.listdir(self.target))
        self.install(self.open(bundle))
        self.assertEqual(os.listdir(self.target), ["Tool"])
        self.assert_whole()


if __name__ == "__main__":
    case.main()
