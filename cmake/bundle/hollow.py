"""Hollow libraries: of the same name and with the same functions, each of which does nothing and
returns 0. One stands in for a library that is linked but of which this program uses nothing, and
which would bring many others with it. Where the program does use some of it, a source in the folder
stand_in with the library's name does these functions' work."""

import os
import re
import subprocess
import tempfile

import elf

_STAND_INS = os.path.join(os.path.dirname(os.path.abspath(__file__)), "stand_in")


def make(original, users, to):
    """Writes the hollow form of the library `original` for the files in `users` to `to`."""
    wanted = set().union(*(elf.asked(user) for user in users))
    symbols = {s.name: s for s in elf.offered(original) if (s.name, s.version) in wanted}
    with tempfile.TemporaryDirectory() as scratch:
        worked = _worked(os.path.basename(to), symbols, scratch)
        source = os.path.join(scratch, "hollow.c")
        with open(source, "w", encoding="ascii") as file:
            done = _functions_of(worked[0]) if worked else set()
            file.writelines(_definition(symbol) for symbol in symbols.values()
                            if symbol.name not in done)
        versions = os.path.join(scratch, "versions")
        with open(versions, "w", encoding="ascii") as file:
            file.write(_version_script(symbols.values()))
        script = [f"-Wl,--version-script={versions}"] if os.path.getsize(versions) else []
        subprocess.run(["cc", "-shared", "-nostdlib", "-Os", "-w", "-fno-builtin", "-fPIC", *script,
                        f"-Wl,-soname={elf.soname(original)}", source, *worked, "-o", to],
                       check=True)


def _worked(name, symbols, scratch):
    """What the linker needs of the functions that do something: a compiled file, if there is a
    source of the library's, and the C library."""
    source = os.path.join(_STAND_INS, name.partition(".so")[0] + ".c")
    if not os.path.exists(source):
        return []
    compiled = os.path.join(scratch, "worked.o")
    # The library's names end in its own version.
    names = [f"-D{plain}={symbol}" for symbol in symbols
             for plain in (re.sub(r"_\d+$", "", symbol),) if plain != symbol]
    subprocess.run(["cc", "-c", "-std=gnu17", "-D_GNU_SOURCE", "-O2", "-fPIC", "-Wall", "-Wextra",
                    "-Werror", *names, source, "-o", compiled], check=True)
    return [compiled, "-lc"]


def _functions_of(compiled):
    return {line.split()[-1]
            for line in elf.run("nm", "-g", "--defined-only", compiled).splitlines()}


def _definition(symbol):
    if symbol.is_data:
        return f"_Alignas(16) char {symbol.name}[{max(symbol.size, 1)}];\n"
    return f"long {symbol.name}(void) {{ return 0; }}\n"


def _version_script(symbols):
    blocks = {}
    for symbol in symbols:
        if symbol.version:
            blocks.setdefault(symbol.version, []).append(symbol.name)
    return "".join(f"{version} {{ global: {'; '.join(names)}; }};\n"
                   for version, names in blocks.items())
