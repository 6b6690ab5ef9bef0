"""Runs clang-tidy on the sources of one folder. A source that has passed is looked at again only
when it, something that it includes, its command or the checks have changed."""

import hashlib
import json
import os
import shlex
import subprocess
import sys


def included_by(build, objects):
    """What each object file was made from, as the build has seen it."""
    told = subprocess.run(["ninja", "-C", build, "-t", "deps", *objects], check=True,
                          stdout=subprocess.PIPE, encoding="utf-8").stdout
    found, current = {}, None
    for line in told.splitlines():
        if line.startswith("    "):
            found[current].append(os.path.normpath(os.path.join(build, line.strip())))
        elif line and not line.startswith("ninja:"):
            current = line.split(":")[0]
            found[current] = []
    return found


def fingerprint(root, command, files, checks):
    """Changes with anything that could change what clang-tidy says."""
    state = hashlib.sha256(checks + command.encode())
    for path in sorted(files):
        state.update(path.encode() + b"\0")
        if path.startswith(root):
            with open(path, "rb") as source:
                state.update(hashlib.sha256(source.read()).digest())
        else:
            there = os.stat(path)
            state.update(f"{there.st_size} {there.st_mtime_ns}".encode())
    return state.hexdigest()


def rules_for(root, folder):
    """The files that say which checks there are in a folder: those of the folders above it, too."""
    found, place = b"", os.path.join(root, folder)
    while place.startswith(root):
        path = os.path.join(place, ".clang-tidy")
        if os.path.exists(path):
            with open(path, "rb") as rules:
                found += rules.read()
        place = os.path.dirname(place)
    return found


def main(root, build, folder):
    with open(os.path.join(build, "compile_commands.json"), encoding="utf-8") as commands:
        entries = [entry for entry in json.load(commands)
                   if os.path.dirname(entry["file"]) == os.path.join(root, folder)]
    if not entries:
        print(f"nothing is compiled in {folder}")
        return 1
    for entry in entries:
        words = shlex.split(entry["command"])
        entry["object"] = words[words.index("-o") + 1]
    included = included_by(build, [entry["object"] for entry in entries])
    version = subprocess.run(["clang-tidy", "--version"], check=True, stdout=subprocess.PIPE).stdout
    checks = version + rules_for(root, folder)
    stamps = os.path.join(build, "tidy")
    os.makedirs(stamps, exist_ok=True)
    failed = 0
    for entry in entries:
        files = included[entry["object"]] + [entry["file"]]
        state = fingerprint(root, entry["command"], files, checks)
        stamp = os.path.join(stamps, os.path.relpath(entry["file"], root).replace("/", "+"))
        if os.path.exists(stamp):
            with open(stamp, encoding="ascii") as passed:
                if passed.read() == state:
                    continue
        ran = subprocess.run(
            ["clang-tidy", "-p", build, "--quiet", "--extra-arg=-Wno-unknown-warning-option",
             entry["file"]], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, encoding="utf-8")
        if ran.returncode == 0:
            with open(stamp, "w", encoding="ascii") as passed:
                passed.write(state)
        else:
            failed += 1
            print(ran.stdout)
    print(f"{failed} of {len(entries)} sources failed")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(*(os.path.abspath(path) for path in sys.argv[1:3]), sys.argv[3]))
