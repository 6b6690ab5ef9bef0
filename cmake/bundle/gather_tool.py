"""Places a program where publishers start it, with the libraries that it needs and their licences.

Usage: gather_tool.py PROGRAM FOLDER

Writes FOLDER/PROGRAM, its libraries to FOLDER/lib and their licences to FOLDER/licenses. All
of them are the distribution's own.
"""

import os
import shutil
import sys

import gather
import licenses

# Libraries that are compiled into the program: no loader finds them.
_HEADERS = ("/usr/include/nlohmann/json.hpp",)


def main(program, folder):
    libraries = os.path.join(folder, "lib")
    os.makedirs(libraries)
    placed = os.path.join(folder, os.path.basename(program))
    shutil.copyfile(program, placed)
    found = gather.closure([program], {})
    for name, path in found.items():
        shutil.copyfile(path, os.path.join(libraries, name))
        gather.strip(os.path.join(libraries, name))
    gather.strip(placed)
    gather.look_in(libraries, placed)
    licenses.write({**{os.path.join("lib", name): path for name, path in found.items()},
                    **{f"compiled into {os.path.basename(program)}: {os.path.basename(path)}": path
                       for path in _HEADERS}}, os.path.join(folder, "licenses"), archives=())


if __name__ == "__main__":
    main(*sys.argv[1:])
