"""What the windows look like, whatever the user's session asks for."""

import os
import socket
import threading

import case
from case import wait_until

WHITE = (255, 255, 255)
BLUE = (0, 0, 255)

# A dark desktop theme, and settings that would lead a program astray.
DARK = {"XDG_CURRENT_DESKTOP": "KDE", "KDE_FULL_SESSION": "true", "KDE_SESSION_VERSION": "5",
        "QT_QPA_PLATFORMTHEME": "kde", "QT_STYLE_OVERRIDE": "Windows", "QT_QPA_PLATFORM": "wayland",
        "QT_PLUGIN_PATH": "/nowhere", "QT_FONT_DPI": "96", "XDG_SESSION_TYPE": "wayland"}
KDEGLOBALS = """[Colors:Window]
BackgroundNormal=20,20,20
ForegroundNormal=240,240,240
[Colors:View]
BackgroundNormal=10,10,10
ForegroundNormal=240,240,240
[General]
font=DejaVu Sans,24,-1,5,50,0,0,0,0,0
"""

# Left, top, width and height of what the main window shows.
PLACES = {"Quit": (204, 198, 80, 20), "Install": (296, 198, 80, 20), "Info": (20, 198, 80, 20),
          "Welcome": (96, 14, 204, 77), "Visit us": (20, 104, 356, 20), "(c) Us": (20, 226, 356, 12)}


class Look(case.InstallerTest):
    def open_with_link(self, settings=None):
        return self.open(settings=settings, files={"about.txt": "About"}, fInfo="about.txt",
                         fURLActual="tool.example", fURLDisplayed="Visit us", fCopyright="(c) Us")

    def test_main_window_is_laid_out_point_for_point(self):
        run = self.open_with_link()
        left, top, width, height = run.window("Install").area
        self.assertEqual((width, height), (396, 238))
        for name, place in PLACES.items():
            x, y, width, height = run.find(name).area
            self.assertEqual((x - left, y - top, width, height), place, name)

    def test_dark_theme_and_stray_settings_change_nothing(self):
        os.makedirs(os.path.join(self.folder, "user", "home", ".config"))
        with open(os.path.join(self.folder, "user", "home", ".config", "kdeglobals"), "w",
                  encoding="ascii") as theme:
            theme.write(KDEGLOBALS)
        plain = None
        for settings in (None, DARK):
            # Where it was, the pointer would light up a button.
            self.screen.move_to(0, 0)
            run = self.open_with_link(settings)
            area = run.window("Install").area
            run.wait_for_focus("Quit")
            wait_until(lambda area=area: BLUE in self.screen.colours(*area), "the link in blue")
            self.assertEqual(self.screen.colours(area[0] + 2, area[1] + 2, 8, 8), {WHITE})
            plain = plain or self.screen.rows(*area)
            wait_until(lambda area=area: self.screen.rows(*area) == plain,
                            "the same window, point for point")
            run.click("Quit")
            self.assert_ends(run)

    def trickle(self):
        """A server that sends a byte now and then, and never ends. Gives its address."""
        listener = socket.create_server(("127.0.0.1", 0))
        stop = threading.Event()

        def serve():
            client, _ = listener.accept()
            with client:
                client.recv(65536)
                client.sendall(b"HTTP/1.1 200 OK\r\nContent-Length: 1000000\r\n\r\n")
                while not stop.wait(0.2):
                    try:
                        client.sendall(b"x")
                    except OSError:
                        return

        threading.Thread(target=serve, daemon=True).start()
        self.addCleanup(listener.close)
        self.addCleanup(stop.set)
        return f"http://127.0.0.1:{listener.getsockname()[1]}"

    def test_window_lives_during_a_slow_download(self):
        run = self.open(fInstallOptions=[{"caption": "Songs", "source": self.trickle() + "/a.zip"}])
        run.press("Install")
        run.press("Songs")
        run.press("Continue", within=run.window("Select Options"))
        self.choose_folder(run)
        run.waits_for("Installing Options Songs")
        area = run.window("Install").area
        plain = self.screen.rows(*area)
        with self.screen.covered(area):
            self.assertNotEqual(self.screen.rows(*area)[100], plain[100])
        # Only the program itself can bring back what was covered.
        wait_until(lambda: self.screen.rows(*area) == plain, "the window to be painted")
        run.click("Quit")
        self.assert_ends(run)


if __name__ == "__main__":
    case.main()
