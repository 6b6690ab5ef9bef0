"""The Applications folder on fresh machines, with and without /Applications, for root and for an
ordinary user."""

import os
import subprocess
import tempfile

import case
import processes

_MACHINE = os.path.join(case.ROOT, "tests", "desk", "machine.sh")
_USER = 65534
_MOUNTS = ["unshare", "--mount", *(() if os.geteuid() == 0 else ("--user", "--map-root-user"))]


class Applications(case.InstallerTest):
    def install(self, applications, user):
        """Opens an installer on such a machine, and answers every window by Return. Returns the
        folder that contains the machine's root and the user's home."""
        place = tempfile.mkdtemp(prefix="machine-", dir=self.folder)
        root, home, temporary = (os.path.join(place, name) for name in ("root", "home", "tmp"))
        for folder in (root, home, temporary):
            os.mkdir(folder)
            os.chmod(folder, 0o755)
        for folder in (self.folder, place):
            os.chmod(folder, 0o755)
        for folder in (home, temporary):
            os.chown(folder, user, user)
        settings = {"HOME": home, "TMPDIR": temporary, "DISPLAY": os.environ["DISPLAY"],
                    "PATH": os.environ["PATH"], "LC_ALL": "C.UTF-8",
                    "ASAN_OPTIONS": "detect_leaks=0"}
        program = case.program_of(self.bundle(fApplicationFolder=True, fWindowTitle="Tool"))
        # The umask must not decide who can use what is made.
        with subprocess.Popen([*_MOUNTS, _MACHINE, applications, str(user), root, program],
                              env=settings, stdin=subprocess.DEVNULL, umask=0o077,
                              preexec_fn=processes.end_with_parent) as process:
            seen, answered = [], []

            def answer():
                for window, title in self.screen.windows(process.pid):
                    seen.append(window.id)
                    # The main window, the first, appears for a moment before it has its own title.
                    # A key may be ignored then, or count as well as the next one.
                    ready = window.id != seen[0] or title == "Tool"
                    if (ready and window.id == self.screen.active_window()
                            and window.id not in answered):
                        answered.append(window.id)
                        self.screen.key("Return")
                return process.poll() is not None
            try:
                case.wait_until(answer, "the end", 90)
            finally:
                process.kill()
        self.assertEqual(process.returncode, 0)
        return place

    def test_is_where_each_user_can_write(self):
        if subprocess.run([*_MOUNTS, "true"], check=False).returncode:
            self.skipTest("no right to mount")
        # Which /Applications there is, the user, and where the folder is installed.
        for applications, user, place in (
                ("NONE", 0, "root/opt"), ("NONE", _USER, "home/Applications"),
                ("OWN", _USER, "root/Applications"),
                ("ROOTS", 0, "root/Applications"), ("ROOTS", _USER, None)):
            if user and os.geteuid():
                continue  # Only root can become another user.
            with self.subTest(applications=applications, user=user):
                above = self.install(applications, user)
                places = {name: os.path.join(above, name)
                          for name in ("root/opt", "root/Applications", "home/Applications")}
                for name, folder in places.items():
                    if name == place:
                        self.assertEqual(case.read_tree(folder),
                                         {"Tool": {"read me.txt": b"Hello"}})
                        self.assertEqual(os.stat(folder).st_mode & 0o7777, 0o755)
                    elif os.path.isdir(folder):
                        self.assertEqual(os.listdir(folder), [], name)
                self.assertEqual(os.path.isdir(places["home/Applications"]),
                                 place == "home/Applications")


if __name__ == "__main__":
    case.main()
