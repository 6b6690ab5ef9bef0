"""Settings of the user's session for other programs of the same toolkit have no effect, and the
bundle is never changed."""

import os
import pathlib
import shlex
import shutil
import socket
import subprocess
import sys

import case
from case import wait_until

WHITE = (255, 255, 255)
BLUE = (0, 0, 255)

# A program that obeys one of these shows no window, or a different one.
STRAY = {
    "plug-ins of others": {"QT_PLUGIN_PATH": "{junk}", "QT_QPA_PLATFORM_PLUGIN_PATH": "{junk}"},
    "libraries of others": {"LD_LIBRARY_PATH": "{junk}"},
    "Wayland": {"QT_QPA_PLATFORM": "wayland", "XDG_SESSION_TYPE": "wayland",
                "WAYLAND_DISPLAY": "wayland-0", "GDK_BACKEND": "wayland"},
    "no window system": {"QT_QPA_PLATFORM": "offscreen"},
    "style": {"QT_STYLE_OVERRIDE": "Windows", "QT_FONT_DPI": "96"},
    "theme": {"QT_QPA_PLATFORMTHEME": "gtk3", "XDG_CURRENT_DESKTOP": "GNOME", "GTK_THEME": "Dark"},
    "dark theme": {"QT_QPA_PLATFORMTHEME": "kde", "XDG_CURRENT_DESKTOP": "KDE",
                   "KDE_FULL_SESSION": "true", "KDE_SESSION_VERSION": "5"},
    "input method": {"QT_IM_MODULE": "fcitx", "XMODIFIERS": "@im=fcitx"},
}
KDEGLOBALS = """[Colors:Window]
BackgroundNormal=20,20,20
ForegroundNormal=240,240,240
[Colors:View]
BackgroundNormal=10,10,10
ForegroundNormal=240,240,240
[General]
font=DejaVu Sans,24,-1,5,50,0,0,0,0,0
"""

# Files with the names of plug-ins and libraries, but invalid contents.
JUNK = dict.fromkeys(("libQt6Core.so.6", "libxcb.so.1", "libcrypto.so.3", "libqxcb.so",
                      "libqwayland.so"), "junk")


class Settings(case.InstallerTest):
    def start(self, bundle, settings):
        """Starts a bundle. Returns the run and the final area of its window."""
        # Elsewhere the pointer might highlight a button.
        self.screen.move_to(0, 0)
        run = self.open(bundle, settings)
        run.wait_for_focus("Install")
        return run, run.place_at_rest(run.window("Install"))

    def stop(self, run):
        run.press("Quit")
        self.assert_ends(run)
        self.assertNotIn("rror", run.said())

    def test_stray_settings_and_a_dark_theme_change_no_pixel(self):
        junk = os.path.join(self.folder, "junk")
        case.write_tree(junk, {**JUNK, "platforms": JUNK})
        case.write_tree(os.path.join(self.folder, "user", "home", ".config"),
                        {"kdeglobals": KDEGLOBALS})
        bundle = self.bundle(fURLActual="tool.example", fCopyright="(c) Us")
        plain = None
        for name, settings in {"none": {}, **STRAY}.items():
            with self.subTest(name):
                run, area = self.start(bundle, {setting: value.replace("{junk}", junk)
                                                for setting, value in settings.items()})
                wait_until(lambda: BLUE in self.screen.colours(*area), "the link in blue")
                plain = plain or self.screen.rows(*area)
                wait_until(lambda: self.screen.rows(*area) == plain, "the same window")
                self.stop(run)
        self.assertEqual(plain[2][:24], bytes(WHITE) * 8)

    def test_no_session_manager_hears_of_the_program(self):
        with socket.socket(socket.AF_UNIX) as manager:
            place = os.path.join(self.folder, "manager")
            manager.bind(place)
            manager.listen()
            manager.setblocking(False)
            address = f"local/{socket.gethostname()}:{place}"
            run, _ = self.start(self.bundle(), {"SESSION_MANAGER": address})
            self.stop(run)
            with self.assertRaises(BlockingIOError):
                manager.accept()

    def test_scale_factors_scale_the_whole_window(self):
        bundle = self.bundle()
        for factor in (1.25, 1.5, 2):
            with self.subTest(factor):
                run, _ = self.start(bundle, {"QT_SCALE_FACTOR": str(factor)})
                window = run.x_window("Install")
                size = window.get_geometry()
                self.assertLessEqual(abs(size.width - 396 * factor), 1)
                self.assertLessEqual(abs(size.height - 238 * factor), 1)
                corner = window.translate_coords(window.query_tree().root, 0, 0)
                place = (-corner.x + 4, -corner.y + 4, 20, 1)
                wait_until(lambda: self.screen.colours(*place) == {WHITE}, "white")
                self.stop(run)

    def test_folders_are_sorted_by_the_rules_of_the_language(self):
        names = ["Zebra", "Ägg", "Apple", "file 10", "file 9"]
        # The dialog opens in the folder of the bundle.
        case.write_tree(self.folder, dict.fromkeys(names, {}))
        # The system has none of these languages.
        for language, order in (("sv_SE", ["Apple", "file 9", "file 10", "Zebra", "Ägg"]),
                                ("de_DE", ["Ägg", "Apple", "file 9", "file 10", "Zebra"]),
                                ("pl_PL", ["Ägg", "Apple", "file 9", "file 10", "Zebra"])):
            with self.subTest(language):
                locale = language + ".UTF-8"
                run = self.open(settings={"LC_ALL": locale, "LANG": locale})
                run.press("Install")
                wait_until(lambda: [node.name for node in run.controls()
                                    if node.name in names][-len(names):] == order,
                           "the folders in order", 30, run.described)
                run.key("Escape")
                self.assert_ends(run)


class Places(case.InstallerTest):
    def test_installs_from_a_read_only_disk(self):
        bundle = self.bundle()
        # Unlike rights, this also refuses root.
        script = ('mount --bind "$1" "$1" && mount -o remount,bind,ro "$1" && ! touch "$1/x" 2>&- '
                  '&& exec "$2"')
        own = ["unshare", "--mount", *(() if os.geteuid() == 0 else ("--user", "--map-root-user"))]
        if subprocess.run([*own, "true"], check=False).returncode:
            self.skipTest("no right to mount a disk")
        start = case.write_script(os.path.join(self.folder, "start"), "exec " + shlex.join(
            [*own, "sh", "-c", script, "sh", bundle, case.program_of(bundle)]))
        run = case.Installer(self.screen, start, os.path.join(self.folder, "user"))
        self.opened.append(run)
        self.install(run)
        self.assertEqual(self.installed(), {"read me.txt": b"Hello"})

    def test_downloads_from_an_international_host_over_http_2(self):
        # Names with that end resolve to this machine.
        names = "bücher.localhost", "xn--bcher-kva.localhost"
        certificate, key = self.certificate("books", "DNS:" + names[1])
        with socket.create_server(("127.0.0.1", 0)) as free:
            port = free.getsockname()[1]
        log = pathlib.Path(self.folder, "log")
        with open(log, "wb") as output:
            # It speaks no older version.
            server = subprocess.Popen(
                ["/usr/sbin/nghttpd", "--verbose", "--address=127.0.0.1",
                 "--htdocs=" + self.folder, str(port), key, certificate],
                stdout=output, stderr=output)
        self.addCleanup(server.wait)
        self.addCleanup(server.kill)
        wait_until(lambda: "listen" in log.read_text(encoding="utf-8"), "the server")
        run = self.open(settings={"SSL_CERT_FILE": certificate},
                        files={"songs": {"a": os.urandom(20000)}}, fInstallOptions=[
            {"caption": "Songs", "source": f"https://{names[0]}:{port}/a.zip",
             "content": "songs"}])
        self.install(run, "Songs", "Continue")
        self.assertIn(f":authority: {names[1]}:{port}", log.read_text(encoding="utf-8"))
        self.assertIn("a", self.installed())

    def test_desktop_entry_starts_the_bundle_after_a_move(self):
        bundle = self.bundle()
        folder = os.path.join(self.folder, "moved to $HOME's \"place\" é")
        os.mkdir(folder)
        entry = os.path.join(folder, "My $(x) Setup.desktop")
        shutil.move(bundle, entry.replace(".desktop", ".app"))
        shutil.move(bundle.replace(".app", ".desktop"), entry)
        launch = [sys.executable, "-c", "import sys; from gi.repository import Gio; "
                  "Gio.DesktopAppInfo.new_from_filename(sys.argv[1]).launch([], None)", entry]
        for way, command in (("as a file manager", launch), ("as a program", [entry])):
            with self.subTest(way), subprocess.Popen(command):
                shown = wait_until(lambda: [w for w, title in self.screen.windows()
                                            if title == "Install"], "the window")
                self.screen.ask_to_close(shown[0])
                wait_until(lambda: not self.screen.windows(), "the end")


if __name__ == "__main__":
    case.main()
