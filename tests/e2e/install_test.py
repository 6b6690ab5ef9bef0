"""Complete installs, from the first click to the folder on disk, and runs that are stopped."""

import os
import subprocess

import case

# Every page and question between the click on Install and the end.
EVERYTHING = {
    "files": {"notes.txt": "Read this first", "agreement.html": "<html><p>Be kind</p></html>",
              "release.txt": "What is new", "light": {"light.css": "white"},
              "dark": {"dark.css": "black"}, "maps": {"map.txt": "here"},
              "songs": {"song.txt": "la"}},
    "payload": {"read me.txt": "Hello", "deep": {"er": {"note": "x" * 500}}},
    "fPreInstallNotes": "notes.txt", "fAgreement": "agreement.html",
    "fPostInstallNotes": "release.txt", "fCompletionURL": "http://tool.example/done",
    "fInstallChoices": [{"caption": "Light", "source": "light", "folder": "Themes"},
                        {"caption": "Dark", "source": "dark", "folder": "Themes"}],
    "fInstallOptions": [{"caption": "Maps", "source": "maps", "folder": "Maps"},
                        {"caption": "Songs", "source": "songs"}],
}
# The result of the second choice and the first option.
INSTALLED = {"read me.txt": b"Hello", "deep": {"er": {"note": b"x" * 500}},
             "Themes": {"dark.css": b"black"}, "Maps": {"map.txt": b"here"}}
NOTES = {"files": {"release.txt": "What is new"}, "fPostInstallNotes": "release.txt"}


class WholeInstall(case.InstallerTest):
    def assert_installed(self, run):
        self.assert_ends(run)
        self.assertEqual(self.installed(), INSTALLED)
        self.assertEqual(os.listdir(self.target), ["Tool"], "no other items are beside it")
        self.assert_opens(run, "http://tool.example/done")

    def test_by_keyboard_only(self):
        run = self.open(**EVERYTHING)
        for title in ("Install", "Pre-Installation Notes", "License Agreement"):
            run.window(title)
            run.key("Return")
        run.window("Pick One Choice")
        run.key("Down")
        run.wait_for_focus("Dark")
        run.key("space", "Return")
        run.window("Select Options")
        run.wait_for_focus("Maps")
        run.key("space", "Return")
        run.find("Directory:", "text")
        run.type(self.target + "\n")
        run.window("Release Notes")
        run.key("Return")
        self.assert_installed(run)

    def test_through_the_accessibility_tree_from_and_to_odd_places(self):
        self.target, odd = (os.path.join(self.folder, f"{name} it's “one” $(x) `é` :;|&\n日本")
                            for name in ("to", "from"))
        bundle = os.path.join(odd, "Sétup \"1\".app")
        os.mkdir(self.target)
        os.renames(self.bundle(**EVERYTHING), bundle)
        subprocess.run(["chmod", "-R", "a-w", odd], check=True)
        run = self.begin(self.open(bundle), "OK", "I Agree", "Dark", "Continue", "Maps", "Continue")
        run.press("OK", within=run.window("Release Notes"))
        self.assert_installed(run)
        left = set(os.listdir(run.home)) - {os.path.relpath(run.applications, run.home)}
        self.assertEqual(left, set(), "the user's home is unchanged")


class OtherWays(case.InstallerTest):
    def test_unwritable_folder_is_refused_in_the_publishers_words(self):
        os.chmod(self.target, 0o555)
        run = self.begin(self.open(fLabels={"notWritable": "No <b>room</b> & no key"}))
        run.dismiss("No <b>room</b> & no key")
        self.assert_ends(run)
        self.assertEqual(os.listdir(self.target), [])

    def test_quit_while_the_bar_fills(self):
        for way, leave in {"button": lambda run: run.click("Quit"),
                           "keys": lambda run: run.key("Control_L+q"),
                           "window manager": lambda run: run.ask_to_close("Install")}.items():
            with self.subTest(way):
                run = self.begin(self.open(**case.LONG))
                run.waits_for("Install in Progress...")
                run.wait_for_bar()
                leave(run)
                self.assert_ends(run)
                # Nothing is cleaned up. The next run does that.
                self.assertTrue(os.path.exists(os.path.join(self.target, "Tool.zip")))

    def test_install_clicked_again_during_the_wait_goes_through_the_flow_once_more(self):
        run = self.begin(self.open(**case.LONG))
        run.find("Progress", "progress bar")
        run.click("Install")
        # The folder's name is now an absolute path, which does not exist below the second folder.
        self.choose_folder(run, self.folder)
        run.dismiss("Installation Failed")
        self.assert_ends(run)
        self.assertIn("noise", self.installed())


if __name__ == "__main__":
    case.main()
