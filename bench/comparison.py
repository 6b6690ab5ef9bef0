"""Shared by the comparisons in this folder: the build's place and the measuring of a command."""

import os
import pathlib
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
BUILD = ROOT / "build" / "bench"


def measure(build, command, warmed=0, ahead=()):
    """Runs a command that must succeed. Returns its wall time in seconds and its peak memory in
    megabytes. The disk is idle at its start. `warmed` bytes of memory have been used before: in a
    virtual machine the first use of a page costs time. `ahead`: words in front of the command."""
    os.sync()
    subprocess.run([sys.executable, "-c", f"b'x' * {warmed}"], check=True)
    answer = subprocess.run([*ahead, build / "bench" / "measure", *command], check=True,
                            capture_output=True, text=True)
    wall, _, peak, status = map(int, answer.stdout.split())
    if status != 0:
        sys.exit(f"status {status} of {' '.join(map(str, command))}: {answer.stderr}")
    return wall / 1e9, peak / 1024
