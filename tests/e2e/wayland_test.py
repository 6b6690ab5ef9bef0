"""Desktops of Wayland, which show windows of X through a server of their own."""

import case
from Xlib import X, error
from case import wait_until
from session import WaylandSession


class Wayland(case.InstallerTest):
    def has_x_window(self, process):
        """Whether the compositor's X server shows a window of that process."""
        display = self.session.display
        owner = display.intern_atom("_NET_WM_PID")
        frames = display.screen().root.query_tree().children
        try:
            for window in (w for frame in frames for w in (frame, *frame.query_tree().children)):
                told = window.get_full_property(owner, X.AnyPropertyType)
                if (told and told.value[0] == process
                        and window.get_attributes().map_state == X.IsViewable):
                    return True
        except error.BadWindow:
            pass  # It has gone meanwhile.
        return False

    def test_installs_whatever_the_session_asks_of_the_toolkit(self):
        for platform in (None, "wayland", "wayland;xcb"):
            with self.subTest(platform):
                settings = {"QT_QPA_PLATFORM": platform} if platform else None
                run = self.open(settings=settings, files={"notes.html": "<html>Read</html>"},
                                fPreInstallNotes="notes.html")
                wait_until(lambda: self.has_x_window(run.id), "a window of X", 30, run.described)
                self.install(run, "I Agree")
                self.assertEqual(self.installed(), {"read me.txt": b"Hello"})
                case.shutil.rmtree(self.target + "/Tool")


if __name__ == "__main__":
    case.main(WaylandSession)
