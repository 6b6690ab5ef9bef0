"""Makes the archives that bench/expand expands. A fixed seed gives the same bytes on every machine.

Each payload is NAME.zip with NAME.json beside it, which lists the expected contents: for every path
its kind, mode, time and the SHA-256 of its bytes or the target of a link. NAME.plain has the bytes
of a payload that is one file.
"""

import hashlib
import json
import pathlib
import random
import stat
import struct
import zipfile

SEED = 20240309
TIME = 1709985600  # 2024-03-09, 12:00 UTC
MEGABYTE = 1_000_000


def text_pool(rng, size):
    """Text like source code: words of a small language, indentation, lines."""
    words = ["".join(rng.choices("etaoinshrdlucmfwypvbgkqjxz", k=rng.randint(2, 11)))
             for _ in range(1500)]
    weights = [1 / (i + 3) for i in range(len(words))]
    lines = []
    total = 0
    while total < size:
        indent = " " * rng.choice((0, 2, 4, 4, 8))
        line = indent + " ".join(rng.choices(words, weights, k=rng.randint(1, 12))) + ";\n"
        lines.append(line)
        total += len(line)
    return "".join(lines).encode()[:size]


def program_pool(rng, size):
    """Bytes like machine code: records of a few kinds with some bytes that differ."""
    kinds = [rng.randbytes(rng.randint(3, 14)) for _ in range(700)]
    weights = [1 / (i + 5) for i in range(len(kinds))]
    parts = []
    total = 0
    while total < size:
        part = b"".join(rng.choices(kinds, weights, k=8)) + rng.randbytes(rng.randint(2, 12))
        parts.append(part)
        total += len(part)
    return b"".join(parts)[:size]


def log_pool(rng, size):
    """Lines that repeat except for a few digits; compresses to about an eighth."""
    forms = [text_pool(rng, rng.randint(60, 140)).replace(b"\n", b" ") for _ in range(60)]
    lines = []
    total = 0
    while total < size:
        line = b"%s %d %010x\n" % (rng.choice(forms), rng.randint(0, 99999), rng.getrandbits(40))
        lines.append(line)
        total += len(line)
    return b"".join(lines)[:size]


class Payload:
    """Writes one archive and the list of its contents."""

    def __init__(self, folder, name):
        self.folder = folder
        self.name = name
        self.zip = zipfile.ZipFile(folder / f"{name}.part", "w", zipfile.ZIP_DEFLATED)
        self.items = {}

    def add(self, path, mode, data, method=zipfile.ZIP_DEFLATED, seconds=TIME):
        """`data` of a folder is empty, of a link its target."""
        name = path + "/" if stat.S_ISDIR(mode) else path
        info = zipfile.ZipInfo(name, (2024, 3, 9, 12, 0, 0))
        info.create_system = 3
        info.external_attr = mode << 16 | (0x10 if stat.S_ISDIR(mode) else 0)
        info.extra = struct.pack("<HHBi", 0x5455, 5, 1, seconds)
        info.compress_type = method if stat.S_ISREG(mode) else zipfile.ZIP_STORED
        self.zip.writestr(info, data)
        item = {"mode": mode, "time": seconds}
        if stat.S_ISLNK(mode):
            item["target"] = data.decode()
        elif stat.S_ISREG(mode):
            item["sha256"] = hashlib.sha256(data).hexdigest()
        self.items[path] = item

    def close(self):
        self.zip.close()
        (self.folder / f"{self.name}.json").write_text(json.dumps(self.items))
        (self.folder / f"{self.name}.part").rename(self.folder / f"{self.name}.zip")


def make_tree(folder, name, sizes, folders):
    rng = random.Random(f"{SEED} {name}")
    pools = [text_pool(rng, 8 * MEGABYTE), program_pool(rng, 16 * MEGABYTE)]
    payload = Payload(folder, name)
    paths = ["Tool"]
    parents = ["Tool"]
    for i in range(folders):
        path = f"{rng.choice(parents)}/folder{i}"
        paths.append(path)
        if path.count("/") < 6:
            parents.append(path)
    # In the order of a program that walks a tree.
    paths.sort(key=lambda path: path.split("/"))
    homes = sorted(rng.randrange(len(paths)) for _ in sizes)
    started = 0
    for i, (size, home) in enumerate(zip(sizes, homes)):
        while started <= home:
            payload.add(paths[started], stat.S_IFDIR | 0o755, b"")
            started += 1
        kind = rng.random()
        if kind < 0.85:
            pool = pools[0 if kind < 0.5 else 1]
            parts = []
            left = size
            while left > 0:
                start = rng.randrange(len(pool))
                parts.append(pool[start:start + left])
                left -= len(parts[-1])
            data = b"".join(parts)
        else:
            data = rng.randbytes(size)
        mode = stat.S_IFREG | (0o755 if i % 9 == 0 else 0o644)
        payload.add(f"{paths[home]}/file{i}.bin", mode, data, seconds=TIME + i)
        if i % 250 == 0:
            payload.add(f"{paths[home]}/link{i}", stat.S_IFLNK | 0o777, f"file{i}.bin".encode())
    for path in paths[started:]:
        payload.add(path, stat.S_IFDIR | 0o755, b"")
    payload.close()


def scaled(sizes, total):
    factor = total / sum(sizes)
    return [int(size * factor) for size in sizes]


def make_application(folder, name):
    """280 MB in 5,000 files: a few large libraries, many small files."""
    rng = random.Random(f"{SEED} {name} sizes")
    small = [min(int(rng.lognormvariate(9.2, 1.7)), 8 * MEGABYTE) for _ in range(4990)]
    large = [24 * MEGABYTE, 14 * MEGABYTE, 9 * MEGABYTE] + [4 * MEGABYTE] * 7
    sizes = scaled(small, 280 * MEGABYTE - sum(large)) + large
    rng.shuffle(sizes)
    make_tree(folder, name, sizes, 450)


def make_crumbs(folder, name):
    """56 MB in 22,000 files."""
    rng = random.Random(f"{SEED} {name} sizes")
    sizes = scaled([int(rng.lognormvariate(7.2, 1.1)) for _ in range(22000)], 56 * MEGABYTE)
    make_tree(folder, name, sizes, 1800)


def make_single(folder, name, data, method):
    payload = Payload(folder, name)
    payload.add("file.bin", stat.S_IFREG | 0o644, data, method)
    (folder / f"{name}.plain").write_bytes(data)
    payload.close()


def noise(name):
    rng = random.Random(f"{SEED} {name}")
    return b"".join(rng.randbytes(MEGABYTE) for _ in range(500))


def make_stored(folder, name):
    make_single(folder, name, noise(name), zipfile.ZIP_STORED)


def make_random(folder, name):
    make_single(folder, name, noise(name), zipfile.ZIP_DEFLATED)


def make_eighth(folder, name):
    pool = log_pool(random.Random(f"{SEED} {name}"), 25 * MEGABYTE)
    make_single(folder, name, pool * 20, zipfile.ZIP_DEFLATED)


MAKERS = {
    "application": make_application,
    "crumbs": make_crumbs,
    "stored": make_stored,
    "random": make_random,
    "eighth": make_eighth,
}


def make(folder, name):
    """Makes the payload unless it exists. Returns its archive's path."""
    folder = pathlib.Path(folder)
    folder.mkdir(parents=True, exist_ok=True)
    archive = folder / f"{name}.zip"
    if not archive.exists():
        print(f"making {archive.name} ...", flush=True)
        MAKERS[name](folder, name)
    return archive
