"""The Unicode library's data without what a small program in one window never asks for: 1 MB or two
in place of 30."""

import os
import re
import shutil
import subprocess
import tempfile

import elf

# What the toolkit asks for: the order of names in the folder dialog in the user's language. It has
# everything else (case, breaks of lines, forms of numbers and dates, the encodings in use) in itself;
# a name that it wants of a zone of time is then the system's short one.
_KEPT = re.compile(r"""
    coll/.*                                 # the order of names
    | (root|pool|res_index)\.res            # where the search for a language begins and ends
    | (supplementalData|likelySubtags)\.res # which language stands in for another
    | (ucase|uprops|ubidi|nfc|nfkc)\..*     # letters
""", re.VERBOSE)

# Ten thousands of ideographs each; without them they are in the order of their radicals.
_DROPPED = re.compile(r"coll/(zh|yue|ko|ja)(_.*)?\.res")

# A user's search path may lack the folder that it is in.
TOOL = shutil.which("icupkg") or "/usr/sbin/icupkg"


def make(original, to):
    """Writes the library of data `original` with only the needed part to `to`."""
    data = next(s for s in elf.offered(original) if re.fullmatch(r"icudt\d+_dat", s.name))
    with tempfile.TemporaryDirectory() as scratch:
        whole = os.path.join(scratch, data.name.replace("_dat", "l") + ".dat")
        _cut_out(original, data, whole)
        listed = elf.run(TOOL, "-l", whole).split()
        dropped = os.path.join(scratch, "dropped.txt")
        with open(dropped, "w", encoding="ascii") as file:
            file.writelines(f"{name}\n" for name in listed
                            if not _KEPT.fullmatch(name) or _DROPPED.fullmatch(name))
        # By the file's name the tool names what is in it, and the library looks for that name.
        small = os.path.join(scratch, "small", os.path.basename(whole))
        os.mkdir(os.path.dirname(small))
        subprocess.run([TOOL, "-r", dropped, whole, small], check=True)
        source = os.path.join(scratch, "data.S")
        with open(source, "w", encoding="ascii") as file:
            file.write(f'.section .rodata\n.balign 16\n.globl {data.name}\n'
                       f'.type {data.name}, %object\n{data.name}: .incbin "{small}"\n'
                       f'.size {data.name}, . - {data.name}\n'
                       '.section .note.GNU-stack,"",%progbits\n')
        subprocess.run(["cc", "-shared", "-nostdlib", f"-Wl,-soname={elf.soname(original)}", source,
                        "-o", to], check=True)


def _cut_out(library, data, to):
    """Copies the bytes of a symbol out of a library."""
    address = next(int(line.split()[1], 16)
                   for line in elf.run("readelf", "-W", "--dyn-syms", library).splitlines()
                   if f" {data.name}" in line)
    for line in elf.run("readelf", "-W", "-l", library).splitlines():
        # LOAD offset address physical file-size memory-size flags align
        fields = line.split()
        if fields and fields[0] == "LOAD":
            offset, start, size = int(fields[1], 16), int(fields[2], 16), int(fields[4], 16)
            if start <= address < start + size:
                with open(library, "rb") as file, open(to, "wb") as out:
                    file.seek(address - start + offset)
                    out.write(file.read(data.size))
                return
    raise RuntimeError(f"{library}: no segment holds {data.name}")
