#!/usr/bin/env python3
"""The command-line tool and other tools verify each other's lists.

    interoperability_test.py PROGRAM [EMULATOR...]

Every list is written during the test. The program verifies the lists of the other tools, and they verify the
lists of the program, each time with unchanged files and an altered one.
"""

import os
import pathlib
import subprocess
import sys
import tempfile

FILES = {"empty": b"", "abc.txt": b"abc", "with blanks (1).bin": bytes(range(256)) * 300,
         "ж.txt": b"unicode", "sub/deep": b"x" * 100000}
ALTERED = "abc.txt"

# The tools, their commands (NAMES is replaced with the files), and the name of the list; None for a tool
# whose output has another format.
WRITERS = [
    ("sha256sum", ["sha256sum", "NAMES"], "SHA256SUMS"),
    ("sha256sum --tag", ["sha256sum", "--tag", "NAMES"], "list"),
    ("sha256sum -b", ["sha256sum", "-b", "NAMES"], "list"),
    ("md5sum", ["md5sum", "NAMES"], "list.md5"),
    ("sha1sum", ["sha1sum", "NAMES"], "list"),
    ("sha512sum", ["sha512sum", "NAMES"], "list"),
    ("cksum -a sm", ["cksum", "-a", "sha384", "NAMES"], "list"),
    ("cksum untagged", ["cksum", "-a", "sha384", "--untagged", "NAMES"], "list"),
    ("shasum", ["shasum", "-a", "384", "NAMES"], "list"),
    ("b3sum", ["b3sum", "NAMES"], "list.b3"),
    ("xxhsum XXH64", ["xxhsum", "-H1", "NAMES"], "list"),
    ("xxhsum XXH128", ["xxhsum", "-H2", "NAMES"], "list"),
    ("xxhsum XXH3", ["xxhsum", "-H3", "NAMES"], "list"),
    ("xxhsum --tag", ["xxhsum", "--tag", "-H2", "NAMES"], "list"),
    ("rhash", ["rhash", "--sha256", "NAMES"], "list"),
    ("rhash bsd", ["rhash", "--bsd", "--md5", "--sha1", "--sha3-256", "NAMES"], "list"),
    ("rhash sfv", ["rhash", "--sfv", "NAMES"], "list.sfv"),
    ("cksfv", ["cksfv", "NAMES"], "list.sfv"),
    ("openssl", ["openssl", "dgst", "-sha256", "NAMES"], "list"),
    ("openssl coreutils", ["openssl", "dgst", "-r", "-sha3-256", "NAMES"], "list"),
    ("7-Zip", ["7zz", "h", "-scrcsha256", "NAMES"], None),
]

# The options of the program, and the command that verifies the list.
READERS = [
    ("sha256sum", [], ["sha256sum", "--strict", "-c", "list"]),
    ("sha256sum tagged", ["--tag"], ["sha256sum", "--strict", "-c", "list"]),
    ("md5sum", ["-a", "md5"], ["md5sum", "--strict", "-c", "list"]),
    ("sha1sum", ["-a", "sha1"], ["sha1sum", "--strict", "-c", "list"]),
    ("sha384sum", ["-a", "sha384"], ["sha384sum", "--strict", "-c", "list"]),
    ("sha512sum", ["-a", "sha512"], ["sha512sum", "--strict", "-c", "list"]),
    ("cksum", ["-a", "sha512", "--tag"], ["cksum", "--strict", "-c", "list"]),
    ("shasum", ["-a", "sha256"], ["shasum", "-s", "-c", "list"]),
    ("b3sum", ["-a", "blake3"], ["b3sum", "-c", "list"]),
    ("xxhsum", ["-a", "xxh128"], ["xxhsum", "-c", "list"]),
    ("xxhsum XXH64", ["-a", "xxh64"], ["xxhsum", "-c", "list"]),
    ("xxhsum XXH3", ["-a", "xxh3", "--tag"], ["xxhsum", "-c", "list"]),
    ("rhash", ["-a", "sha256"], ["rhash", "-c", "list"]),
    ("rhash tagged", ["-a", "md5,sha1,sha3-256"], ["rhash", "--bsd", "-c", "list"]),
    ("rhash SFV", ["--format", "sfv"], ["rhash", "-c", "list.sfv"]),
    ("cksfv", ["--format", "sfv"], ["cksfv", "-q", "-f", "list.sfv"]),
]


def run(command, folder):
    return subprocess.run(command, cwd=folder, capture_output=True, timeout=120, check=False)


def lay_out(folder):
    for name, content in FILES.items():
        path = pathlib.Path(folder) / name
        path.parent.mkdir(exist_ok=True)
        path.write_bytes(content)


def alter(folder):
    path = pathlib.Path(folder) / ALTERED
    path.write_bytes(b"abd")


def from_seven_zip(output):
    """The rows of 7-Zip's table: digest, size, name."""
    lines = []
    for line in output.decode().splitlines():
        parts = line.split(maxsplit=2)
        if len(parts) == 3 and len(parts[0]) == 64 and parts[0].isalnum():
            lines.append(f"{parts[0].lower()}  {parts[2]}\n")
    return "".join(lines).encode()


def read_others(program, failures):
    for what, command, list_name in WRITERS:
        with tempfile.TemporaryDirectory() as folder:
            lay_out(folder)
            names = [word for part in command for word in (FILES if part == "NAMES" else [part])]
            made = run(names, folder)
            content = made.stdout if list_name else from_seven_zip(made.stdout)
            path = pathlib.Path(folder) / (list_name or "list")
            path.write_bytes(content)
            good = run([*program, "-c", "--strict", path.name], folder)
            wanted = f"All {len(FILES)} files are OK.\n"
            count = good.stdout.count(b": OK\n")
            if made.returncode or good.returncode or count % len(FILES) or count == 0:
                failures.append(f"{what}: {content!r} gives {good.stdout!r} {good.stderr!r} ({wanted!r})")
                continue
            alter(folder)
            bad = run([*program, "-c", path.name], folder)
            if bad.returncode != 1 or f"{ALTERED}: FAILED\n".encode() not in bad.stdout:
                failures.append(f"{what}: an altered file gives {bad.stdout!r} {bad.stderr!r}")


def write_for_others(program, failures):
    for what, options, command in READERS:
        with tempfile.TemporaryDirectory() as folder:
            lay_out(folder)
            made = run([*program, *options, *FILES, "-o", command[-1]], folder)
            good = run(command, folder)
            content = (pathlib.Path(folder) / command[-1]).read_bytes()
            if made.returncode or good.returncode:
                failures.append(f"{what}: {content!r} gives {good.stdout!r} {good.stderr!r}")
                continue
            alter(folder)
            if run(command, folder).returncode == 0:
                failures.append(f"{what}: an altered file was not noticed")


def main():
    if len(sys.argv) < 2 or sys.argv[1].startswith("-"):
        print(__doc__.strip())
        return 0 if "--help" in sys.argv else 2
    os.environ["LC_ALL"] = "C.UTF-8"
    program = [*sys.argv[2:], os.path.abspath(sys.argv[1])]
    failures = []
    read_others(program, failures)
    write_for_others(program, failures)
    print("\n".join(failures) or
          f"the lists of {len(WRITERS)} tools are read, and {len(READERS)} tools read the program's lists")
    return 1 if failures else 0


sys.exit(main())
