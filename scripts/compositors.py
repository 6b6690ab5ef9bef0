"""The tests of Wayland on a compositor that desktops use, and one more that weston can't run. The
variable `ZEPHIN_COMPOSITOR` names it: sway or kwin."""

import os
import shutil
import sys

sys.path.append(os.path.join(os.path.dirname(__file__), "..", "tests", "e2e"))

import case  # noqa: E402
from processes import wait_until  # noqa: E402
from session import WaylandSession  # noqa: E402
from wayland_test import Wayland  # noqa: E402


class _Compositor(WaylandSession):
    def _path(self, name):
        return os.path.join(self.folder, name)

    def _script_that_names_the_screen(self):
        """The path of a script that the compositor runs."""
        script = self._path("name-screen")
        with open(script, "w", encoding="utf-8") as file:
            file.write(f"#!/bin/sh\necho $DISPLAY $WAYLAND_DISPLAY > {self.folder}/part\n"
                       f"mv {self.folder}/part {self.folder}/screen\nexec sleep infinity\n")
        os.chmod(script, 0o755)
        return script

    def _screen_named(self):
        wait_until(lambda: os.path.exists(self._path("screen")), "the compositor's X server", 60,
                   self.logs)
        with open(self._path("screen"), encoding="utf-8") as file:
            screen, os.environ["WAYLAND_DISPLAY"] = file.read().split()
        return screen


class Sway(_Compositor):
    def start_compositor(self):
        with open(self._path("config"), "w", encoding="utf-8") as file:
            file.write(f"xwayland force\nfloating_modifier none\nfor_window [class=.*] floating "
                       f"enable\nexec {self._script_that_names_the_screen()}\n")
        os.environ.update(WLR_BACKENDS="headless", WLR_LIBINPUT_NO_DEVICES="1",
                          WLR_RENDERER="pixman")
        # It refuses to run as root, so for root it runs as somebody else in a name space.
        other = ("unshare", "--user", "--map-user=1000", "--map-group=1000")
        self._run(*(other if os.geteuid() == 0 else ()), "sway", "--config", self._path("config"))
        return self._screen_named()


class KWin(_Compositor):
    def start_compositor(self):
        # The installed file has a right that a container does not grant; a copy has none.
        program = shutil.copyfile(shutil.which("kwin_wayland"), self._path("kwin_wayland"))
        os.chmod(program, 0o755)
        os.environ.update(KWIN_COMPOSE="Q", XDG_CURRENT_DESKTOP="KDE")
        self._run(program, "--virtual", "--xwayland", "--no-lockscreen", "--no-global-shortcuts",
                  "--socket", os.environ["WAYLAND_DISPLAY"], self._script_that_names_the_screen())
        return self._screen_named()


class OnCompositor(Wayland):
    # weston without a seat dies of any X program that takes the clipboard.
    def test_clipboard_outlives_the_run(self):
        # The token puts the path of an item beside the installer there.
        bundle = self.bundle(fExecuteAfterName="SetupFolder/nothing here é.sh")
        self.install(self.open(bundle))
        self.assertEqual(case.clipboard(), os.path.dirname(bundle) + "/nothing here é.sh")


if __name__ == "__main__":
    del Wayland  # Its tests run once, as those of OnCompositor.
    case.main({"sway": Sway, "kwin": KWin}[os.environ["ZEPHIN_COMPOSITOR"]])
