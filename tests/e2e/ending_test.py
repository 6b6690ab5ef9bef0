"""The ends of a run, the bad ones included: each has status 0, and says what there is to say."""

import os
import shutil
import signal
import subprocess

import case
from case import wait_until

_CHOICES = 22  # The place of the choice list in the record.


class Endings(case.InstallerTest):
    def test_window_managers_close_and_quit_keys(self):
        for way in ("close", "keys"):
            with self.subTest(way):
                run = self.open()
                if way == "close":
                    run.ask_to_close("Install")
                else:
                    run.key("Control_L+q")
                self.assert_ends(run)

    def test_quit_keys_end_the_run_from_a_question(self):
        run = self.open(files={"agreement.txt": "Be kind"}, fAgreement="agreement.txt")
        run.click("Install")
        run.window("License Agreement")
        run.key("Control_L+q")
        self.assert_ends(run)

    def test_signals(self):
        for number in (signal.SIGTERM, signal.SIGHUP, signal.SIGINT):
            with self.subTest(number.name):
                run = self.open()
                run.window("Install")
                run.process.send_signal(number)
                self.assert_ends(run)

    def test_no_display(self):
        for display in ("", ":4711"):
            with self.subTest(display):
                run = self.open(settings={"DISPLAY": display})
                self.assert_ends(run)
                self.assertRegex(run.said(), r"\A[^\n]*display[^\n]*\n\Z")

    def test_display_dies(self):
        for state in ("waiting", "installing"):
            with self.subTest(state):
                run = self.open(settings={"DISPLAY": self.session.add_screen()},
                                **case.LONG if state == "installing" else {})
                run.window("Install")
                if state == "installing":
                    run.press("Install")
                    run.find("Directory:", "text").enter(self.target)
                    run.press("Select")
                    run.find("Progress", "progress bar")
                self.session.kill_screen()
                self.assert_ends(run)

    def test_clipboard_outlives_the_run(self):
        bundle = self.bundle(fExecuteAfterName="FixedPath//nothing/here é.sh")
        run = self.open(bundle)
        run.click("Install")
        self.choose_folder(run)
        self.assert_ends(run)
        held = subprocess.run(["xclip", "-selection", "clipboard", "-o"], check=True,
                              stdout=subprocess.PIPE, timeout=30, encoding="utf-8").stdout
        self.assertEqual(held, os.path.dirname(bundle) + "//nothing/here é.sh")


class Faults(case.InstallerTest):
    def report(self, run):
        """Waits for the report of an exception, closes it and gives its text."""
        alert = wait_until(lambda: next((w for w in run.windows() if w.role == "alert"), None),
                           "the report", 30, run.described)
        told = " ".join(node.text for node in alert.below() if node.role in ("label", "text"))
        run.key("Return")
        self.assert_ends(run)
        return told

    def test_missing_record_is_reported(self):
        for kept in ("TextData", "Data"):
            with self.subTest(kept=kept):
                bundle = self.bundle()
                os.remove(self.resource(bundle, "Data" if kept == "TextData" else "TextData"))
                self.assertIn("OutOfBounds", self.report(self.open(bundle)))

    def test_more_choices_than_rows_are_reported_before_a_dialog_shows(self):
        bundle = self.bundle()
        self.rewrite(bundle, _CHOICES, "|".join(f"{i},{i}.zip,x" for i in range(11)))
        run = self.open(bundle)
        run.click("Install")
        self.assertIn("NilObject", self.report(run))
        self.assertEqual(os.listdir(self.target), [])

    def test_missing_payload_fails_with_a_message_and_goes_on(self):
        bundle = self.bundle(files={"release.txt": "What is new"}, fPostInstallNotes="release.txt",
                             fCompletionURL="http://tool.example/done")
        os.remove(self.resource(bundle, "Data2"))
        run = self.open(bundle)
        run.click("Install")
        self.choose_folder(run)
        run.waits_for("Installation Failed")
        run.key("Return")
        run.click("OK", within=run.window("Release Notes"))
        self.assert_ends(run)
        self.assert_opens(run, "http://tool.example/done")
        self.assertEqual(os.listdir(self.target), [])

    def test_copy_in_the_temporary_folder_refuses_to_run(self):
        temporary = os.path.join(self.folder, "user", "tmp", f"zephin-{os.getuid()}")
        copy = os.path.join(temporary, "Install.app")
        shutil.copytree(self.bundle(), copy)
        os.chmod(temporary, 0o700)
        run = self.open(copy)
        run.waits_for("Drag the installer out of the Downloads folder before running it.")
        self.assertEqual(len(run.windows()), 1, "the main window is hidden")
        run.key("Return")
        self.assert_ends(run)


if __name__ == "__main__":
    case.main()
