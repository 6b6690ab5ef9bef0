"""Gathers in a bundle what its programs need of this machine, so that they run on another.

Usage: gather.py BUNDLE QT_PLUGINS QT_TRANSLATIONS QT_TOOLS

The libraries come into Contents/Frameworks, plug-ins into a folder in it. They and the programs
find each other from where they lie, before whatever the user's own settings name. From the user's
system come the C library, which fits the system's kernel, names and users, and the libraries of the
compiler, which every desktop has: these only ever grow, while a copy of them could be older than
what a library of the system wants that is loaded beside it.
"""

import glob
import os
import shutil
import subprocess
import sys
import tempfile

import c_library
import curl
import elf
import icu
import licenses
import translations

FROM_SYSTEM = {"libc.so.6", "libm.so.6", "libdl.so.2", "libpthread.so.0", "librt.so.1",
               "libresolv.so.2", "ld-linux-x86-64.so.2", "ld-linux-aarch64.so.1",
               "libgcc_s.so.1", "libstdc++.so.6"}

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


def closure(roots, instead):
    """{name: path} of the libraries that the roots need, directly or not, but for the system's own.
    `instead`: {name: path} of libraries that take the place of this machine's."""
    found = {}
    waiting = [(root, root) for root in roots]
    while waiting:
        file, root = waiting.pop()
        places = {**elf.found_by_loader(file), **elf.found_by_loader(root), **instead}
        for name in elf.needed(file):
            if name in FROM_SYSTEM or name in found:
                continue
            if name not in places:
                raise RuntimeError(f"{file}: this machine has no {name}")
            found[name] = os.path.realpath(places[name])
            waiting.append((found[name], root))
    return found


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


def check_tools(qt_tools):
    if not os.path.exists(FONT):
        sys.exit(f"{FONT} (of Debian's package fonts-dejavu-core) is not there.")
    for tool, package in (("patchelf", "patchelf"), ("cc", "gcc"), ("strip", "binutils"),
                          ("icupkg", "icu-devtools"), ("genccode", "icu-devtools"),
                          (os.path.join(qt_tools, "lconvert"), "qt6-l10n-tools"),
                          ("dpkg-query", "dpkg")):
        if not shutil.which(tool, path=os.environ["PATH"] + ":/usr/sbin"):
            sys.exit(f"{tool} (of Debian's package {package}) is not there. Without it, configure "
                     "with -DZEPHIN_BUNDLE_LIBRARIES=OFF; the bundle then runs on this machine.")
    # Debian has two of the tools where only root looks.
    os.environ["PATH"] += ":/usr/sbin"


def place_libraries(programs, plugins, frameworks):
    """Copies the libraries. Gives {path in the bundle: where this machine has what it was made of}.
    """
    slim = curl.library()
    found = closure([*programs, *plugins], {curl.NAME: slim} if slim else {})
    origins = {}
    for name, path in found.items():
        to = os.path.join(frameworks, name)
        if icu.is_data(name):
            with tempfile.TemporaryDirectory() as scratch:
                icu.make(path, to, scratch)
        else:
            shutil.copyfile(path, to)
        # The licence and the source of what was built here are those of the machine's own.
        origins[to] = elf.found_by_loader(programs[0])[name] if path == slim else path
    return origins


def place_translations(folder, qt_translations, qt_tools):
    """Writes the toolkit's translations. Gives the same as place_libraries."""
    os.mkdir(folder)
    origins = {}
    for path in glob.glob(os.path.join(qt_translations, "qtbase_*.qm")):
        to = os.path.join(folder, os.path.basename(path))
        translations.make(path, to, qt_tools)
        origins[to] = path
    return origins


def print_table(bundle):
    """Prints what the bundle holds, with its size."""
    sizes = {}
    for folder, _, names in os.walk(bundle):
        for name in names:
            path = os.path.join(folder, name)
            place = os.path.relpath(path, os.path.join(bundle, "Contents"))
            # Libraries one by one, the small things by their folder.
            line = place if "/" in place and place.count("/") == 1 else os.path.dirname(place)
            sizes[line] = sizes.get(line, 0) + os.lstat(path).st_size
    for line, size in sorted(sizes.items(), key=lambda each: -each[1]):
        print(f"{size:12,}  {line}")
    print(f"{sum(sizes.values()):12,}  {os.path.basename(bundle)}")


def warn_of_updates(packages):
    """Says which of the packages could be newer, as far as this system's lists of packages know."""
    told = subprocess.run(["apt-get", "-q", "-s", "install", "--only-upgrade",
                           *(package.name for package in packages)], check=False, encoding="utf-8",
                          stdout=subprocess.PIPE, stderr=subprocess.DEVNULL).stdout
    names = {package.plain_name() for package in packages}
    newer = [line.split()[1] for line in told.splitlines() if line.startswith("Inst ")]
    if names & set(newer):
        print("Warning: updates are offered for", *sorted(names & set(newer)))


def main(bundle, qt_plugins, qt_translations, qt_tools):
    check_tools(qt_tools)
    frameworks = os.path.join(bundle, "Contents", "Frameworks")
    shutil.rmtree(frameworks, ignore_errors=True)
    os.makedirs(os.path.join(frameworks, "fonts"))
    programs = list(programs_in(bundle))
    plugins = {name: os.path.join(qt_plugins, name) for name in PLUGINS}
    origins = place_libraries(programs, list(plugins.values()), frameworks)
    for name, path in plugins.items():
        to = os.path.join(frameworks, "plugins", name)
        os.makedirs(os.path.dirname(to), exist_ok=True)
        shutil.copyfile(path, to)
        origins[to] = path
    for path in origins:
        strip(path)
        c_library.ask_less(path, frameworks)
    for program in programs:
        strip(program)
        look_in(frameworks, program)
    font = shutil.copy(FONT, os.path.join(frameworks, "fonts"))
    origins.update({font: FONT}, **place_translations(os.path.join(frameworks, "translations"),
                                                      qt_translations, qt_tools))
    texts = os.path.join(bundle, "Contents", "Resources", "Licenses")
    shutil.rmtree(texts, ignore_errors=True)
    packages = licenses.write({os.path.relpath(path, bundle): origin
                               for path, origin in origins.items()}, texts)
    print_table(bundle)
    warn_of_updates(packages)


if __name__ == "__main__":
    main(*sys.argv[1:])
