"""The files that are packed, copied and restored. The same call always makes the same bytes."""
import gzip
import pathlib
import random
import shutil
import sqlite3

from samples import run


def make_tree(demo_data, tree, small, percent):
    """About 340 MB at 100 percent: a workstation's images, databases, logs, 5,000 of the files of `small`, and data that
    cannot be packed any more; no folder with more than 500 files. `demo_data` is the program that makes the images.
    """
    run(demo_data, tree / "workstation", str(200 * percent // 100))
    _databases(tree / "databases", 2000 * percent)
    _logs(tree / "logs", 3500 * percent)
    (tree / "packed").mkdir()
    images = sorted((tree / "workstation/Data/Image.ddo").rglob("*1.ddo"))
    with open(tree / "packed/studies.gz", "wb") as packed:
        with gzip.GzipFile(filename="", mode="wb", compresslevel=1, fileobj=packed, mtime=0) as writer:
            for image in images:
                writer.write(image.read_bytes())
    for folder in sorted(small.glob("[0-9]")):
        shutil.copytree(folder, tree / "small" / folder.name)
    _remove_empty_folders(tree)  # a cabinet does not hold them


def _remove_empty_folders(tree):
    for folder in sorted((path for path in tree.rglob("*") if path.is_dir()), reverse=True):
        if not any(folder.iterdir()):
            folder.rmdir()


def small_files(folder, count):
    """`count` files, 500 to a folder, up to 5 KB each."""
    chance = random.Random(1)
    for number in range(count):
        inner = folder / str(number // 500)
        inner.mkdir(parents=True, exist_ok=True)
        lines = [f"[Record{number}]", f"Patient={chance.randrange(10**9)}"]
        lines += [f"Value{line}={chance.randrange(10**6)},{chance.random():.6f}" for line in range(chance.randrange(120))]
        (inner / f"record{number}.ini").write_text("\n".join(lines) + "\n", encoding="ascii")


def _databases(folder, rows):
    folder.mkdir()
    for name in ("Patient", "Study", "Image"):
        with sqlite3.connect(folder / f"{name}.db") as database:
            database.execute("PRAGMA synchronous = OFF")
            database.execute("CREATE TABLE entry(id INTEGER PRIMARY KEY, number TEXT, name TEXT, dose REAL, remark TEXT)")
            database.executemany("INSERT INTO entry VALUES (?, ?, ?, ?, ?)", (_entry(name, i) for i in range(1, rows + 1)))
            database.execute("CREATE INDEX by_number ON entry(number)")
        database.close()


def _entry(name, i):
    remark = "normal finding, series reviewed" if i % 3 == 0 else f"exposure {i * i}"
    return i, f"{name}-{i * 7919 % 1000003:08d}", f"{i * 104729 % 65537:X} Person", i * 37 % 1009 / 7.0, remark


def _logs(folder, lines):
    folder.mkdir()
    for number in (1, 2, 3):
        chance = random.Random(number)
        with open(folder / f"{number}.log", "w", encoding="ascii") as log:
            for line in range(lines):
                log.write(
                    f"[2026/11/{line % 28:02d} {chance.randrange(10**5):08d}] [Information] "
                    f"{chance.randrange(99)}: image of folder {line} stored\n"
                )


def join_images(images, bytes_each=8 * 2**20):
    """The same bytes in images as large as a radiograph, so in far fewer files."""
    images = pathlib.Path(images)
    joined = images.with_name("joined")
    joined.mkdir()
    rest, count = b"", 0

    def write(data):
        nonlocal count
        (joined / f"image{count:03d}.ddo").write_bytes(data)
        count += 1

    for image in sorted(path for path in images.rglob("*") if path.is_file()):
        rest += image.read_bytes()
        while len(rest) >= bytes_each:
            write(rest[:bytes_each])
            rest = rest[bytes_each:]
    if rest:
        write(rest)
    shutil.rmtree(images)
    joined.rename(images)
