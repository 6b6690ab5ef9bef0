"""Hollow libraries: of the same name and with the same functions, each of which does nothing and
returns 0. One stands in for a library that is linked but of which this program uses nothing, and
which would bring many others with it."""

import os
import subprocess
import tempfile

import elf


def make(original, users, to):
    """Writes the hollow form of the library `original` for the files in `users` to `to`."""
    wanted = set().union(*(elf.asked(user) for user in users))
    symbols = {s.name: s for s in elf.offered(original) if (s.name, s.version) in wanted}
    with tempfile.TemporaryDirectory() as scratch:
        source = os.path.join(scratch, "hollow.c")
        with open(source, "w", encoding="ascii") as file:
            file.writelines(_definition(symbol) for symbol in symbols.values())
        versions = os.path.join(scratch, "versions")
        with open(versions, "w", encoding="ascii") as file:
            file.write(_version_script(symbols.values()))
        script = [f"-Wl,--version-script={versions}"] if os.path.getsize(versions) else []
        subprocess.run(["cc", "-shared", "-nostdlib", "-Os", "-w", "-fno-builtin", "-fPIC", *script,
                        f"-Wl,-soname={elf.soname(original)}", source, "-o", to], check=True)


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
