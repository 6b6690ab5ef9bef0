"""Updates of what is installed."""

import os

import case


class Patches(case.InstallerTest):
    def test_patch_changes_what_is_installed(self):
        installed = os.path.join(self.target, "Tool")
        old = {"keep.txt": "keep", "change.txt": "old", "Gone": {"a": "a"}, "sub": {"gone.txt": "x"}}
        new = {"keep.txt": "keep", "change.txt": "new", "sub": {"added.txt": "y"}}
        case.write_tree(installed, old)
        run = self.open(files={"old": old, "new": new}, patch={"old": "old", "new": "new"})
        run.click("Install")
        self.choose_folder(run)
        self.assert_ends(run)
        case.write_tree(os.path.join(self.folder, "expected"), new)
        self.assertEqual(self.installed(), case.read_tree(os.path.join(self.folder, "expected")))
        self.assertEqual(os.listdir(self.target), ["Tool"])

    def test_patch_without_a_target_is_refused(self):
        run = self.open(fInstallationPatch=True)
        run.click("Install")
        self.choose_folder(run)
        run.waits_for("Patch Failed.  No installation folder exists.")
        run.key("Return")
        self.assert_ends(run)
        self.assertEqual(os.listdir(self.target), [])


if __name__ == "__main__":
    case.main()
