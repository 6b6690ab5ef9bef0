"""What the comparisons beside it share: where a build is, and how one command is measured."""

import os
import pathlib
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
BUILD = ROOT / "build" / "bench"


def measure(build, command, warmed=0, ahead=()):
    """Wall time in seconds and peak memory in megabytes of a command that must succeed. The disk is
    idle at its start, and `warmed` bytes of memory are at hand: a virtual machine asks its host for
    memory, and whoever uses it first would pay for that. The words of `ahead` stand before it."""
    os.sync()
    subprocess.run([sys.executable, "-c", f"b'x' * {warmed}"], check=True)
    answer = subprocess.run([*ahead, build / "bench" / "measure", *command], check=True, capture_output=True, text=True)
    wall, _, peak, status = map(int, answer.stdout.split())
    if status != 0:
        sys.exit(f"status {status} of {' '.join(map(str, command))}: {answer.stderr}")
    return wall / 1e9, peak / 1024
