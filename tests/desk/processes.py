"""Processes that end with this one, and waiting for conditions."""

import ctypes
import os
import signal
import time

_PR_SET_PDEATHSIG = 1
_PR_CAPBSET_DROP = 24
_PR_SET_CHILD_SUBREAPER = 36
_CAP_DAC_OVERRIDE = 1
_CAP_DAC_READ_SEARCH = 2
_libc = ctypes.CDLL(None, use_errno=True)


class Failure(AssertionError):
    """A condition did not become true in time. The message describes it and the actual state."""


def adopt_orphans():
    """Makes this process the parent of orphans of its children, so that `end_descendants` also
    finds programs that were started detached."""
    _libc.prctl(_PR_SET_CHILD_SUBREAPER, 1, 0, 0, 0)


def end_with_parent():
    """For `preexec_fn`: the process is killed when this one ends, even without a clean-up."""
    _libc.prctl(_PR_SET_PDEATHSIG, signal.SIGKILL, 0, 0, 0)


def start_as_user():
    """The same. A program that runs as root also obeys the rights of files: what a user can't write
    is unwritable in a test."""
    end_with_parent()
    if os.geteuid() == 0:
        for right in (_CAP_DAC_OVERRIDE, _CAP_DAC_READ_SEARCH):
            _libc.prctl(_PR_CAPBSET_DROP, right, 0, 0, 0)


def _parents():
    """The parents of all processes of this machine by their ids, zombies included."""
    found = {}
    for entry in os.listdir("/proc"):
        if entry.isdigit():
            try:
                with open(f"/proc/{entry}/stat", encoding="utf-8", errors="replace") as stat:
                    # The name, in parentheses, may be anything. State and parent follow it.
                    fields = stat.read().rpartition(")")[2].split()
            except (FileNotFoundError, ProcessLookupError):
                continue
            found[int(entry)] = int(fields[1])
    return found


def children():
    """The ids of the processes whose parent is this one, zombies included."""
    return [process for process, parent in _parents().items() if parent == os.getpid()]


def descendants():
    """All processes below this one."""
    parents = _parents()
    found = [os.getpid()]
    for above in found:
        found += [process for process, parent in parents.items() if parent == above]
    return found[1:]


def command_line(process):
    """The command line of `process`; empty if it has ended or is a zombie."""
    try:
        with open(f"/proc/{process}/cmdline", "rb") as line:
            return line.read().decode(errors="replace").split("\0")[:-1]
    except (FileNotFoundError, ProcessLookupError):
        return []


def descendant_where(condition):
    """A process below this one whose command line fulfils `condition`, or None."""
    return next((found for found in descendants() if condition(command_line(found))), None)


def end_descendants(keep=()):
    """Kills every process below this one, except those in `keep` and their descendants. Requires
    `adopt_orphans`."""
    while True:
        doomed = [child for child in children() if child not in keep]
        if not doomed:
            return
        for child in doomed:
            os.kill(child, signal.SIGKILL)
        for child in doomed:
            try:
                os.waitpid(child, 0)
            except ChildProcessError:
                pass


def wait_until(condition, what, seconds=30.0, otherwise=None):
    """Calls `condition` repeatedly and returns its first true result. After `seconds` it raises a
    Failure with `what` and the text of `otherwise()`."""
    begin = time.monotonic()
    while True:
        answer = condition()
        if answer:
            return answer
        waited = time.monotonic() - begin
        if waited > seconds:
            text = otherwise() if otherwise else ""
            raise Failure(f"waited {seconds:g} s for {what}" + (f"\n{text}" if text else ""))
        # First often, then less, in order not to slow down the other processes.
        time.sleep(min(0.02 + waited / 20, 0.25))
