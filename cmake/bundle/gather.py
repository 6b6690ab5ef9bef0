"""Gathers in a bundle what its programs need of this machine, so that they run on another.

Usage: gather.py BUNDLE QT_PLUGINS

The libraries come into Contents/Frameworks, plug-ins into a folder in it. They and the programs
find each other from where they lie, before whatever the user's own settings name. From the user's
system come the C library, which fits the system's kernel, names and users, and the libraries of the
compiler, which every desktop has: these only ever grow, while a copy of them could be older than
what a library of the system wants that is loaded beside it.
"""

import os
import shutil
import subprocess
import sys

import elf
import hollow

FROM_SYSTEM = {"libc.so.6", "libm.so.6", "libdl.so.2", "libpthread.so.0", "librt.so.1",
               "libresolv.so.2", "ld-linux-x86-64.so.2", "ld-linux-aarch64.so.1",
               "libgcc_s.so.1", "libstdc++.so.6"}

# Linked, but never used here: OpenGL by windows that are drawn without it; by downloads over HTTP
# the other protocols, the proof of identity by Kerberos and the suffixes for cookies; by a client
# of a message bus the library of services; a kind of checksum; a kind of compression for data that
# the toolkit and servers could hold. Of the Unicode library's 35 MB only the order of names in the
# folder dialog is used, and of the library of international domain names one function: for both a
# few lines stand in.
NEVER_USED = {"libEGL.so.1", "libOpenGL.so.0", "libGLX.so.0",
              "libldap-2.5.so.0", "liblber-2.5.so.0", "librtmp.so.1", "libssh2.so.1",
              "libgssapi_krb5.so.2", "libpsl.so.5",
              "libsystemd.so.0",
              "libb2.so.1",
              "libzstd.so.1",
              "libidn2.so.0",
              "libicui18n.so.72", "libicuuc.so.72"}

# The display, and letters that take several keys.
PLUGINS = ("platforms/libqxcb.so",
           "platforminputcontexts/libcomposeplatforminputcontextplugin.so",
           "platforminputcontexts/libibusplatforminputcontextplugin.so")

# For a system that has no font at all.
FONT = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf"


def programs_in(bundle):
    for folder in ("MacOS", "Helpers"):
        for name in sorted(os.listdir(os.path.join(bundle, "Contents", folder))):
            path = os.path.join(bundle, "Contents", folder, name)
            if elf.is_elf(path):
                yield path


def closure(roots):
    """{name: path} of the libraries that the roots need, directly or not, but for the system's own,
    and {name: path} of those that shall be hollow."""
    whole, empty = {}, {}
    waiting = [(root, root) for root in roots]
    while waiting:
        file, root = waiting.pop()
        places = elf.found_by_loader(root)
        for name in elf.needed(file):
            if name in FROM_SYSTEM or name in whole or name in empty:
                continue
            if name not in places:
                raise RuntimeError(f"{file}: this machine has no {name}")
            path = os.path.realpath(places[name])
            (empty if name in NEVER_USED else whole)[name] = path
            if name not in NEVER_USED:
                waiting.append((path, root))
    return whole, empty


def strip(path):
    """Takes out what only a debugger reads."""
    os.chmod(path, 0o755)
    subprocess.run(["strip", "--strip-unneeded", "--remove-section=.comment", path], check=True)


def look_in(frameworks, program):
    """Has the loader look there for what the program needs, and for what its libraries and plug-ins
    need: the older kind of entry counts for all of these, and comes before LD_LIBRARY_PATH."""
    way = os.path.relpath(frameworks, os.path.dirname(program))
    subprocess.run(["patchelf", "--force-rpath", "--set-rpath", f"$ORIGIN/{way}", program],
                   check=True)


def check_tools():
    if not os.path.exists(FONT):
        sys.exit(f"{FONT} (of Debian's package fonts-dejavu-core) is not there.")
    for tool, package in (("patchelf", "patchelf"), ("cc", "gcc"), ("strip", "binutils")):
        if not shutil.which(tool):
            sys.exit(f"{tool} (of Debian's package {package}) is not there. Without it, configure "
                     "with -DZEPHIN_BUNDLE_LIBRARIES=OFF; the bundle then runs on this machine.")


def main(bundle, qt_plugins):
    check_tools()
    frameworks = os.path.join(bundle, "Contents", "Frameworks")
    shutil.rmtree(frameworks, ignore_errors=True)
    os.makedirs(frameworks)
    programs = list(programs_in(bundle))
    plugins = {name: os.path.join(qt_plugins, name) for name in PLUGINS}
    whole, empty = closure(programs + list(plugins.values()))
    for name, path in whole.items():
        shutil.copyfile(path, os.path.join(frameworks, name))
    for name, path in empty.items():
        hollow.make(path, [*whole.values(), *programs], os.path.join(frameworks, name))
    for name, path in plugins.items():
        to = os.path.join(frameworks, "plugins", name)
        os.makedirs(os.path.dirname(to), exist_ok=True)
        shutil.copyfile(path, to)
    for folder, _, names in os.walk(frameworks):
        for name in names:
            strip(os.path.join(folder, name))
    for program in programs:
        strip(program)
        look_in(frameworks, program)
    os.mkdir(os.path.join(frameworks, "fonts"))
    shutil.copy(FONT, os.path.join(frameworks, "fonts"))


if __name__ == "__main__":
    main(*sys.argv[1:])
