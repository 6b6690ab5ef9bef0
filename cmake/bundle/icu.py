"""The data of the Unicode library without what this program never asks for.

The library's code is taken as it is. Its data are 31 MB, most of them names of languages, zones and
currencies, rules of spelling and line breaks, and tables of old encodings. The installer only sorts
names, in the order of the user's language, and asks for properties of letters."""

import os
import re
import subprocess

import elf

# The order of names in all languages; what finds a language's own; forms and kinds of letters.
_KEPT = re.compile(r"coll/.*"
                   r"|(root|pool|res_index|icuver|icustd|supplementalData|likelySubtags|keyTypeData"
                   r"|numberingSystems|metadata|timezoneTypes)\.res"
                   r"|cnvalias\.icu|ulayout\.icu|nfkc\.nrm|nfkc_cf\.nrm|uts46\.nrm")


def is_data(name):
    return name.startswith("libicudata.so.")


def make(original, to, scratch):
    """Writes the library of data `original`, with less in it, to `to`. `scratch`: an empty folder.
    """
    version = original.rpartition(".so.")[2].partition(".")[0]
    symbol = f"icudt{version}_dat"
    # The package's name is a part of each entry's, and "l" says that the low byte comes first.
    whole, cut = (os.path.join(scratch, folder, f"icudt{version}l.dat")
                  for folder in ("whole", "cut"))
    for path in (whole, cut):
        os.mkdir(os.path.dirname(path))
    with open(whole, "wb") as file:
        file.write(elf.bytes_of(original, symbol))
    entries = elf.run("icupkg", "-l", whole).split()
    removed = os.path.join(scratch, "removed.txt")
    with open(removed, "w", encoding="ascii") as file:
        file.writelines(f"{entry}\n" for entry in entries if not _KEPT.fullmatch(entry))
    subprocess.run(["icupkg", "-r", removed, whole, cut], check=True)
    subprocess.run(["genccode", "-q", "-a", "gcc", "-e", f"icudt{version}", "-d", scratch, cut],
                   check=True)
    source = os.path.join(scratch, f"icudt{version}l_dat.S")
    subprocess.run(["cc", "-shared", "-nostdlib", f"-Wl,-soname,{elf.soname(original)}",
                    "-Wl,-z,noexecstack,-z,relro,-z,now", source, "-o", to], check=True)
