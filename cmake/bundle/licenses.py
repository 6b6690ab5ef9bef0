"""The licences of what a bundle holds, and a list of the versions."""

import os
import re
import shutil
import subprocess

import elf

_COMMON = "/usr/share/common-licenses/"

# What programs of ours hold of other libraries: archives that are linked into them.
_ARCHIVES = ("libxcb.a", "libXau.a", "libXdmcp.a")
LINKED_IN = "linked into programs"


class Package:
    """A package of the distribution that has a file at this path."""

    def __init__(self, path):
        # The package may know the file by the folder's older name.
        for known in dict.fromkeys((path, os.path.realpath(path), path.removeprefix("/usr"),
                                    os.path.realpath(path).removeprefix("/usr"))):
            found = subprocess.run(["dpkg-query", "-S", known], check=False, encoding="utf-8",
                                   stdout=subprocess.PIPE, stderr=subprocess.DEVNULL).stdout
            if found:
                break
        else:
            raise RuntimeError(f"No package of this system has {path}")
        self.name = found.partition(": ")[0].partition(",")[0]
        self.version, self.source = elf.run(
            "dpkg-query", "-W", "-f", "${Version}|${source:Package}=${source:Version}",
            self.name).split("|")

    def plain_name(self):
        return self.name.partition(":")[0]


def write(origins, folder, archives=_ARCHIVES):
    """Writes the licences and `VERSIONS.txt` to a new folder. `origins`: {place of a file in the
    bundle: where this machine has the file that it was made of}. `archives`: what is linked into
    programs. Gives the packages."""
    os.makedirs(os.path.join(folder, "common"))
    packages, lines = {}, []
    for place, path in [*sorted(origins.items()),
                        *((f"{LINKED_IN}: {name}",
                           elf.run("cc", f"-print-file-name={name}").strip())
                          for name in archives)]:
        package = Package(path)
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
