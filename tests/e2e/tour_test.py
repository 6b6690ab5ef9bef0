"""The sample setups, which show every feature, gone through as the demo does."""

import os
import pathlib
import subprocess

import case
import walk_by_keys
from hearing import assert_heard
from walkthrough import Walk

_GENERATE = os.path.join(case.ROOT, "samples", "generate")


class ListeningWalk(Walk):
    """Hears each window as a screen reader's user does."""

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
    def make(self, sample, **values):
        bundle = os.path.join(self.folder, f"{sample}.app")
        settings = [word for name, value in values.items() for word in ("--set", f"{name}={value}")]
        samples = os.path.join(self.folder, "samples")
        subprocess.run([_GENERATE, samples], check=True)
        subprocess.run([case.MAKE_SETUP, *settings, os.path.join(samples, sample), case.STUB,
                        bundle], check=True)
        return bundle

    def walk(self, sample, **values):
        run = self.open(self.make(sample, **values))
        walk = ListeningWalk(self.screen, run, None, self.target)
        self.assertEqual(walk.run(), 0)
        return run, walk.heard

    def test_tour_and_its_update(self):
        aside = pathlib.Path(self.folder)
        # The archive is made with the bundle, and asked for later.
        server = self.serve({"/templates.zip": lambda request: case.page(
            (aside / "templates.zip").read_bytes())(request)})
        run, heard = self.walk("tour", PORT=server.server_port, ASIDE=aside)
        self.assertEqual(server.asked, ["/templates.zip"])
        self.assert_opens(run, f"http://{server.address}/thanks.html")
        self.assertIn(("progress bar", "Progress"), heard["Juniper Notes 2.1"])
        self.assertIn(("radio button", "Light: ink on paper"), heard["Pick a theme"])
        installed = self.installed("Juniper Notes")
        for name in ("Library", "Themes", "Dictionaries", "Templates", "Read me.txt"):
            self.assertIn(name, installed)
        self.assertEqual((aside / "zephin-tour-system.txt").read_bytes(),
                         pathlib.Path("/etc/os-release").read_bytes())
        # The option that adds to the folder comes later.
        self.assertCountEqual(os.listdir(aside / "zephin-tour/Templates"),
                              ["Meeting.md", "Journal.md"])
        for name in ("Quick start.md", "juniper.cfg", "welcome.txt"):
            left = pathlib.Path(run.home, "ZephinTour", name)
            case.wait_until(lambda: left.exists() and left.stat().st_size, name)

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
                                  "The Juniper Notes agreement", "Pick a theme",
                                  "Add what you like", "Where shall Juniper Notes live?",
                                  "What is new in Juniper Notes 2.1"])
        self.assert_ends(run)
        self.assertIn("current.theme", self.installed("Juniper Notes")["Themes"])


if __name__ == "__main__":
    case.main()
