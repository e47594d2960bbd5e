#!/usr/bin/env python3
"""Adds a tree of thousands of real files to the window and compares everything in its list with
what md5sum, sha1sum and sha256sum report for the same files: digests, completeness and order.

    real_tree_test.py SUMWRIGHT.EXE READ_LIST.EXE [--files N]

For use inside tools/wine-run --display.
"""

import argparse
import functools
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import time

SOURCES = ["/usr/share/doc", "/usr/include"]
FEWEST_FILES = 2000  # fewer would not be a meaningful test
DIGEST_TOOLS = ["md5sum", "sha1sum", "sha256sum"]  # in the order of the list's columns
TREE_TIMEOUT = 600  # seconds until all is hashed
SHOWN_FINDINGS = 20


def copy_tree(target, file_count):
    """Copies real folders, links as links, until there are that many files, an equal share from each. Returns
    their number."""
    copied = 0
    for number, source in enumerate(SOURCES, 1):
        copied += copy_files(source, target, file_count * number // len(SOURCES) - copied)
    return copied


def copy_files(source, target, file_count):
    copied = 0
    for folder, folders, names in os.walk(source):
        folders.sort()
        place = target / pathlib.Path(folder).relative_to("/")
        place.mkdir(parents=True, exist_ok=True)
        for name in filter(lambda name: os.path.islink(os.path.join(folder, name)), folders):
            shutil.copy2(os.path.join(folder, name), place / name, follow_symlinks=False)
        for name in sorted(names):
            if copied >= file_count:
                return copied
            shutil.copy2(os.path.join(folder, name), place / name, follow_symlinks=False)
            copied += 1
    return copied


def add_special_files(target):
    """Adds what real trees sometimes contain and the copied one may not."""
    place = target / "special"
    for name in ["empty", "10", "2", "1 with blanks", "Ünïcödé 😀.txt", "UPPER", "lower", "x" * 200,
                 "deep/deeper/deepest/file", ".hidden file", ".hidden folder/file",
                 "numbers/a100", "numbers/a20", "numbers/a3", "numbers/B1"]:
        file = place / name
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_bytes(b"" if name == "empty" else name.encode() * 100)
    (place / "a link to a file").symlink_to("UPPER")
    (place / "a link to nothing").symlink_to("nowhere")
    (place / "a link to a folder").symlink_to("deep")
    (place / "a loop").symlink_to(".")
    (place / "large").write_bytes(bytes(i % 251 for i in range(251)) * 80_000)


def expected_files(target):
    """Full paths of all files that the window must list. Hidden files are left out, links to folders are not
    entered, and a broken link is not a file."""
    found = []
    for folder, folders, names in os.walk(target):
        folders[:] = [name for name in folders if not name.startswith(".")]
        for name in names:
            path = os.path.join(folder, name)
            if not name.startswith(".") and os.path.isfile(path):
                found.append(path)
    return found


def digests_by(tool, paths):
    """The tool's digest of each file."""
    # With NUL instead of a line feed, the tools do not escape unusual names.
    result = {}
    for start in range(0, len(paths), 1000):
        out = subprocess.run([tool, "--zero", "--", *paths[start:start + 1000]], check=True,
                             stdout=subprocess.PIPE).stdout
        for line in filter(None, out.decode("utf-8", "surrogateescape").split("\0")):
            digest, _, path = line.partition("  ")
            result[path] = digest
    return result


def listed_rows(program, reader, target):
    """Runs the program on the folder. Returns its rows: status, digests, path."""
    start = time.monotonic()
    out = subprocess.run(["wine", reader, "--wait", "--start", program, "Z:" + str(target).replace("/", "\\")],
                         check=True, stdout=subprocess.PIPE, timeout=TREE_TIMEOUT).stdout
    print(f"the list was complete after {time.monotonic() - start:.1f} s")
    subprocess.run(["wine", reader, "--close"], check=True, timeout=60)
    rows = [line.split("\t") for line in out.decode().splitlines()]
    return [(row[0], row[1:-1], row[-1]) for row in rows]


def identity(path):
    """The window treats two paths that differ only in the case of A to Z as the same file."""
    return re.sub("[A-Z]", lambda letter: letter.group().lower(), path)


def unix_path(listed):
    return listed.removeprefix("Z:").replace("\\", "/")


class Findings:
    def __init__(self):
        self.count = 0

    def add(self, text):
        self.count += 1
        if self.count <= SHOWN_FINDINGS:
            print(text)


def check_digests(rows, expected, findings):
    for status, digests, listed in rows:
        path = unix_path(listed)
        if path not in expected:
            continue  # check_completeness reports it
        if status != "Done":
            findings.add(f"{path}: the status is {status}")
        for tool, digest, shown in zip(DIGEST_TOOLS, expected[path], digests, strict=True):
            if shown != digest:
                findings.add(f"{path}: the list shows {shown or 'nothing'}, {tool} says {digest}")


def check_completeness(rows, expected, findings):
    shown = {}
    for _, _, listed in rows:
        path = unix_path(listed)
        shown[path] = shown.get(path, 0) + 1
        if path not in expected:
            findings.add(f"{path}: listed, but not expected")
    by_identity = {}
    for path in expected:
        by_identity.setdefault(identity(path), []).append(path)
    for paths in by_identity.values():
        count = sum(shown.get(path, 0) for path in paths)
        if count != 1:
            findings.add(f"{' or '.join(paths)}: listed {count} times instead of once")


def natural_compare(a, b):
    """-1, 0 or 1 for names of letters and digits only: digits compare as numbers, ignoring case. None for
    other names, whose order depends on the system."""
    if not (re.fullmatch("[A-Za-z0-9]+", a) and re.fullmatch("[A-Za-z0-9]+", b)):
        return None
    pieces = [[(int(piece), "") if piece.isdigit() else (-1, piece)
               for piece in re.findall(r"\d+|[a-z]", name.lower())] for name in (a, b)]
    for left, right in zip(*pieces):
        if left != right:
            if (left[0] < 0) != (right[0] < 0):
                return -1 if left[0] >= 0 else 1  # digits come before letters
            return -1 if left < right else 1
    return (len(pieces[0]) > len(pieces[1])) - (len(pieces[0]) < len(pieces[1]))


def check_order(rows, target, findings):
    """Files before folders, each folder in full before the next, and in natural order."""
    finished = set()  # folders whose rows are complete
    inside = []  # names of the folders from the top down to the previous row
    with_folders = set()  # folders whose first subfolder has been listed
    last_name = {}  # the previous file or subfolder, by folder and kind
    for _, _, listed in rows:
        path = pathlib.PurePosixPath(unix_path(listed))
        try:
            folders = list(path.relative_to(target).parts[:-1])
        except ValueError:
            continue  # check_completeness reports it
        common = len(os.path.commonprefix([inside, folders]))
        finished.update(tuple(inside[:depth]) for depth in range(common + 1, len(inside) + 1))
        for depth in range(common + 1, len(folders) + 1):
            if tuple(folders[:depth]) in finished:
                findings.add(f"{path}: its folder was already listed completely")
            with_folders.add(tuple(folders[:depth - 1]))
            check_neighbours(last_name, tuple(folders[:depth - 1]), "folder", folders[depth - 1],
                             path, findings)
        inside = folders
        if tuple(folders) in with_folders:
            findings.add(f"{path}: comes after folders of the same parent")
        check_neighbours(last_name, tuple(folders), "file", path.name, path, findings)


def check_neighbours(last_name, folder, kind, name, path, findings):
    before = last_name.get((folder, kind))
    if before is not None and (natural_compare(before, name) or 0) > 0:
        findings.add(f"{path}: the {kind} {name} comes after {before}")
    if natural_compare(name, name) is not None:  # the order of other names is unknown
        last_name[(folder, kind)] = name


def check_the_checks():
    """Makes sure that the comparison detects every kind of difference."""
    names = ["a2", "a10", "B1", "1", "10", "2", "b"]
    ordered = sorted(names, key=functools.cmp_to_key(natural_compare))
    assert ordered == ["1", "2", "10", "a2", "a10", "b", "B1"], ordered
    digest = ["m", "s", "t"]
    expected = {f"/t/{name}": digest for name in ["a2", "a10", "d/x", "d/y", "e/x"]}
    good = [("Done", digest, f"Z:\\t\\{name}") for name in
            ["a2", "a10", "d\\x", "d\\y", "e\\x"]]
    wrong_lists = {
        "": good,
        "a wrong digest": [("Done", ["m", "s", "u"], good[0][2]), *good[1:]],
        "a missing digest": [("Done", ["m", "s", ""], good[0][2]), *good[1:]],
        "a wrong status": [("Waiting", digest, good[0][2]), *good[1:]],
        "a missing file": good[1:],
        "a file twice": [*good[:2], *good[1:]],
        "an unknown file": [*good, ("Done", digest, "Z:\\t\\f\\x")],
        "a wrong order": [good[1], good[0], *good[2:]],
        "a file after folders": [*good[1:], good[0]],
        "a folder in two parts": [*good[:3], good[4], good[3]],
        "folders in a wrong order": [*good[:2], good[4], *good[2:4]],
    }
    for what, rows in wrong_lists.items():
        findings = Findings()
        findings.add = lambda text, findings=findings: setattr(findings, "count",
                                                                findings.count + 1)
        compare(rows, expected, "/t", findings)
        assert (findings.count > 0) == (what != ""), what


def compare(rows, expected, target, findings):
    check_digests(rows, expected, findings)
    check_completeness(rows, expected, findings)
    check_order(rows, target, findings)


def main():
    options = argparse.ArgumentParser(description=__doc__.split("\n\n")[0])
    options.add_argument("program")
    options.add_argument("reader")
    options.add_argument("--files", type=int, default=6000)
    options = options.parse_args()

    check_the_checks()
    with tempfile.TemporaryDirectory() as folder:
        target = pathlib.Path(folder, "tree")
        copied = copy_tree(target, options.files)
        if copied < FEWEST_FILES:
            sys.exit(f"only {copied} files in {' and '.join(SOURCES)}")
        add_special_files(target)
        paths = expected_files(target)
        expected = {path: [] for path in paths}
        for tool in DIGEST_TOOLS:
            for path, digest in digests_by(tool, paths).items():
                expected[path].append(digest)
        rows = listed_rows(options.program, options.reader, target)
        findings = Findings()
        compare(rows, expected, target, findings)
    if findings.count:
        print(f"{findings.count} findings in {len(rows)} rows")
        return 1
    print(f"{len(rows)} rows: every digest, every file and their order are correct")
    return 0


sys.exit(main())
