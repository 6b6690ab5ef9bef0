"""Lets a bundle run with an older C library than the one that its libraries were built with.

A function that the C library got late may have been in another library for long. Where a bundle
holds that one, its libraries take the function from there; a C library that has it comes first all
the same."""

import os
import subprocess

import elf

# {version of the C library that is too new: (the function it brought, the library that has it)}
_ELSEWHERE = {"GLIBC_2.36": ("arc4random_buf", "libbsd.so.0")}


def ask_less(library, frameworks):
    """Changes a library in the folder `frameworks` so that it asks for no version that another
    library there makes up for."""
    for version in elf.versions_asked(library) & _ELSEWHERE.keys():
        function, other = _ELSEWHERE[version]
        asked = elf.symbols_asked(library, version)
        if asked == {function} and os.path.exists(os.path.join(frameworks, other)):
            subprocess.run(["patchelf", "--clear-symbol-version", function, "--add-needed", other,
                            library], check=True)
            elf.drop_version(library, version)
