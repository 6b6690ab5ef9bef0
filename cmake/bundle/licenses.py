"""The licences of what a bundle holds, and a list of the versions."""

import dataclasses
import os
import re
import shutil
import subprocess

import elf

_COMMON = "/usr/share/common-licenses/"

# What programs of ours hold of other libraries: archives that are linked into them.
_ARCHIVES = ("libxcb.a", "libXau.a", "libXdmcp.a")
LINKED_IN = "linked into programs"


@dataclasses.dataclass
class Package:
    """A package of the distribution. `source`: "name=version" of its source package."""

    name: str
    version: str
    source: str

    def plain_name(self):
        return self.name.partition(":")[0]


def _names(path):
    """The path in all forms in which its package may know it: some know the folder's older name."""
    return dict.fromkeys((path, os.path.realpath(path), path.removeprefix("/usr"),
                          os.path.realpath(path).removeprefix("/usr")))


def packages_of(paths):
    """{path: the package that has a file there}. All are asked for at once, since each question
    takes as long as reading the whole list of packages."""
    told = subprocess.run(["dpkg-query", "-S", *(name for path in paths for name in _names(path))],
                          check=False, encoding="utf-8", stdout=subprocess.PIPE,
                          stderr=subprocess.DEVNULL).stdout
    owners = {}
    for line in told.splitlines():
        packages, _, place = line.partition(": ")
        owners[place] = packages.partition(",")[0]
    facts = {}
    for line in elf.run("dpkg-query", "-W", "-f", "${binary:Package}|${Version}|"
                        "${source:Package}=${source:Version}\n",
                        *sorted(set(owners.values()))).splitlines():
        package = Package(*line.split("|"))
        facts[package.name] = facts[package.plain_name()] = package
    found = {}
    for path in paths:
        owner = next((owners[name] for name in _names(path) if name in owners), None)
        if not owner:
            raise RuntimeError(f"No package of this system has {path}")
        found[path] = facts[owner]
    return found


def write(origins, folder, archives=_ARCHIVES):
    """Writes the licences and `VERSIONS.txt` to a new folder. `origins`: {place of a file in the
    bundle: where this machine has the file that it was made of}. `archives`: what is linked into
    programs. Gives the packages."""
    os.makedirs(os.path.join(folder, "common"))
    places = [*sorted(origins.items()),
              *((f"{LINKED_IN}: {name}", elf.run("cc", f"-print-file-name={name}").strip())
                for name in archives)]
    owners = packages_of([path for _, path in places])
    packages, lines = {}, []
    for place, path in places:
        package = owners[path]
        packages[package.name] = package
        lines.append(f"{place}\t{package.plain_name()} {package.version}\t"
                     f"apt-get source {package.source}\n")
    for package in packages.values():
        _copy_licence(package, folder)
    with open(os.path.join(folder, "VERSIONS.txt"), "w", encoding="utf-8") as file:
        file.write("What the bundle holds of others: the file, its package and version, and the "
                   "command\nthat gets the source from the distribution. The licence of a package "
                   "is in PACKAGE.txt.\n\n")
        file.writelines(lines)
    return list(packages.values())


def _copy_licence(package, folder):
    text = f"/usr/share/doc/{package.plain_name()}/copyright"
    shutil.copyfile(text, os.path.join(folder, f"{package.plain_name()}.txt"))
    with open(text, encoding="utf-8", errors="replace") as file:
        # A sentence may end behind the name.
        for name in set(re.findall(_COMMON + r"([A-Za-z0-9.+-]+[A-Za-z0-9+])", file.read())):
            if os.path.exists(_COMMON + name):
                shutil.copyfile(_COMMON + name, os.path.join(folder, "common", name))
