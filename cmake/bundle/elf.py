"""What a program or library asks of others and offers them, as the binutils tell it."""

import functools
import re
import subprocess
from typing import NamedTuple


class Symbol(NamedTuple):
    """A name that one file asks for and another offers."""

    name: str
    version: str  # Empty where the library gives none.
    is_data: bool
    size: int


def run(*command):
    """The output of a command. Raises CalledProcessError where it fails, its words on stderr."""
    return subprocess.run(command, check=True, stdout=subprocess.PIPE, encoding="utf-8").stdout


def is_elf(path):
    with open(path, "rb") as file:
        return file.read(4) == b"\x7fELF"


@functools.cache
def needed(path):
    """The names of the libraries that the loader shall find for this file."""
    return re.findall(r"\(NEEDED\).*\[(.+)\]", run("readelf", "-W", "-d", path))


def search_path(path):
    """(kind, folders) where the file has the loader look: kind is "RPATH" (before the user's
    LD_LIBRARY_PATH), "RUNPATH" (behind it) or None."""
    found = re.search(r"\((RPATH|RUNPATH)\).*\[(.*)\]", run("readelf", "-W", "-d", path))
    return (found[1], found[2].split(":")) if found else (None, [])


def _symbols(path, defined):
    for line in run("readelf", "-W", "--dyn-syms", path).splitlines():
        # Num: Value Size Type Bind Vis Ndx Name[@Version] [(number)]
        fields = line.split()
        if len(fields) < 8 or not fields[0].rstrip(":").isdigit():
            continue
        if (fields[6] != "UND") == defined and fields[6] != "ABS":
            name, _, version = fields[7].partition("@")
            yield Symbol(name, version.lstrip("@"), fields[3] == "OBJECT", int(fields[2], 0))


@functools.cache
def offered(path):
    return list(_symbols(path, True))


@functools.cache
def asked(path):
    """The (name, version) pairs that the file takes from others."""
    return {(symbol.name, symbol.version) for symbol in _symbols(path, False)}


def soname(path):
    return re.search(r"\(SONAME\).*\[(.+)\]", run("readelf", "-W", "-d", path))[1]


def versions_asked(path):
    """The names of the symbol versions that the file needs: "GLIBC_2.34", "GLIBCXX_3.4.30"."""
    told = run("readelf", "-W", "--version-info", path)
    return set(re.findall(r"Name: (\S+)\s+Flags", told.partition("Version needs section")[2]))


@functools.cache
def found_by_loader(path):
    """{name: path} of all libraries that this machine's loader takes for the file."""
    return dict(re.findall(r"^\s*(\S+) => (/.+) \(0x", run("ldd", path), re.MULTILINE))
