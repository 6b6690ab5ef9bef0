"""Checks the layers of the code: which folder may include which, and which use system headers."""

import os
import re
import sys

# The layers, bottom to top. A file includes from its own folder or from one earlier in this list.
LAYERS = (
    "platform/expander",
    "platform/framework",
    "platform/qt",
    "util",
    "setup",
    "dialogs",
    "files",
    "platform/bundle",
    "app",
    "payload",
    "actions",
    "selection",
    "tools/make_setup",
    "tests",
    "bench",
)

# Only their own tests and benchmarks include these: a port replaces them completely, or they are
# separate programs.
ALONE = {"platform/expander": (), "platform/qt": ("platform/framework", "platform/expander"),
         "tools/make_setup": ("platform/framework", "util", "setup")}

# What the expander sends to its window program, which is in platform/qt.
MESSAGES = ("platform/expander/report/message.h", "platform/expander/report/reason.h")

# Outside platform/, <...> is the standard library, with these exceptions.
LIBRARIES = {"tools/": ("archive.h", "archive_entry.h", "libdeflate.h", "nlohmann/json.hpp",
                        "png.h", "unistd.h", "zlib.h", "zstd.h"),
             "tests/": None, "bench/": None, "platform/": None}

LONGEST = 400
DEEPEST = 6


def layer(path):
    return next(level for level, folder in enumerate(LAYERS) if path.startswith(folder + "/"))


def sources(root):
    for folder, below, names in os.walk(root):
        below[:] = sorted(name for name in below if name[0] != "." and name != "build")
        for name in sorted(names):
            if name.endswith((".h", ".cpp")):
                yield os.path.relpath(os.path.join(folder, name), root)


def own_include_fault(path, included):
    if not included.startswith(tuple(folder + "/" for folder in LAYERS)):
        return f"includes {included}, whose folder has no layer"
    own, other = LAYERS[layer(path)], LAYERS[layer(included)]
    if LAYERS.index(other) > LAYERS.index(own):
        return f"includes {included} of a higher layer"
    if own in ("tests", "bench"):
        return None
    if own in ALONE and other != own and other not in ALONE[own]:
        return f"includes {included}, but {own} uses no other folder"
    if included.startswith(MESSAGES) and path.startswith("platform/qt/expansion/"):
        return None
    if other in ALONE and other != own:
        return f"includes {included}, which no other folder uses"
    return None


def system_include_fault(path, included):
    standard = re.fullmatch(r"[a-z_0-9]+", included)
    if included.startswith(("Q", "qt", "Qt")):
        allowed = path.startswith(("platform/qt/", "tests/platform/qt/", "bench/"))
        return None if allowed else f"includes <{included}> of Qt"
    if re.fullmatch(r"platform/framework/\w+\.h", path) and not standard:
        return f"includes <{included}>: a desktop is written from these headers alone"
    for home, libraries in LIBRARIES.items():
        if path.startswith(home):
            return None if standard or libraries is None or included in libraries else (
                f"includes <{included}>")
    return None if standard else f"includes <{included}>, which belongs in platform/"


def own_includes(root, path):
    with open(os.path.join(root, path), encoding="utf-8") as source:
        return re.findall(r'^#include "([^"]+)"', source.read(), re.MULTILINE)


def depth(root, path, known):
    """The number of own headers that include each other, from this one down."""
    if path not in known:
        known[path] = 0  # The compiler reports cycles.
        known[path] = 1 + max((depth(root, header, known) for header in own_includes(root, path)
                               if os.path.exists(os.path.join(root, header))), default=0)
    return known[path]


def own_header_is_late(path, included):
    """Whether a source includes its own header (without the suffix of a system) after another one.
    Included first, a header that misses an include fails to compile."""
    name = re.sub(r"(_linux|_curl)?\.cpp$", ".h", os.path.basename(path))
    return name in [os.path.basename(header) for header in included[1:]] and (
        os.path.basename(included[0]) != name)


def line_faults(root, path, lines):
    for number, line in enumerate(lines, 1):
        include = re.match(r'\s*#\s*include\s*(?:"([^"]+)"|<([^>]+)>)', line)
        if include:
            own, system = include.groups()
            if own and not os.path.exists(os.path.join(root, own)):
                fault = f"includes {own}, which is not a path from the root"
            else:
                fault = own_include_fault(path, own) if own else system_include_fault(path, system)
            if fault:
                yield number, fault
        if re.match(r"\s*#\s*(el)?if.*(__linux|__unix|__APPLE__|_WIN32|__MACH__|Q_OS_)", line):
            yield number, "tests for the operating system; the build selects a source instead"


def faults(root, path, known):
    with open(os.path.join(root, path), encoding="utf-8") as source:
        lines = source.read().splitlines()
    if not path.startswith(tuple(folder + "/" for folder in LAYERS)):
        yield 1, "is in a folder without a layer"
        return
    if len(lines) > LONGEST:
        yield 1, f"has {len(lines)} lines; no file has more than {LONGEST}"
    product = not path.startswith(("tests/", "bench/"))
    if product and path.endswith(".h") and depth(root, path, known) > DEEPEST:
        yield 1, f"includes headers in {depth(root, path, known)} layers; {DEEPEST} are the most"
    included = re.findall(r'^#include ["<]([^">]+)[">]', "\n".join(lines), re.MULTILINE)
    if path.endswith(".cpp") and own_header_is_late(path, included):
        yield 1, "does not include its own header first"
    yield from line_faults(root, path, lines)


def main(root):
    known = {}
    found = [f"{path}:{number}: {fault}" for path in sources(root)
             for number, fault in faults(root, path, known)]
    print("\n".join(found))
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
