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


if __name__ == "__main__":
    case.main(WaylandSession)
