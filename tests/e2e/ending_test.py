"""All ends of a run, failures included: each has status 0 and reports its reason."""

import contextlib
import os
import signal
import threading

import Xlib.X
import Xlib.display
import Xlib.error
import Xlib.protocol.event

import case
from case import wait_until
from hearing import assert_heard


class ManagerThatKeepsNothing(threading.Thread):
    """A clipboard manager that reports success without taking the text, and then sets `asked`."""

    def __init__(self, display):
        super().__init__(daemon=True)
        self.asked = threading.Event()
        self._display = Xlib.display.Display(display)
        screen = self._display.screen()
        self._window = screen.root.create_window(0, 0, 1, 1, 0, screen.root_depth)
        manager = self._display.intern_atom("CLIPBOARD_MANAGER")
        self._window.set_selection_owner(manager, Xlib.X.CurrentTime)
        self._display.sync()
        self.start()

    def run(self):
        with contextlib.suppress(Xlib.error.ConnectionClosedError):
            while True:
                self._answer(self._display.next_event())

    def _answer(self, request):
        if request.type == Xlib.X.SelectionRequest:
            request.requestor.send_event(Xlib.protocol.event.SelectionNotify(
                time=request.time, requestor=request.requestor, selection=request.selection,
                target=request.target, property=request.property))
            # Ensures that the program has the answer before the test continues.
            self._display.sync()
            self.asked.set()


class Endings(case.InstallerTest):
    def test_requests_to_end(self):
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
        for display, wayland, reason in (("", "", "display"), (":4711", "", "display"),
                                         ("", "wayland-1", "XWayland")):
            with self.subTest(display, wayland=wayland):
                run = self.open(settings={"DISPLAY": display, "WAYLAND_DISPLAY": wayland})
                self.assert_ends(run)
                self.assertRegex(run.said(), rf"\A[^\n]*{reason}[^\n]*\n\Z")

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

    def install_with_a_text_on_the_clipboard(self):
        bundle = self.bundle(fExecuteAfterName="FixedPath//nothing/here é.sh")
        self.install(self.open(bundle))
        self.assertEqual(case.clipboard(), os.path.dirname(bundle) + "//nothing/here é.sh")

    def test_clipboard_outlives_the_run(self):
        self.install_with_a_text_on_the_clipboard()

    def test_clipboard_outlives_the_run_with_a_manager_that_keeps_nothing(self):
        asked = ManagerThatKeepsNothing(self.session.display.get_display_name()).asked
        self.install_with_a_text_on_the_clipboard()
        self.assertTrue(asked.wait(30))
        self.assertTrue(case.clipboard())


class Faults(case.InstallerTest):
    def assert_reported(self, run, kind):
        """Waits for an accessible report of that kind of failure, and for the end of the run."""
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

    def test_failure_is_reported_in_accessible_windows_and_the_rest_continues(self):
        case.write_tree(self.folder, {"file": "in the way"})
        run = self.begin(self.open(
            files={"release.txt": "What is new"}, fPostInstallNotes="release.txt",
            fCompletionURL="http://tool.example/done", fPostCopy=[
                {"copy": "read me.txt", "to": os.path.join(self.folder, "file/a/read me.txt")}]))
        assert_heard(run.window("Error Message"))
        run.press("OK")
        run.waits_for("Install Error\n\nFile Copy Failed: read me.txt")
        assert_heard(run.windows()[-1])
        run.key("Return")
        run.press("OK", within=run.window("Release Notes"))
        self.assert_ends(run)
        self.assert_opens(run, "http://tool.example/done")


if __name__ == "__main__":
    case.main()
