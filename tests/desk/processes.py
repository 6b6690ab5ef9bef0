"""Processes that end with this one, and waits that are never longer than they need to be."""

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
    """What was waited for did not come. The message says what, and what was there instead."""


def adopt_orphans():
    """Makes this process the parent of whatever its children leave behind, so that
    `end_descendants` finds a program that was started detached, too."""
    _libc.prctl(_PR_SET_CHILD_SUBREAPER, 1, 0, 0, 0)


def end_with_parent():
    """For `preexec_fn`: the process dies if this one is killed without a chance to clean up."""
    _libc.prctl(_PR_SET_PDEATHSIG, signal.SIGKILL, 0, 0, 0)


def start_as_user():
    """The same, and the program keeps to the rights that files give it, also when it runs as root:
    what is unwritable to a user is so in a test."""
    end_with_parent()
    if os.geteuid() == 0:
        for right in (_CAP_DAC_OVERRIDE, _CAP_DAC_READ_SEARCH):
            _libc.prctl(_PR_CAPBSET_DROP, right, 0, 0, 0)


def _parents():
    """The parent of each process of this machine, by its id, zombies included."""
    found = {}
    for entry in os.listdir("/proc"):
        if entry.isdigit():
            try:
                with open(f"/proc/{entry}/stat", encoding="utf-8", errors="replace") as stat:
                    # The name, in parentheses, may hold anything; state and parent follow it.
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
    """The words that `process` was started with; none if it is gone or a zombie."""
    try:
        with open(f"/proc/{process}/cmdline", "rb") as line:
            return line.read().decode(errors="replace").split("\0")[:-1]
    except (FileNotFoundError, ProcessLookupError):
        return []


def descendant_where(condition):
    """A process below this one for whose words `condition` holds; None if there is none."""
    return next((found for found in descendants() if condition(command_line(found))), None)


def end_descendants(keep=()):
    """Kills every process below this one but those in `keep` and what is below them. Needs
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
    """Asks `condition` again and again and returns its first true answer. After `seconds` it raises
    a Failure that says `what` was waited for, and the text that `otherwise()` gives."""
    begin = time.monotonic()
    while True:
        answer = condition()
        if answer:
            return answer
        waited = time.monotonic() - begin
        if waited > seconds:
            told = otherwise() if otherwise else ""
            raise Failure(f"waited {seconds:g} s for {what}" + (f"\n{told}" if told else ""))
        # Often at first, then less, so as not to slow down what is waited for.
        time.sleep(min(0.02 + waited / 20, 0.25))
