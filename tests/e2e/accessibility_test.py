"""The windows for users of a screen reader, and for users without a mouse."""

import case
from accessible import Atspi, Node
from case import wait_until

EVERY_KIND = {
    "files": {"about.txt": "About", "notes.html": "<html><b>Read</b> this</html>",
              "agreement.txt": "Be fair", "dark": {"d": "d"}},
    "fInfo": "about.txt", "fPreInstallNotes": "notes.html", "fAgreement": "agreement.txt",
    "fURLActual": "tool.example", "fCopyright": "(c) Us",
    "fInstallChoices": [{"caption": name, "source": "dark"} for name in ("Dark", "Darker")],
    "fInstallOptions": [{"caption": name, "source": "dark"} for name in ("Maps", "Songs")],
}


class Accessibility(case.InstallerTest):
    def places_of_focus(self, run, title):
        """Presses Tab until the focus returns to its start. Returns the controls that had it."""
        window = run.window(title)
        # Elsewhere the pointer might highlight a button.
        self.screen.move_to(0, 0)
        area = run.place_at_rest(window)
        found, looks = [], []

        def new_focus():
            name = run.focused()
            return name not in found[-1:] and name

        def new_look():
            look = self.screen.rows(*area)
            return look not in looks and look
        name = wait_until(new_focus, "a focus", 30, run.described)
        while name not in found:
            found.append(name)
            looks.append(wait_until(new_look, f"{name!r} to show the focus", 30,
                                    run.described))
            run.key("Tab")
            name = wait_until(new_focus, "the focus to move on", 30, run.described)
        self.assertEqual(name, found[0], "the focus returns to its start")
        return found

    def test_focus_is_visible_on_every_control(self):
        run = self.open(**EVERY_KIND)
        rounds = {"Install": ["Install", "Info", "tool.example", "Quit"],
                  "Pre-Installation Notes": ["I Agree", "Quit", "Pre-Installation Notes"],
                  "License Agreement": ["I Agree", "License Agreement", "Quit"],
                  "Pick One Choice": ["Dark", "Darker", "Quit", "Continue"],
                  "Select Options": ["Maps", "Songs", "Quit", "Continue"]}
        for title, expected in rounds.items():
            with self.subTest(title):
                self.assertEqual(self.places_of_focus(run, title), expected)
            run.key("Return")
        run.find("Directory:", "text")
        run.key("Escape")
        self.assert_ends(run)

    def test_bar_reports_its_progress(self):
        values, others = [], []

        def take(event):
            node = Node(event.source)
            if node.role == "progress bar" and event.type.endswith("value") and node.value:
                values.append(node.value[0])
            elif node.role == "progress bar":
                others.append(event.type)
        listener = Atspi.EventListener.new(take)
        for what in ("value", "description"):
            listener.register(f"object:property-change:accessible-{what}")
            self.addCleanup(listener.deregister, f"object:property-change:accessible-{what}")
        run = self.begin(self.open(**case.LONG))
        # A query of the program also processes pending events.
        wait_until(lambda: run.windows() and len(set(values)) >= 5, "five steps of the bar", 30,
                   run.described)
        self.assertEqual(values, sorted(values))
        self.assertEqual(others, [], "nothing else about the bar changes")
        self.assert_ends(run)


if __name__ == "__main__":
    case.main()
