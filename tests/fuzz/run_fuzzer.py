"""Runs a fuzzer: for half a minute, or only over its known inputs and for a moment if this very
program has passed before. The user's cache folder has a note for each that passed, by content, for
every clone of the project.

run_fuzzer.py PROGRAM [OPTION ...] NEW_INPUTS KNOWN_INPUTS
"""

import hashlib
import os
import subprocess
import sys

_SECONDS = 30
_SECONDS_AGAIN = 1


def note_of(program, options, known):
    """The path of the note, which depends on all that affects what the fuzzer finds."""
    inputs = sorted(os.path.join(known, name) for name in os.listdir(known))
    state = hashlib.sha256(" ".join(options).encode())
    for path in (program, *inputs):
        with open(path, "rb") as file:
            state.update(hashlib.sha256(file.read()).digest())
    base = os.environ.get("XDG_CACHE_HOME") or os.path.expanduser("~/.cache")
    return os.path.join(base, "zephin-fuzz", state.hexdigest())


def main(program, *arguments):
    *options, new, known = arguments
    note = note_of(program, options, known)
    seconds = _SECONDS
    if os.path.exists(note):
        print("This program has passed before, so it runs only for a moment.", flush=True)
        seconds = _SECONDS_AGAIN
    ran = subprocess.run([program, f"-max_total_time={seconds}", *options, new, known], check=False)
    if ran.returncode == 0:
        os.makedirs(os.path.dirname(note), exist_ok=True)
        with open(note, "w", encoding="ascii"):
            pass
    return 1 if ran.returncode else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
