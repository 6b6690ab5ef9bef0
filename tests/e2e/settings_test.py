"""What the user's session says to other programs of the same toolkit changes nothing here, and the
bundle stays as it was made."""

import os
import shlex
import shutil
import subprocess
import sys

import case
from case import wait_until

WHITE = (255, 255, 255)

# Each would keep the window from showing, or show it otherwise, in a program that follows it.
STRAY = {
    "plug-ins of others": {"QT_PLUGIN_PATH": "{junk}", "QT_QPA_PLATFORM_PLUGIN_PATH": "{junk}"},
    "libraries of others": {"LD_LIBRARY_PATH": "{junk}"},
    "Wayland": {"QT_QPA_PLATFORM": "wayland", "XDG_SESSION_TYPE": "wayland",
                "WAYLAND_DISPLAY": "wayland-0", "GDK_BACKEND": "wayland"},
    "no window system": {"QT_QPA_PLATFORM": "offscreen"},
    "style": {"QT_STYLE_OVERRIDE": "Windows"},
    "theme": {"QT_QPA_PLATFORMTHEME": "gtk3", "XDG_CURRENT_DESKTOP": "GNOME", "GTK_THEME": "Dark"},
    "input method": {"QT_IM_MODULE": "fcitx", "XMODIFIERS": "@im=fcitx"},
}

_LIBRARIES = ("libQt6Core.so.6", "libxcb.so.1", "libcrypto.so.3")


class Settings(case.InstallerTest):
    def setUp(self):
        super().setUp()
        # Of the right names, but no plug-ins and no libraries.
        self.junk = os.path.join(self.folder, "junk")
        case.write_tree(self.junk, {"platforms": {"libqxcb.so": b"junk", "libqwayland.so": b"junk"},
                                    "libqxcb.so": b"junk", **dict.fromkeys(_LIBRARIES, b"junk")})

    def start(self, bundle, settings=None):
        # Where it was, the pointer would light up a button.
        self.screen.move_to(0, 0)
        if settings:
            settings = {name: value.replace("{junk}", self.junk)
                        for name, value in settings.items()}
        run = self.open(bundle, settings)
        run.wait_for_focus("Quit")
        return run

    def stop(self, run):
        run.press("Quit")
        self.assert_ends(run)
        self.assertNotIn("rror", run.said())

    def pixels(self, run):
        return self.screen.rows(*run.window("Install").area)

    def test_stray_settings_change_no_pixel(self):
        bundle = self.bundle()
        run = self.start(bundle)
        plain = self.pixels(run)
        self.stop(run)
        for name, settings in STRAY.items():
            with self.subTest(name):
                run = self.start(bundle, settings)
                wait_until(lambda run=run: self.pixels(run) == plain, "the same window")
                self.stop(run)

    def test_scale_factors_scale_the_whole_window(self):
        bundle = self.bundle()
        for factor in (1.25, 1.5, 2):
            with self.subTest(factor):
                run = self.start(bundle, {"QT_SCALE_FACTOR": str(factor)})
                run.place_at_rest(run.find("Install", "push button"))
                window = run.x_window("Install")
                size = window.get_geometry()
                self.assertLessEqual(abs(size.width - 396 * factor), 1)
                self.assertLessEqual(abs(size.height - 238 * factor), 1)
                corner = window.translate_coords(window.query_tree().root, 0, 0)
                place = (-corner.x + 4, -corner.y + 4, 20, 1)
                wait_until(lambda place=place: self.screen.colours(*place) == {WHITE}, "white")
                self.stop(run)

    def test_folders_are_in_the_order_of_the_users_language(self):
        names = ["Zebra", "Ägg", "Apple", "file 10", "file 9"]
        # The dialog opens where the bundle lies.
        for name in names:
            os.mkdir(os.path.join(self.folder, name))
        for language, order in (("sv_SE.UTF-8", ["Apple", "file 9", "file 10", "Zebra", "Ägg"]),
                                ("de_DE.UTF-8", ["Ägg", "Apple", "file 9", "file 10", "Zebra"]),
                                # One that the system doesn't have.
                                ("pl_PL.UTF-8", ["Apple", "file 9", "file 10", "Zebra", "Ägg"])):
            with self.subTest(language):
                locales = os.path.join(self.folder, "user", "locales")
                os.makedirs(locales, exist_ok=True)
                if not language.startswith("pl"):
                    subprocess.run(["localedef", "-i", language.partition(".")[0], "-f", "UTF-8",
                                    os.path.join(locales, language)], check=True)
                run = self.open(settings={"LC_ALL": language, "LANG": language, "LOCPATH": locales})
                run.click("Install")

                def listed():
                    return [node.name for node in run.controls() if node.name in names]
                wait_until(lambda: len(listed()) >= len(names), "the folders", 30, run.described)
                self.assertEqual(listed()[-len(names):], order)
                run.key("Escape")
                self.assert_ends(run)


class Places(case.InstallerTest):
    def listing(self, folder):
        found = {}
        for place, folders, files in os.walk(folder):
            for name in folders + files:
                state = os.lstat(os.path.join(place, name))
                found[os.path.relpath(os.path.join(place, name), folder)] = (
                    state.st_mode, state.st_size, state.st_mtime_ns)
        return found

    def test_installs_from_a_folder_that_nobody_can_write_to(self):
        bundle = self.bundle()
        before = self.listing(bundle)
        for place, _, _ in os.walk(bundle):
            os.chmod(place, 0o555)
        self.addCleanup(subprocess.run, ["chmod", "-R", "u+w", bundle], check=True)
        run = self.open(bundle)
        run.click("Install")
        self.choose_folder(run)
        self.assert_ends(run)
        self.assertEqual(self.installed(), {"read me.txt": b"Hello"})
        after = self.listing(bundle)
        self.assertEqual({path: state[1:] for path, state in after.items()},
                         {path: state[1:] for path, state in before.items()})
        self.assertEqual(os.listdir(run.home), [], "left in the user's home")

    def test_installs_from_a_disk_that_nothing_can_write_to(self):
        bundle = self.bundle()
        # Root, too, is refused there, which rights alone don't do.
        script = ('mount --bind "$1" "$1" && mount -o remount,bind,ro "$1" && ! touch "$1/x" 2>&- '
                  '&& exec "$2"')
        own = ["unshare", "--mount", *(() if os.geteuid() == 0 else ("--user", "--map-root-user"))]
        if subprocess.run([*own, "true"], check=False).returncode:
            self.skipTest("no right to mount a disk")
        start = os.path.join(self.folder, "start")
        command = [*own, "sh", "-c", script, "sh", bundle, case.program_of(bundle)]
        case.write_tree(self.folder, {"start": f"#!/bin/sh\nexec {shlex.join(command)}\n"})
        os.chmod(start, 0o755)
        run = case.Installer(self.screen, start, os.path.join(self.folder, "user"))
        self.opened.append(run)
        run.click("Install")
        self.choose_folder(run)
        self.assert_ends(run)
        self.assertEqual(self.installed(), {"read me.txt": b"Hello"})

    def test_downloads_from_a_host_of_other_letters_than_asciis(self):
        pages, hosts = {}, []
        address, _ = self.serve(pages, hosts)
        host = address.replace("127.0.0.1", "bücher.localhost")  # Which is this machine by its end.
        run = self.open(files={"songs": {"a": os.urandom(20000)}}, fInstallOptions=[
            {"caption": "Songs", "source": host + "/a.zip", "content": "songs"}])
        pages["/a.zip"] = lambda: open(os.path.join(self.folder, "a.zip"), "rb").read()
        run.press("Install")
        run.press("Songs")
        run.press("Continue", within=run.window("Select Options"))
        self.choose_folder(run)
        self.assert_ends(run)
        self.assertEqual(hosts, ["xn--bcher-kva.localhost"])
        self.assertIn("a", self.installed())

    def test_starts_from_a_path_of_any_letters(self):
        plain = self.bundle()
        for name in ("it's $(x) \"a\" : ; \\ é 日本", "line\nfeed"):
            with self.subTest(name):
                bundle = os.path.join(self.folder, name, "Install.app")
                shutil.copytree(plain, bundle)
                run = self.open(bundle)
                run.click("Install")
                self.choose_folder(run)
                self.assert_ends(run)
                self.assertEqual(self.installed(), {"read me.txt": b"Hello"})
                shutil.rmtree(os.path.join(self.target, "Tool"))

    def test_desktop_entry_starts_the_bundle_wherever_both_are(self):
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
