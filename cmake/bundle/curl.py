"""The library of downloads, with HTTP and HTTPS alone.

The distribution's brings the clients of a dozen protocols, and twenty libraries for them. The same
source package, with the distribution's corrections, is built here without them: once for each
version, and kept in the user's cache folder."""

import glob
import hashlib
import os
import re
import shutil
import subprocess
import tempfile

import elf

NAME = "libcurl.so.4"
_PACKAGE = "libcurl4"
_OPTIONS = ("-DHTTP_ONLY=ON", "-DCURL_USE_OPENSSL=ON", "-DUSE_NGHTTP2=ON", "-DUSE_LIBIDN2=ON",
            "-DCURL_USE_LIBPSL=OFF", "-DCURL_USE_LIBSSH2=OFF", "-DCURL_ZLIB=OFF",
            "-DCURL_BROTLI=OFF", "-DCURL_ZSTD=OFF",
            # The installer names the store of certificates of the system that it runs on.
            "-DCURL_CA_BUNDLE=none", "-DCURL_CA_PATH=none",
            "-DBUILD_CURL_EXE=OFF", "-DBUILD_TESTING=OFF", "-DENABLE_MANUAL=OFF")
# The version of the symbols is the distribution's: programs were linked with its library.
_VERSIONS = "CURL_OPENSSL_4 { global: curl_*; local: *; };\n"


def library():
    """The path of the library. None, after a line that says why, if it can't be built here: the
    distribution's own does as well, but is larger."""
    try:
        version = elf.run("dpkg-query", "-W", "-f", "${Version}", _PACKAGE)
        with open(__file__, "rb") as file:
            recipe = hashlib.sha256(file.read()).hexdigest()[:8]
        cache = os.environ.get("XDG_CACHE_HOME") or os.path.expanduser("~/.cache")
        built = os.path.join(cache, "zephin-bundle",
                             f"curl-{version}-{os.uname().machine}-{recipe}")
        path = os.path.join(built, NAME)
        if not os.path.exists(path):
            print(f"Building {NAME} {version} with HTTP alone, which takes some minutes")
            os.makedirs(built, exist_ok=True)
            with tempfile.TemporaryDirectory() as scratch:
                os.rename(shutil.move(_build(version, scratch), path + ".new"), path)
        return path
    except (OSError, subprocess.CalledProcessError) as failure:
        print(f"{NAME} can't be built from its source package ({failure}).\n"
              "The bundle gets the distribution's, with all that it needs.")
        return None


def _build(version, scratch):
    """The library, built below the folder `scratch`."""
    source = _unpacked_source(version, scratch)
    versions = os.path.join(scratch, "versions")
    with open(versions, "w", encoding="ascii") as file:
        file.write(_VERSIONS)
    build = os.path.join(scratch, "build")
    # No path of this machine gets into the library.
    flags = f"-Os -fstack-protector-strong -D_FORTIFY_SOURCE=2 -ffile-prefix-map={scratch}=."
    _quietly("cmake", "-S", source, "-B", build, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=None",
             f"-DCMAKE_C_FLAGS={flags}", "-DCMAKE_SHARED_LINKER_FLAGS="
             f"-Wl,--version-script={versions},-z,relro,-z,now,--build-id=none", *_OPTIONS)
    _quietly("cmake", "--build", build)
    return os.path.realpath(os.path.join(build, "lib", NAME))


def _unpacked_source(version, scratch):
    """The folder with the package's source. Package lists of its own, so that those of the system
    stay as they are and no right to change them is needed."""
    parts, lists, archives = (os.path.join(scratch, name)
                              for name in ("parts", "lists", "archives"))
    for folder in (parts, os.path.join(lists, "partial"), os.path.join(archives, "partial")):
        os.makedirs(folder)
    for path in glob.glob("/etc/apt/sources.list") + glob.glob("/etc/apt/sources.list.d/*"):
        if path.endswith((".list", ".sources")):
            with open(path, encoding="utf-8") as file:
                told = re.sub(r"(?m)^(Types:).*$|^deb\b", lambda kind: (
                    "Types: deb-src" if kind[1] else "deb-src"), file.read())
            with open(os.path.join(parts, os.path.basename(path)), "w", encoding="utf-8") as file:
                file.write(told)
    apt = ("apt-get", "-q", "-o", "Dir::Etc::sourcelist=/dev/null",
           "-o", f"Dir::Etc::sourceparts={parts}", "-o", f"Dir::State::lists={lists}",
           "-o", f"Dir::Cache={archives}", "-o", "APT::Sandbox::User=root")
    _quietly(*apt, "update")
    _quietly(*apt, "source", "--download-only", f"curl={version}", cwd=scratch)
    description, = glob.glob(os.path.join(scratch, "*.dsc"))
    source = os.path.join(scratch, "source")
    _quietly("dpkg-source", "--no-check", "-x", description, source)
    return source


def _quietly(*command, cwd=None):
    """Runs a command, whose words are shown only where it fails."""
    done = subprocess.run(command, cwd=cwd, check=False, encoding="utf-8", errors="replace",
                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    if done.returncode:
        print(done.stdout[-3000:])
        raise subprocess.CalledProcessError(done.returncode, command[:2])
