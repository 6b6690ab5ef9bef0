"""Runs clang-tidy on the sources of one folder. The user's cache folder has a note for each source
that passed, by content. A source is checked again only if it, its includes, its command or the
checks have changed, in any clone of the project."""

import glob
import hashlib
import json
import os
import shlex
import subprocess
import sys


def includes(build, objects):
    """The files that each object was built from, as recorded by the build."""
    recorded = subprocess.run(["ninja", "-C", build, "-t", "deps", *objects], check=True,
                              stdout=subprocess.PIPE, encoding="utf-8").stdout
    found, current = {}, None
    for line in recorded.splitlines():
        if line.startswith("    "):
            found[current].append(os.path.normpath(os.path.join(build, line.strip())))
        elif line and not line.startswith("ninja:"):
            current = line.split(":")[0]
            found[current] = []
    return found


def fingerprint(root, command, files, checks):
    """A hash of everything that affects the result of clang-tidy: the content of the project's
    files, size and time of the system's files."""
    state = hashlib.sha256(checks + command.replace(root, ".").encode())
    for path in sorted(files):
        state.update(path.replace(root, ".").encode() + b"\0")
        if path.startswith(root):
            with open(path, "rb") as source:
                state.update(hashlib.sha256(source.read()).digest())
        else:
            there = os.stat(path)
            state.update(f"{there.st_size} {there.st_mtime_ns}".encode())
    return state.hexdigest()


def rules_for(root, folder):
    """The contents of the files .clang-tidy of a folder and of the folders above it."""
    found, place = b"", os.path.join(root, folder)
    while place.startswith(root):
        path = os.path.join(place, ".clang-tidy")
        if os.path.exists(path):
            with open(path, "rb") as rules:
                found += rules.read()
        place = os.path.dirname(place)
    return found


def cache_folder():
    base = os.environ.get("XDG_CACHE_HOME") or os.path.expanduser("~/.cache")
    folder = os.path.join(base, "zephin-tidy")
    os.makedirs(folder, exist_ok=True)
    return folder


def passes(build, source):
    ran = subprocess.run(
        ["clang-tidy", "-p", build, "--quiet", "--extra-arg=-Wno-unknown-warning-option", source],
        stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, encoding="utf-8")
    if ran.returncode != 0:
        print(ran.stdout)
    return ran.returncode == 0


def main(root, build, folder):
    place = os.path.join(root, folder)
    with open(os.path.join(build, "compile_commands.json"), encoding="utf-8") as commands:
        entries = {entry["file"]: entry for entry in json.load(commands)
                   if os.path.dirname(entry["file"]) == place}
    left_out = sorted(set(glob.glob(os.path.join(place, "*.cpp"))) - set(entries))
    if left_out:
        print("not in the build:", *left_out)
        return 1
    for entry in entries.values():
        words = shlex.split(entry["command"])
        entry["object"] = words[words.index("-o") + 1]
    included = includes(build, [entry["object"] for entry in entries.values()])
    version = subprocess.run(["clang-tidy", "--version"], check=True, stdout=subprocess.PIPE).stdout
    checks = version + rules_for(root, folder)
    cache = cache_folder()
    failed = 0
    for source, entry in entries.items():
        files = included[entry["object"]] + [source]
        note = os.path.join(cache, fingerprint(root, entry["command"], files, checks))
        if os.path.exists(note):
            continue
        if passes(build, source):
            with open(note, "w", encoding="ascii"):
                pass
        else:
            failed += 1
    print(f"{failed} of {len(entries)} sources failed")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(*(os.path.abspath(path) for path in sys.argv[1:3]), sys.argv[3]))
