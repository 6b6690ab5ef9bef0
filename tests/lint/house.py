"""Holds the code to the plan of the house: what may include what, and where the system shows."""

import fnmatch
import os
import re
import sys

# A file includes what stands on its own floor or below; the first row that fits counts.
FLOORS = (
    ("platform/expander/*", 0),
    ("platform/framework/*", 0),
    ("util/*", 1),
    ("setup/*", 2),
    ("dialogs/*", 3),
    ("files/*", 4),
    ("platform/bundle/*", 5),
    ("app/main.cpp", 10),
    ("app/*", 6),
    ("payload/*", 7),
    ("actions/*", 8),
    ("selection/*", 9),
    ("platform/qt/*", 10),
    ("tools/*", 10),
    ("bench/*", 11),
    ("tests/*", 11),
)

# Folders that other folders could use, too: they include nothing of the floor that they share.
ALONE = ("platform/expander/", "platform/framework/", "tools/make_setup/")
OPEN_TO_TOOLS = ("platform/framework/", "platform/expander/", "setup/",
                 "payload/expansion_time.h")

# Outside platform/, <...> is the standard library, but for these.
LIBRARIES = {"tools/": ("libdeflate.h", "nlohmann/json.hpp", "png.h", "unistd.h", "zlib.h"),
             "tests/": None, "bench/": None, "platform/": None}

LONGEST = 500


def floor(path):
    return next(level for pattern, level in FLOORS if fnmatch.fnmatch(path, pattern))


def sources(root):
    for folder, below, names in os.walk(root):
        below[:] = sorted(name for name in below if name[0] != "." and name != "build")
        for name in sorted(names):
            if name.endswith((".h", ".cpp")):
                yield os.path.relpath(os.path.join(folder, name), root)


def own_include_fault(path, included):
    if floor(included) > floor(path):
        return f"includes {included}, which stands above it"
    for home in ALONE:
        allowed = (home,) + (OPEN_TO_TOOLS if home.startswith("tools/") else ())
        if path.startswith(home) and not included.startswith(allowed):
            return f"includes {included}, but {home} stands alone"
    return None


def system_include_fault(path, included):
    standard = re.fullmatch(r"[a-z_0-9]+", included)
    if included.startswith(("Q", "qt", "Qt")):
        allowed = path.startswith(("platform/qt/", "tests/platform/qt/", "bench/"))
        return None if allowed or path == "app/main.cpp" else f"includes <{included}> of Qt"
    if path.startswith("platform/framework/") and path.endswith(".h") and not standard:
        return f"includes <{included}>: a desktop is written from these headers alone"
    for home, libraries in LIBRARIES.items():
        if path.startswith(home):
            return None if standard or libraries is None or included in libraries else (
                f"includes <{included}>")
    return None if standard else f"includes <{included}>, which belongs in platform/"


def faults(root, path):
    with open(os.path.join(root, path), encoding="utf-8") as source:
        lines = source.read().splitlines()
    if len(lines) > LONGEST:
        yield 1, f"has {len(lines)} lines; no file has more than {LONGEST}"
    for number, line in enumerate(lines, 1):
        include = re.match(r'\s*#\s*include\s*(?:"([^"]+)"|<([^>]+)>)', line)
        if include:
            own, system = include.groups()
            if own and not os.path.exists(os.path.join(root, own)):
                fault = f"includes {own}, which is no path from the root"
            else:
                fault = own_include_fault(path, own) if own else system_include_fault(path, system)
            if fault:
                yield number, fault
        if re.match(r"\s*#\s*(el)?if.*(__linux|__unix|__APPLE__|_WIN32|__MACH__|Q_OS_)", line):
            yield number, "asks for the operating system; the build chooses a source instead"


def main(root):
    told = [f"{path}:{number}: {fault}" for path in sources(root)
            for number, fault in faults(root, path)]
    print("\n".join(told))
    return 1 if told else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
