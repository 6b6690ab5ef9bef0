"""Runs that are killed at any time after the click on Install. The next run over the remains must
install correctly, even while the expander of the killed run is still working."""

import glob
import os
import shutil
import signal
import threading
import time

import case

# When a run is killed: an event and a delay in seconds. Most of its work takes milliseconds, so
# most times are there and not in the waits between.
_OVER_INSTALLED = [("click", 0.05 + step / 80) for step in range(20)]
_AFRESH = ([("archive", step / 500) for step in range(10)]
           + [("folder", step / 200) for step in range(10)]
           + [("click", 0.4 + step / 5) for step in range(6)]
           + [("archive gone", 0), ("archive gone", 0.5)])
# When an expander that outlived its run continues, in seconds after the next run's click.
_REVIVALS = [0.05, 0.12, 0.15, 0.2, 0.5, 1.15, 1.3, 1.5]

_LANES = 3  # Runs at the same time: they mostly wait.
_LONGEST = 120
_ATTEMPTS = 12  # To find an expander before it has finished.

_PAYLOAD = {f"folder {number}": {f"file {i}": os.urandom(1000 + 37 * i) for i in range(50)}
            for number in range(20)}
_FILES = sum(len(files) for files in _PAYLOAD.values())


def expander_of(archive):
    """The id of the process that expands that archive, or None."""
    return case.descendant_where(
        lambda words: archive in words and words[0].endswith("expand_beside"))


def files_in(folder):
    return sum(len(files) for _, _, files in os.walk(folder))


class Lane:
    """A sequence of runs of one installer, killed ones and complete ones."""

    def __init__(self, test, number):
        self.test = test
        self.name = f"Killed {os.getpid()} {number}"
        self.bundle = test.bundle(fTargetFolder=self.name, fApplicationFolder=True,
                                  payload=_PAYLOAD)
        self.folder = os.path.join(test.folder, str(number))
        applications = case.applications_folder(os.path.join(self.folder, "home"))
        self.target = os.path.join(applications, self.name)
        self.archive = self.target + ".zip"
        self.killed = 0
        test.addCleanup(self.clear)

    def clear(self):
        for path in glob.glob(self.target + "*"):
            shutil.rmtree(path) if os.path.isdir(path) else os.remove(path)

    def start(self):
        run = case.Installer(self.test.screen, case.program_of(self.bundle), self.folder)
        self.test.opened.append(run)
        run.press("Install")
        return run

    def wait_for(self, condition, run):
        """For the killing thread: waits for the condition or the end of the run."""
        while not (found := condition()) and run.runs():
            time.sleep(0.0002)
        return found

    def kill(self, run, sign, delay):
        signs = {"click": [], "archive": [lambda: os.path.exists(self.archive)],
                 "folder": [lambda: os.path.exists(self.target)],
                 "archive gone": [lambda: os.path.exists(self.archive),
                                  lambda: not os.path.exists(self.archive)]}
        if all(self.wait_for(step, run) for step in signs[sign]):
            time.sleep(delay)
        run.process.kill()

    def freeze(self, run, caught):
        """Stops the expander during its work and kills the run."""
        expander = self.wait_for(lambda: expander_of(self.archive), run)
        try:
            while expander and not caught and files_in(self.target) < _FILES:
                os.kill(expander, signal.SIGSTOP)
                if 0 < files_in(self.target) < _FILES:
                    caught.append(expander)
                else:
                    os.kill(expander, signal.SIGCONT)
                    time.sleep(0.0005)
        except ProcessLookupError:
            pass
        run.process.kill()

    def killed_run(self, strike, *arguments):
        run = self.start()
        thread = threading.Thread(target=strike, args=(run, *arguments), daemon=True)
        thread.start()
        while thread.is_alive() or run.runs():
            yield
        self.killed += run.process.returncode == -signal.SIGKILL

    def whole_run(self, event, revive=None):
        """A run to the end. `revive`: (seconds after the click, a stopped process)."""
        run = self.start()
        begin = time.monotonic()
        if revive:
            threading.Timer(revive[0], os.kill, (revive[1], signal.SIGCONT)).start()
        while run.runs():
            if time.monotonic() > begin + _LONGEST:
                self.test.fail(f"after {event} the next run does not end\n{run.described()}")
            yield
        self.test.assertEqual(run.status(), 0, event)
        while expander_of(self.archive):
            if time.monotonic() > begin + _LONGEST:
                self.test.fail(f"after {event} an expander does not end")
            yield
        self.test.assertEqual(glob.glob(self.target + "*"), [self.target], event)
        # assertEqual would print megabytes.
        self.test.assertTrue(case.read_tree(self.target) == _PAYLOAD,
                             f"after {event}: {files_in(self.target)} files")

    def killed_at(self, moments, afresh):
        for moment in moments:
            if afresh:
                self.clear()
            yield from self.killed_run(self.kill, *moment)
            yield from self.whole_run(moment)

    def revived_at(self, moments):
        for moment in moments:
            caught = []
            for _ in range(_ATTEMPTS):
                while expander_of(self.archive):
                    yield
                self.clear()
                yield from self.killed_run(self.freeze, caught)
                if caught:
                    break
            self.test.assertTrue(caught, "the expander was never seen at work")
            yield from self.whole_run(f"revival at {moment} s", (moment, caught[0]))


class Killed(case.InstallerTest):
    def run_lanes(self, works):
        """Runs the generators by turns until all have ended."""
        works = list(works)
        while works:
            for work in list(works):
                if next(work, self) is self:
                    works.remove(work)
            time.sleep(0.01)

    def setUp(self):
        super().setUp()
        self.lanes = [Lane(self, number) for number in range(_LANES)]

    def kills(self, moments, afresh):
        self.run_lanes(lane.killed_at(moments[number::_LANES], afresh)
                       for number, lane in enumerate(self.lanes))
        # A slow machine may miss the last of them.
        self.assertGreaterEqual(sum(lane.killed for lane in self.lanes), len(moments) - 2)

    def test_over_an_installed_folder(self):
        self.run_lanes(lane.whole_run("nothing") for lane in self.lanes)
        self.kills(_OVER_INSTALLED, afresh=False)

    def test_afresh(self):
        self.kills(_AFRESH, afresh=True)

    def test_while_the_expander_goes_on(self):
        self.run_lanes(lane.revived_at(_REVIVALS[number::_LANES])
                       for number, lane in enumerate(self.lanes))


if __name__ == "__main__":
    case.main()
