"""The ends of a run, the bad ones included: each has status 0, and says what there is to say."""

import os
import shutil
import signal

import case
from case import wait_until
from hearing import assert_heard

_CHOICES = 22  # The place of the choice list in the record.


class Endings(case.InstallerTest):
    def test_asked_to_end(self):
        rows = {"close": lambda run: run.ask_to_close("Install"),
                "keys": lambda run: run.key("Control_L+q"),
                **{number.name: lambda run, number=number: run.process.send_signal(number)
                   for number in (signal.SIGTERM, signal.SIGHUP, signal.SIGINT)}}
        for way, ask in rows.items():
            with self.subTest(way):
                run = self.open()
                run.window("Install")
                ask(run)
                self.assert_ends(run)

    def test_quit_keys_end_the_run_from_a_question(self):
        run = self.open(files={"agreement.txt": "Be kind"}, fAgreement="agreement.txt")
        run.press("Install")
        run.window("License Agreement")
        run.key("Control_L+q")
        self.assert_ends(run)

    def test_no_display(self):
        for display in ("", ":4711"):
            with self.subTest(display):
                run = self.open(settings={"DISPLAY": display})
                self.assert_ends(run)
                self.assertRegex(run.said(), r"\A[^\n]*display[^\n]*\n\Z")

    def test_display_dies(self):
        bundle = self.bundle(**case.LONG)
        for state in ("waiting", "installing"):
            with self.subTest(state):
                run = self.open(bundle, {"DISPLAY": self.session.add_screen()})
                run.window("Install")
                if state == "installing":
                    self.begin(run).wait_for_bar()
                self.session.kill_screen()
                self.assert_ends(run)

    def test_clipboard_outlives_the_run(self):
        bundle = self.bundle(fExecuteAfterName="FixedPath//nothing/here é.sh")
        self.install(self.open(bundle))
        self.assertEqual(case.clipboard(), os.path.dirname(bundle) + "//nothing/here é.sh")


class Faults(case.InstallerTest):
    def assert_reported(self, run, kind):
        """The program ends with a report of that kind of failure, which can be heard."""
        alert = wait_until(lambda: next((w for w in run.windows() if w.role == "alert"), None),
                           "the report", 30, run.described)
        assert_heard(alert)
        self.assertIn(kind, " ".join(node.text for node in alert.below()))
        run.key("Return")
        self.assert_ends(run)

    def test_missing_record_is_reported(self):
        for gone in ("TextData", "Data"):
            with self.subTest(gone):
                bundle = self.bundle()
                os.remove(self.resource(bundle, gone))
                self.assert_reported(self.open(bundle), "OutOfBounds")

    def test_more_choices_than_rows_are_reported_before_a_dialog_shows(self):
        bundle = self.bundle()
        self.rewrite(bundle, _CHOICES, "|".join(f"{i},{i}.zip,x" for i in range(11)))
        run = self.open(bundle)
        run.press("Install")
        self.assert_reported(run, "NilObject")
        self.assertEqual(os.listdir(self.target), [])

    def test_missing_payload_fails_with_a_message_and_goes_on(self):
        bundle = self.bundle(files={"release.txt": "What is new"}, fPostInstallNotes="release.txt",
                             fCompletionURL="http://tool.example/done")
        os.remove(self.resource(bundle, "Data2"))
        run = self.begin(self.open(bundle))
        run.waits_for("Installation Failed")
        run.key("Return")
        run.press("OK", within=run.window("Release Notes"))
        self.assert_ends(run)
        self.assert_opens(run, "http://tool.example/done")
        self.assertEqual(os.listdir(self.target), [])

    def test_copy_that_fails_is_told_in_windows_that_are_heard(self):
        case.write_tree(self.folder, {"file": "in the way"})
        run = self.begin(self.open(fPostCopy=[
            {"copy": "read me.txt", "to": os.path.join(self.folder, "file/a/read me.txt")}]))
        assert_heard(run.window("Error Message"))
        run.press("OK")
        run.waits_for("Install Error\n\nFile Copy Failed: read me.txt")
        assert_heard(run.windows()[-1])
        run.press("OK")
        self.assert_ends(run)

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
