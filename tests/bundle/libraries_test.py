"""The libraries that a bundle takes from the user's system, and its size.

libraries_test.py BUNDLE
"""

import os
import re
import subprocess
import sys
import tempfile
import unittest

_SOURCE = os.environ.get("ZEPHIN_SOURCE", os.path.join(os.path.dirname(__file__), "..", ".."))
sys.path.insert(0, os.path.join(_SOURCE, "cmake", "bundle"))

import elf  # noqa: E402

BUNDLE = sys.argv.pop()
FRAMEWORKS = os.path.join(BUNDLE, "Contents", "Frameworks")

# Every desktop has these: the C library, the loader and the libraries of the compiler. Window
# systems and browsers need them as well.
ALLOWED = {"libc.so.6", "libm.so.6", "libdl.so.2", "libpthread.so.0", "librt.so.1",
           "libresolv.so.2", "ld-linux-x86-64.so.2", "ld-linux-aarch64.so.1",
           "libgcc_s.so.1", "libstdc++.so.6"}

# The oldest system that it would run on: these versions are in Ubuntu 22.04.
NEWEST = {"GLIBC": (2, 35), "GLIBCXX": (3, 4, 30), "CXXABI": (1, 3, 13), "GCC": (12, 0, 0)}

MOST_BYTES = 60_000_000

# Links to all that the program may reach from the start, then read-only; a stack that can't be run.
HARDENED = {"BIND_NOW", "GNU_RELRO", "PIE"}


def programs_and_libraries():
    for folder, _, names in os.walk(BUNDLE):
        for path in (os.path.join(folder, name) for name in names):
            if elf.is_elf(path):
                yield path


def write_older_c_library(folder):
    """Writes a copy of this system's C library that offers nothing newer than the oldest has."""
    path = elf.found_by_loader(sys.executable)["libc.so.6"]
    with open(path, "rb") as file:
        content = file.read()
    for name, version in re.findall(r" (\w+)@@?(GLIBC_2\.\d+)", elf.run(
            "readelf", "-W", "--dyn-syms", path)):
        if tuple(map(int, version.partition("_")[2].split("."))) > NEWEST["GLIBC"]:
            # Another first letter: the rest of a name may also be a name by itself.
            for word in (name.encode(), version.encode()):
                content = content.replace(b"\0" + word + b"\0", b"\0X" + word[1:] + b"\0")
    copy = os.path.join(folder, "libc.so.6")
    with open(copy, "wb") as file:
        file.write(content)
    os.chmod(copy, 0o755)


class Libraries(unittest.TestCase):
    def test_only_common_libraries_come_from_the_system(self):
        taken = {name for path in programs_and_libraries() for name in elf.needed(path)
                 if not os.path.exists(os.path.join(FRAMEWORKS, name))}
        print("From the system:", *sorted(taken))
        self.assertLessEqual(taken, ALLOWED)

    def test_libraries_are_found_relative_to_the_program(self):
        for path in programs_and_libraries():
            folder = os.path.basename(os.path.dirname(path))
            # The search path of a library would replace that of its program.
            expected = (("RPATH", ["$ORIGIN/../Frameworks"]) if folder in ("MacOS", "Helpers")
                        else (None, []))
            self.assertEqual(elf.search_path(path), expected, path)

    def test_versions_are_no_newer_than_the_oldest_system_has(self):
        found = set()
        for path in programs_and_libraries():
            for version in elf.versions_asked(path):
                family, _, number = version.partition("_")
                if family in NEWEST and number[:1].isdigit():
                    found.add(family)
                    self.assertLessEqual(tuple(map(int, number.split("."))), NEWEST[family], path)
        self.assertIn("GLIBC", found)

    def test_nothing_is_asked_for_that_nobody_offers(self):
        # A symbol that is missing in a library that was built or changed here would end the program
        # when it is first used.
        loader = elf.run("patchelf", "--print-interpreter", next(programs_and_libraries())).strip()
        with tempfile.TemporaryDirectory() as older:
            write_older_c_library(older)
            for path in programs_and_libraries():
                report = subprocess.run(
                    [loader, "--library-path", f"{older}:{FRAMEWORKS}", path], check=True,
                    env={**os.environ, "LD_TRACE_LOADED_OBJECTS": "1", "LD_WARN": "1",
                         "LD_BIND_NOW": "1"},
                    encoding="utf-8", stdout=subprocess.PIPE, stderr=subprocess.STDOUT).stdout
                self.assertTrue(older in report or not elf.needed(path), report)
                # This system's own library was built with its own C library.
                of_bundle = "".join(line for line in report.splitlines(keepends=True)
                                    if "libstdc++.so.6: version" not in line
                                    and "libstdc++.so.6)" not in line)
                self.assertNotRegex(of_bundle, "not found|undefined symbol|not defined", path)

    def test_all_that_is_of_others_has_a_version_and_a_licence(self):
        texts = os.path.join(BUNDLE, "Contents", "Resources", "Licenses")
        with open(os.path.join(texts, "VERSIONS.txt"), encoding="utf-8") as file:
            lines = dict(line.split("\t", 1) for line in file if "\t" in line)
        others = {os.path.relpath(os.path.join(folder, name), BUNDLE)
                  for folder, _, names in os.walk(FRAMEWORKS) for name in names}
        self.assertEqual({place for place in lines if not place.startswith("linked into")}, others)
        self.assertGreater(len(lines), len(others), "nothing is linked into a program")
        for place, line in lines.items():
            package, source = line.split("\t")
            self.assertRegex(source, "^apt-get source [a-z0-9.+-]+=", place)
            with open(os.path.join(texts, package.split()[0] + ".txt"), encoding="utf-8") as file:
                self.assertIn("opyright", file.read(), place)
        with open(os.path.join(texts, "common", "LGPL-3"), encoding="utf-8") as file:
            self.assertIn("LESSER GENERAL PUBLIC LICENSE", file.read())

    def test_all_are_hardened(self):
        fortified = set()
        for path in programs_and_libraries():
            facts = elf.run("readelf", "-W", "-l", "-d", path)
            self.assertRegex(facts, "GNU_STACK .* RW ", path)
            found = {fact for fact in HARDENED if fact in facts}
            if os.path.basename(os.path.dirname(path)) in ("MacOS", "Helpers"):
                self.assertEqual(found, HARDENED, path)
                guards = elf.run("readelf", "-W", "-s", path)
                self.assertIn("__stack_chk_fail", guards, path)
                # Only programs that have buffers of a fixed size call checked functions.
                if re.search(r"__(?!stack)\w+_chk\b", guards):
                    fortified.add(os.path.basename(path))
            else:
                self.assertIn("GNU_RELRO", found, path)
        self.assertIn("Setup", fortified)

    def test_no_file_tells_where_it_was_built(self):
        place = os.path.realpath(_SOURCE).encode()
        for path in programs_and_libraries():
            with open(path, "rb") as file:
                self.assertNotIn(place, file.read(), path)

    def test_size(self):
        size = sum(os.lstat(os.path.join(folder, name)).st_size
                   for folder, _, names in os.walk(BUNDLE) for name in names)
        print(f"{size:,} bytes")
        self.assertLessEqual(size, MOST_BYTES)


if __name__ == "__main__":
    unittest.main(verbosity=2)
