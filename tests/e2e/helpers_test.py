"""Helper programs of a publisher: real scripts, which talk to the installer over the clipboard."""

import os
import time

import case
from case import wait_until

# say TEXT: puts a text on the clipboard. heard: what stands there.
_SHELL = """#!/bin/sh
say() { printf '%s' "$1" | xclip -selection clipboard -i >/dev/null 2>&1; }
heard() { xclip -selection clipboard -o 2>/dev/null; }
"""


class Helper(case.InstallerTest):
    def program(self, name, script):
        """Writes a shell script, from which a setup's folder is one step away."""
        path = os.path.join(self.folder, name)
        case.write_tree(self.folder, {name: _SHELL + script})
        os.chmod(path, 0o755)
        return path

    def open_with(self, script, field="fExecuteBeforeName", **fields):
        self.program("helper.sh", script)
        return self.open(helpers=["../helper.sh"], **{field: "helper.sh"}, **fields)


class Before(Helper):
    def test_installer_waits_hidden_and_shows_the_helpers_message(self):
        go = os.path.join(self.folder, "go")
        run = self.open_with(f"say ZephinInstallWait\ntouch '{go}.ready'\n"
                             f"until [ -e '{go}' ]; do sleep 0.1; done\n"
                             "say 'zephininstalldone:All & <b>set</b>'")
        wait_until(lambda: os.path.exists(go + ".ready"), "the helper to start")
        # The grace of three seconds, and one look at the clipboard more.
        limit = time.monotonic() + 5
        wait_until(lambda: run.titles() or time.monotonic() > limit, "the time to pass")
        self.assertEqual(run.titles(), [])
        case.write_tree(self.folder, {"go": ""})
        run.waits_for("All & <b>set</b>")
        run.key("Return")
        run.click("Quit", within=run.window("Install"))
        self.assert_ends(run)

    def test_replies(self):
        for reply, message, goes_on in (
                ("ZephinInstallAbort:No room", "No room", False),
                ("ZephinInstallAbort:", None, False),
                ("ZephinInstallDone:x", None, True),
                ("ZephinInstallWait ", None, True)):
            with self.subTest(reply):
                run = self.open_with(f"say '{reply}'")
                if message:
                    run.waits_for(message)
                    run.key("Return")
                if goes_on:
                    run.window("Install")
                    self.assertEqual(run.titles(), ["Install"])
                    run.click("Quit")
                self.assert_ends(run)

    def test_helper_that_is_silent_or_missing_delays_and_no_more(self):
        for there in (True, False):
            with self.subTest(there=there):
                self.program("helper.sh", "exec sleep 1000")
                bundle = self.bundle(helpers=["../helper.sh"], fExecuteBeforeName="helper.sh")
                if not there:
                    os.remove(self.resource(bundle, "helper.sh"))
                begin = time.monotonic()
                run = self.open(bundle)
                run.window("Install")
                self.assertGreater(time.monotonic() - begin, 3)
                run.click("Quit")
                self.assert_ends(run)

    def test_missing_helper_outside_the_bundle_delays_nothing(self):
        for name in ("SetupFolder/none.sh", "UserAccount/none.sh", "FixedPath//none.sh"):
            with self.subTest(name):
                run = self.open(fExecuteBeforeName=name)
                run.window("Install", seconds=2.5)
                run.press("Quit")
                self.assert_ends(run)

    def test_helper_beside_the_installer_finds_its_place_on_the_clipboard(self):
        heard = os.path.join(self.folder, "heard")
        self.program("helper.sh", f"heard > '{heard}'\nsay ZephinInstallDone:")
        run = self.open(fExecuteBeforeName="SetupFolder/helper.sh")
        run.window("Install")
        with open(heard, encoding="utf-8") as told:
            self.assertEqual(told.read(), os.path.join(self.folder, "helper.sh"))


class After(Helper):
    def install(self, run):
        run.click("Install")
        self.choose_folder(run)
        self.assert_ends(run)

    def test_launched_script_outlives_the_run(self):
        run = self.open_with("exec sleep 1000.25", "fExecuteAfterName")
        self.install(run)
        wait_until(lambda: any("1000.25" in case.command_line(process)
                               for process in case.descendants()), "the script to run")

    def test_bundle_and_document(self):
        seen = os.path.join(self.folder, "seen")
        case.write_tree(self.folder, {"Helper é.app": {"Contents": {"MacOS": {}}}})
        program = self.program("Helper é.app/Contents/MacOS/run", f"touch '{seen}'")
        self.assertTrue(os.access(program, os.X_OK))
        self.install(self.open(helpers=["../Helper é.app"], fExecuteAfterName="Helper é.app"))
        wait_until(lambda: os.path.exists(seen), "the bundle's program to run")
        case.shutil.rmtree(os.path.join(self.target, "Tool"))

        bundle = self.bundle(files={"read me.txt": "Hi"}, helpers=["read me.txt"],
                             fExecuteAfterName="read me.txt")
        run = self.open(bundle)
        self.install(run)
        self.assert_opens(run, self.resource(bundle, "read me.txt"))


if __name__ == "__main__":
    case.main()
