"""What a program or library asks of others and offers them, as the binutils tell it."""

import functools
import re
import subprocess


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


def bytes_of(path, symbol):
    """The bytes of an object that the library offers by that name."""
    found = re.search(rf": ([0-9a-f]+)\s+(\S+) OBJECT .* {symbol}$",
                      run("readelf", "-W", "--dyn-syms", path), re.MULTILINE)
    address, size = int(found[1], 16), int(found[2], 0)
    for segment in re.findall(r"LOAD +(\S+) (\S+) \S+ (\S+)", run("readelf", "-W", "-l", path)):
        start, place, length = (int(number, 16) for number in segment)
        if place <= address < place + length:
            with open(path, "rb") as file:
                file.seek(start + address - place)
                return file.read(size)
    raise RuntimeError(f"{path} has no bytes for {symbol}")


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
