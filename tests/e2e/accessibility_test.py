"""What users hear who don't see the windows, and see who don't use a mouse."""

import os

import case
from accessible import Atspi, Node
from case import wait_until
from hearing import faults_in

EVERY_KIND = {
    "files": {"about.txt": "About", "notes.html": "<html><b>Read</b> this</html>",
              "agreement.txt": "Be fair", "dark": {"d": "d"}},
    "fInfo": "about.txt", "fPreInstallNotes": "notes.html", "fAgreement": "agreement.txt",
    "fURLActual": "tool.example", "fCopyright": "(c) Us",
    "fInstallChoices": [{"caption": name, "source": "dark"} for name in ("Dark", "Darker")],
    "fInstallOptions": [{"caption": name, "source": "dark"} for name in ("Maps", "Songs")],
}


class Accessibility(case.InstallerTest):
    def assert_heard(self, run, title):
        window = run.window(title)
        wait_until(lambda: run.focused() is not None, "a focus", 30, run.described)
        self.assertEqual(faults_in(window), [], run.described())
        return window

    def test_windows_of_failures_are_heard(self):
        """The windows of the tour are heard by its own test."""
        missing = self.bundle()
        os.remove(self.resource(missing, "Data"))
        run = self.open(missing)
        report = self.assert_heard(run, "Install")
        self.assertEqual(report.role, "alert")
        run.key("Return")
        self.assert_ends(run)

        blocked = os.path.join(self.folder, "file")
        case.write_tree(self.folder, {"file": "in the way"})
        run = self.open(fPostCopy=[{"copy": "read me.txt", "to": blocked + "/a/read me.txt"}])
        run.press("Install")
        self.choose_folder(run)
        self.assert_heard(run, "Error Message")
        run.press("OK")
        self.assert_heard(run, "Install")
        run.waits_for("Install Error\n\nFile Copy Failed: read me.txt")
        run.press("OK")
        self.assert_ends(run)

    def places_of_focus(self, run, title):
        """Presses Tab until the focus is back where it was. Gives the controls that had it."""
        window = run.window(title)
        # Where it was, the pointer would light up a button.
        self.screen.move_to(0, 0)
        wait_until(run.is_active, "the focus of the session", 30, run.described)
        first = wait_until(run.focused, "a focus", 30, run.described)
        found, looks = [], []
        while not found or run.focused() != first:
            name = run.focused()
            self.assertNotIn(name, found, "a way of the focus without an end")
            found.append(name)
            area = window.area

            def is_new(area=area):
                look = self.screen.rows(*area)
                return look not in looks and look
            looks.append(wait_until(is_new, f"{name!r} to look as if it had the focus", 10,
                                    run.described))
            run.key("Tab")
            wait_until(lambda name=name: run.focused() not in (None, name), "the focus to move on",
                       10, run.described)
        return found

    def test_focus_is_seen_wherever_the_keys_take_it(self):
        run = self.open(**EVERY_KIND)
        rounds = {"Install": ["Quit", "Install", "Info", "tool.example"],
                  "Pre-Installation Notes": ["Pre-Installation Notes", "I Agree", "Quit"],
                  "License Agreement": ["License Agreement", "Quit", "I Agree"],
                  "Pick One Choice": ["Dark", "Darker", "Quit", "Continue"],
                  "Select Options": ["Quit", "Continue", "Maps", "Songs"]}
        for title, expected in rounds.items():
            with self.subTest(title):
                self.assertEqual(self.places_of_focus(run, title), expected)
            run.key("Return")
        run.find("Directory:", "text")
        run.key("Escape")
        self.assert_ends(run)

    def test_bar_tells_how_far_it_is(self):
        told = []

        def take(event):
            node = Node(event.source)
            if node.role == "progress bar" and node.value:
                told.append(node.value[0])
        listener = Atspi.EventListener.new(take)
        listener.register("object:property-change:accessible-value")
        self.addCleanup(listener.deregister, "object:property-change:accessible-value")
        run = self.open(**case.LONG)
        run.press("Install")
        self.choose_folder(run)
        # To look at the program lets events come in.
        wait_until(lambda: run.windows() and len(set(told)) >= 5, "five steps of the bar to be told",
                   30, run.described)
        self.assertEqual(told, sorted(told))
        self.assert_ends(run)


if __name__ == "__main__":
    case.main()
