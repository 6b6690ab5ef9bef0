"""Runs clang-tidy on the sources of one folder, several at once, as most of the time goes into the
headers of libraries. The user's cache folder has a note for each source that passed, by content. A
source is checked again only if it, its includes, its command or the checks have changed, in any
clone of the project."""

import glob
import hashlib
import json
import os
import re
import shlex
import shutil
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


class Unit:
    """One source and how it is compiled."""

    def __init__(self, entry):
        self.source = entry["file"]
        self.command = entry["command"]
        words = shlex.split(self.command)
        output = words.index("-o")
        self.object = words[output + 1]
        self.flags = [word for word in words[1:output] + words[output + 2:]
                      if word not in ("-c", self.source)]
        self.note = None  # The file that says that it passed.


def joined(sources):
    """The texts of several sources as one, in which each file is included once."""
    lines, seen = [], set()
    for source in sources:
        with open(source, encoding="utf-8") as text:
            own = text.read().splitlines()
        lines += ["" if line in seen else line for line in own]
        seen.update(line for line in own if line.startswith("#include"))
    return "\n".join(lines) + "\n"


def passes(source, flags):
    ran = subprocess.run(["clang-tidy", "--quiet", "--extra-arg=-Wno-unknown-warning-option",
                          source, "--", *flags],
                         stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, encoding="utf-8")
    return ran.returncode == 0, ran.stdout


def groups_of(units):
    """The units in groups of the same flags, of which no two define the same constant."""
    groups = []
    for unit in units:
        with open(unit.source, encoding="utf-8") as text:
            names = set(re.findall(r"^const\w* .*?\b(k[A-Z]\w*)", text.read(), re.MULTILINE))
        for group, flags, taken in groups:
            if flags == unit.flags and not names & taken:
                group.append(unit)
                taken |= names
                break
        else:
            groups.append(([unit], unit.flags, names))
    return [group for group, _, _ in groups]


def failures(units, place):
    """Checks sources of the same flags, and returns the number of those that failed. Several are
    checked as one in the folder `place`. What is wrong with the whole may be wrong with the whole
    alone, a name that two sources use: then each half is checked."""
    if len(units) > 1:
        whole = os.path.join(place, "joined.cpp")
        with open(whole, "w", encoding="utf-8") as file:
            file.write(joined(unit.source for unit in units))
        if not passes(whole, [*units[0].flags, "-Wno-shadow"])[0]:
            middle = len(units) // 2
            return failures(units[:middle], place) + failures(units[middle:], place)
    else:
        passed, findings = passes(units[0].source, units[0].flags)
        if not passed:
            print(findings)
            return 1
    for unit in units:
        with open(unit.note, "w", encoding="ascii"):
            pass
    return 0


def place_for(root, build, folder):
    """A new folder below `build` with the checks of `folder`."""
    place = os.path.join(build, "tidy")
    os.makedirs(os.path.join(place, folder), exist_ok=True)
    parts = folder.split("/")
    for part in ["/".join(parts[:depth]) for depth in range(len(parts) + 1)]:
        rules = os.path.join(root, part, ".clang-tidy")
        if os.path.exists(rules):
            shutil.copy(rules, os.path.join(place, part))
    return os.path.join(place, folder)


def main(root, build, folder):
    place = os.path.join(root, folder)
    with open(os.path.join(build, "compile_commands.json"), encoding="utf-8") as commands:
        units = {entry["file"]: Unit(entry) for entry in json.load(commands)
                 if os.path.dirname(entry["file"]) == place}
    left_out = sorted(set(glob.glob(os.path.join(place, "*.cpp"))) - set(units))
    if left_out:
        print("not in the build:", *left_out)
        return 1
    included = includes(build, [unit.object for unit in units.values()])
    version = subprocess.run(["clang-tidy", "--version"], check=True, stdout=subprocess.PIPE).stdout
    checks = version + rules_for(root, folder)
    cache = cache_folder()
    for source, unit in units.items():
        files = included[unit.object] + [source]
        unit.note = os.path.join(cache, fingerprint(root, unit.command, files, checks))
    unchecked = [unit for _, unit in sorted(units.items()) if not os.path.exists(unit.note)]
    place = place_for(root, build, folder)
    failed = sum(failures(group, place) for group in groups_of(unchecked))
    print(f"{failed} of {len(units)} sources failed")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(*(os.path.abspath(path) for path in sys.argv[1:3]), sys.argv[3]))
