"""Helper programs of a publisher: real scripts, which communicate over the clipboard."""

import os
import pathlib
import subprocess
import time

import case
from case import wait_until

# say TEXT: sets the text of the clipboard. heard: prints it.
_SHELL = """say() { printf '%s' "$1" | xclip -selection clipboard -i >/dev/null 2>&1; }
heard() { xclip -selection clipboard -o 2>/dev/null; }
"""


class Helper(case.InstallerTest):
    def setUp(self):
        super().setUp()
        self.sign = pathlib.Path(self.folder, "sign")  # Created by a script for its test.

    def program(self, script, name="helper.sh"):
        """Writes a shell script into the parent of the setups' folders."""
        return case.write_script(os.path.join(self.folder, name), _SHELL + script)

    def open_with(self, script, field="fExecuteBeforeName", **fields):
        self.program(script)
        return self.open(helpers=["../helper.sh"], **{field: "helper.sh"}, **fields)

    def quit(self, run):
        """Waits until only the main window is visible, and quits."""
        run.window("Install")
        wait_until(lambda: run.titles() == ["Install"], "one window", 30, run.described)
        run.press("Quit")
        self.assert_ends(run)


class Before(Helper):
    def test_installer_waits_hidden_and_shows_the_message(self):
        go = os.path.join(self.folder, "go")
        run = self.open_with(f"say ZephinInstallWait\ntouch '{self.sign}'\n"
                             f"until [ -e '{go}' ]; do sleep 0.1; done\n"
                             "say 'zephininstalldone:All & <b>set</b>'")
        wait_until(self.sign.exists, "the helper to start")
        # The three seconds for an answer, and one further check of the clipboard.
        limit = time.monotonic() + 5
        wait_until(lambda: run.titles() or time.monotonic() > limit, "the time to pass")
        self.assertEqual(run.titles(), [])
        case.write_tree(self.folder, {"go": ""})
        run.dismiss("All & <b>set</b>")
        self.quit(run)

    def test_busy_helper_is_waited_for(self):
        # Longer than the three seconds for an answer.
        run = self.open_with(
            "printf ZephinInstallWait | xclip -selection clipboard -i -quiet >/dev/null 2>&1 &\n"
            "until [ \"$(heard)\" = ZephinInstallWait ]; do sleep 0.1; done\n"
            "kill -STOP $!\nsleep 7\nkill -CONT $!\nsay 'ZephinInstallDone:All set'")
        run.dismiss("All set")
        self.quit(run)

    def test_clipboard_replaced_while_a_helper_works(self):
        for text in ("what a user has copied", "", "x" * 5000000):
            with self.subTest(text[:30]):
                run = self.open_with(f"say ZephinInstallWait\ntouch '{self.sign}'\nexec sleep 1000")
                wait_until(self.sign.exists, "the helper to start")
                self.assertEqual(run.titles(), [])
                subprocess.run(["xclip", "-selection", "clipboard", "-i"], input=text.encode(),
                               stdout=subprocess.DEVNULL, check=True, timeout=30)
                self.quit(run)
                self.sign.unlink()


class After(Helper):
    def test_launched_script_outlives_the_run(self):
        self.install(self.open_with("exec sleep 1000.25", "fExecuteAfterName"))
        wait_until(lambda: case.descendant_where(lambda words: "1000.25" in words),
                   "the script to run")


if __name__ == "__main__":
    case.main()
