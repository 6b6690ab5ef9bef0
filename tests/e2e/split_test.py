"""A setup in several pieces. It continues from a copy, so that its disc can be removed."""

import glob
import os

import case
from case import wait_until

_REFUSAL = "Drag the installer out of the Downloads folder before running it."


class Relocation(case.InstallerTest):
    def copy_of(self, bundle):
        """Waits for the process of the copy. Returns its id and the path of its program."""
        temporary = os.path.join(self.folder, "user", "tmp", f"zephin-{os.getuid()}")

        def is_copy(words):
            return words and words[0].startswith(temporary) and "/MacOS/" in words[0]
        process = wait_until(lambda: case.descendant_where(is_copy), "the copy to start")
        path = case.command_line(process)[0]
        self.assertRegex(path[len(temporary):],
                         r"\A/[1-9]\d{3}/" + os.path.basename(bundle) + "/Contents/MacOS/")
        return process, path

    def pieces(self):
        return sorted(os.path.basename(path) for path in glob.glob(self.folder + "/Data#*"))

    def test_first_process_ends_and_the_copy_refuses(self):
        bundle = self.bundle(files={"release.txt": "What is new"}, pieceSize=400,
                             payload={"noise": os.urandom(1500)}, fPostInstallNotes="release.txt",
                             fCompletionURL="http://tool.example/done")
        pieces = self.pieces()
        self.assertIn("Data#2", pieces)
        self.assertEqual(pieces[-1], "Data#End")
        run = self.open(bundle)
        run.press("Install")

        process, path = self.copy_of(bundle)
        copy = case.Program(self.screen, process)
        copy.waits_for(_REFUSAL, 60)
        self.assertEqual(len(copy.windows()), 1, "its main window is hidden")
        self.assertEqual(case.clipboard(), os.path.dirname(bundle) + "/")

        run.press("OK", within=run.window("Release Notes"))
        self.assert_ends(run)
        self.assert_opens(run, "http://tool.example/done")

        # The copy outlives the first process and is now a child of this one.
        copy.press("OK")
        ended, status = wait_until(lambda: next(
            (end for end in [os.waitpid(process, os.WNOHANG)] if end[0]), None),
            "the copy to end")
        self.assertEqual((ended, status), (process, 0))

        resources = os.path.join(os.path.dirname(os.path.dirname(path)), "Resources")
        self.assertTrue(os.path.exists(os.path.join(resources, "Data#1")))
        self.assertEqual(os.listdir(self.target), [])
        self.assertEqual(self.pieces(), pieces)


if __name__ == "__main__":
    case.main()
