"""What a program or library asks of others and offers them, as the binutils tell it."""

import functools
import re
import struct
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


def symbols_asked(path, version):
    """The names of what the file needs of that version."""
    return set(re.findall(rf" UND (\S+)@{re.escape(version)} ",
                          run("readelf", "-W", "--dyn-syms", path)))


def drop_version(path, version):
    """Takes a symbol version that no symbol has any more out of what the file needs."""
    told = run("readelf", "-W", "--version-info", path).partition("Version needs section")[2]
    start = int(re.search(r"Offset: (0x[0-9a-f]+)", told)[1], 16)
    # A record for each library, each with a list of versions behind it. The first of the list is
    # found from the library's record (its third field), the others from the one before.
    record = before = None
    for place, kind, name in re.findall(r"^ +(?:0x)?([0-9a-f]+): .*?(File|Name): (\S+)", told,
                                        re.MULTILINE):
        place = start + int(place, 16)
        if kind == "File":
            record, before = place, None
        elif name == version:
            break
        else:
            before = place
    else:
        raise RuntimeError(f"{path} doesn't need {version}")
    with open(path, "r+b") as file:
        content = bytearray(file.read())
        count, = struct.unpack_from("<H", content, record + 2)
        following, = struct.unpack_from("<I", content, place + 12)
        link = record + 8 if before is None else before + 12
        way, = struct.unpack_from("<I", content, link)
        struct.pack_into("<H", content, record + 2, count - 1)
        struct.pack_into("<I", content, link, way + following if following else 0)
        file.seek(0)
        file.write(content)


@functools.cache
def found_by_loader(path):
    """{name: path} of all libraries that this machine's loader takes for the file."""
    return dict(re.findall(r"^\s*(\S+) => (/.+) \(0x", run("ldd", path), re.MULTILINE))
