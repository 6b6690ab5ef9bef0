"""The sample setups, which show every feature, gone through as the demo does."""

import os
import subprocess

import case
import walk_by_keys
from hearing import faults_in
from walkthrough import Walk

_SAMPLES = os.path.join(case.ROOT, "samples")


class ListeningWalk(Walk):
    """Hears each window as a screen reader's user does."""

    def __init__(self, *arguments):
        super().__init__(*arguments)
        self.faults = []
        self.heard = {}

    def look_at(self, window):
        controls = [node for node in window.below() if "showing" in node.states]
        self.heard.setdefault(window.name, set()).update(
            (node.role, node.name) for node in controls)
        self.faults += faults_in(window)
        case.wait_until(lambda: self.has_focus_in(window), "a focus", 30, window.tree)

    def has_focus_in(self, window):
        """Or the window is no longer the one that the user hears."""
        front = self.front()
        return not front or front.name != window.name or any(
            "focused" in node.states for node in window.below())


class Tour(case.InstallerTest):
    def make(self, sample, **values):
        bundle = os.path.join(self.folder, f"{sample}.app")
        settings = [word for name, value in values.items() for word in ("--set", f"{name}={value}")]
        subprocess.run([case.MAKE_SETUP, *settings, os.path.join(_SAMPLES, sample), case.STUB,
                        bundle], check=True)
        return bundle

    @staticmethod
    def content(*names):
        """The bytes of a file; empty if there is none."""
        path = os.path.join(*names)
        if not os.path.exists(path):
            return b""
        with open(path, "rb") as file:
            return file.read()

    def walk(self, sample, **values):
        run = self.open(self.make(sample, **values))
        walk = ListeningWalk(self.screen, run, None, self.target)
        self.assertEqual(walk.run(), 0)
        self.assertEqual(walk.faults, [])
        return run, walk.heard

    def test_tour_and_its_update(self):
        pages = {}
        address, asked = self.serve(pages)
        # The archive is made with the bundle, and asked for later.
        archive = os.path.join(self.folder, "templates.zip")
        pages["/templates.zip"] = lambda: open(archive, "rb").read()
        run, heard = self.walk("tour", PORT=address.rpartition(":")[2], ASIDE=self.folder)
        self.assertEqual(asked, ["/templates.zip"])
        self.assert_opens(run, f"{address}/thanks.html")
        self.assertIn(("progress bar", "Progress"), heard["Juniper Notes 2.1"])
        self.assertIn(("radio button", "Light: ink on paper"), heard["Pick a theme"])
        installed = self.installed("Juniper Notes")
        for name in ("Library", "Themes", "Dictionaries", "Templates", "Read me.txt"):
            self.assertIn(name, installed)
        with open("/etc/os-release", "rb") as system:
            self.assertEqual(system.read(), self.content(self.folder, "zephin-tour-system.txt"))
        # The option that adds to the folder comes later.
        self.assertCountEqual(os.listdir(os.path.join(self.folder, "zephin-tour/Templates")),
                         ["Meeting.md", "Journal.md"])
        for name in ("Quick start.md", "juniper.cfg", "welcome.txt"):
            case.wait_until(lambda name=name: self.content(run.home, "ZephinTour", name), name)

        self.walk("patch")
        patched = self.installed("Juniper Notes")
        self.assertNotIn("Samples", patched)
        self.assertNotEqual(patched["Read me.txt"], installed["Read me.txt"])
        self.assertEqual(patched["Library"], installed["Library"])
        self.assertEqual(os.listdir(self.target), ["Juniper Notes"])

    def test_tour_by_keys_alone(self):
        run = self.open(self.make("tour", ASIDE=self.folder))
        titles = walk_by_keys.Walk(self.screen, run.process, self.folder,
                                   {"Where shall Juniper Notes live?": self.target}).run()
        self.assertEqual(titles, ["Install", "Juniper Notes 2.1", "Before you install",
                                  "The Juniper Notes agreement", "Pick a theme", "Add what you like",
                                  "Where shall Juniper Notes live?",
                                  "What is new in Juniper Notes 2.1"])
        self.assert_ends(run)
        self.assertIn("current.theme", self.installed("Juniper Notes")["Themes"])


if __name__ == "__main__":
    case.main()
