"""Wayland desktops, which show X windows through XWayland."""

import os
import pathlib
import shutil

import case
from session import WaylandSession


class Wayland(case.InstallerTest):
    def test_installs_over_x_whatever_the_session_asks_of_the_toolkit(self):
        for platform in (None, "wayland", "wayland;xcb"):
            with self.subTest(platform):
                run = self.open(settings={"QT_QPA_PLATFORM": platform} if platform else None,
                                files={"notes.html": "<html>Read</html>"},
                                fPreInstallNotes="notes.html")
                # The toolkit loads only the plug-in of the window system in use.
                loaded = pathlib.Path(f"/proc/{run.id}/maps").read_text(encoding="utf-8")
                self.assertRegex(loaded, "/libqxcb.so")
                self.assertNotRegex(loaded, "/libqwayland")
                self.install(run, "I Agree")
                self.assertEqual(self.installed(), {"read me.txt": b"Hello"})
                shutil.rmtree(os.path.join(self.target, "Tool"))

    def test_clipboard_outlives_the_run(self):
        if os.environ.get("ZEPHIN_COMPOSITOR", "weston") == "weston":
            self.skipTest("weston without a seat dies of any X program that takes the clipboard")
        # The token puts the path of an item beside the installer there.
        bundle = self.bundle(fExecuteAfterName="SetupFolder/nothing here é.sh")
        self.install(self.open(bundle))
        self.assertEqual(case.clipboard(), os.path.dirname(bundle) + "/nothing here é.sh")


if __name__ == "__main__":
    case.main(WaylandSession)
