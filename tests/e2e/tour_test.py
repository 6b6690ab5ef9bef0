"""The sample setups, which use every feature, clicked through as in the demo."""

import os
import pathlib

import case
from hearing import assert_heard
from tour import Samples
from walkthrough import Walk


class ListeningWalk(Walk):
    """Checks each window as a screen reader finds it."""

    def __init__(self, *arguments):
        super().__init__(*arguments)
        self.heard = {}

    def look_at(self, window):
        self.heard.setdefault(window.name, set()).update(
            (node.role, node.name) for node in window.below() if "showing" in node.states)

        def has_gone():
            front = self.front()
            return not front or front.name != window.name
        assert_heard(window, has_gone)


class Tour(case.InstallerTest):
    def setUp(self):
        super().setUp()
        self.samples = Samples(case.STUB, case.MAKE_SETUP, self.folder)

    def walk(self, bundle):
        run = self.open(bundle)
        walk = ListeningWalk(self.screen, run, None, self.target)
        self.assertEqual(walk.run(), 0)
        return run, walk.heard

    def test_tour_and_its_update(self):
        aside = pathlib.Path(self.folder, "aside")
        aside.mkdir()
        server = self.samples.server
        run, heard = self.walk(self.samples.make("tour", aside=aside))
        self.assertEqual(server.asked, ["/templates.zip"])
        self.assert_opens(run, f"http://127.0.0.1:{server.server_port}/thanks.html")
        self.assertIn(("progress bar", "Progress"), heard["Juniper Notes 2.1"])
        self.assertIn(("radio button", "Light: ink on paper"), heard["Pick a theme"])
        installed = self.installed("Juniper Notes")
        for name in ("Library", "Themes", "Dictionaries", "Templates", "Read me.txt"):
            self.assertIn(name, installed)
        self.assertEqual((aside / "zephin-tour-system.txt").read_bytes(),
                         pathlib.Path("/etc/os-release").read_bytes())
        # The option that adds to the folder is installed later.
        self.assertCountEqual(os.listdir(aside / "zephin-tour/Templates"),
                              ["Meeting.md", "Journal.md"])
        for name in ("Quick start.md", "juniper.cfg", "welcome.txt"):
            left = pathlib.Path(run.home, "ZephinTour", name)
            case.wait_until(lambda: left.exists() and left.stat().st_size, name)

        self.walk(self.samples.make("patch"))
        patched = self.installed("Juniper Notes")
        self.assertNotIn("Samples", patched)
        self.assertNotEqual(patched["Read me.txt"], installed["Read me.txt"])
        self.assertEqual(patched["Library"], installed["Library"])
        self.assertEqual(os.listdir(self.target), ["Juniper Notes"])


if __name__ == "__main__":
    case.main()
