#!/usr/bin/env python3
"""The real window verifies other tools' checksum files, and other tools verify the window's.

    interoperability_test.py SUMWRIGHT.EXE VERDICT_DRIVER.EXE

For use inside tools/wine-run --display. Every list is written by its tool during the test.
"""

import csv
import functools
import hashlib
import json
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

# Windows names can't contain a double quote or a line end.
NAMES = ["plain.txt", "two words.bin", "it's, quoted.txt", "Ünïcödé ñ.txt", "emoji 😀.txt", "中文.txt",
         "#number.txt", "-dash.txt", "(in) = brackets.txt", "100% & more;.txt", "sub folder/deep.txt"]
ALTERED = "two words.bin"
DELETED = "sub folder/deep.txt"

CRC32, MD5, SHA1, SHA256, SHA384, SHA512, SHA3_256, SHA3_384, SHA3_512, BLAKE3, XXH64, XXH3, XXH128, MD2, MD4 = (
    1 << i for i in range(15))


def make_files(folder):
    for number, name in enumerate(NAMES):
        path = folder / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(name.encode() * 50 * (number + 1))


def output_of(command, folder):
    return subprocess.run(command, cwd=folder, check=True, stdout=subprocess.PIPE,
                          stderr=subprocess.PIPE).stdout


class Lists:
    """The lists, each with the names in it."""

    def __init__(self, folder):
        self.folder = folder
        self.names_of = {}

    def add(self, name, content, names=NAMES):
        (self.folder / name).write_bytes(content)
        self.names_of[name] = names

    def by(self, name, *command, names=NAMES):
        self.add(name, output_of([*command, "--", *names], self.folder), names)


def gnu_lists(lists):
    for algorithm in ["md5", "sha1", "sha256", "sha384", "sha512"]:
        tool = algorithm + "sum"
        lists.by(f"text.{algorithm}", tool)
        lists.by(f"binary.{algorithm}", tool, "--binary")
        lists.by(f"tagged-{algorithm}.checksums", tool, "--tag")
        lists.by(f"cksum-{algorithm}.digests", "cksum", "-a", algorithm)
        lists.by(f"cksum-untagged.{algorithm}", "cksum", "-a", algorithm, "--untagged")
    # Without any hint of the algorithm, even in the file's name.
    lists.by("checksums.txt", "sha256sum")
    for bits in ["1", "256", "384", "512"]:
        lists.by(f"shasum.sha{bits}", "shasum", "-a", bits)
    lists.by("shasum-binary.sha256", "shasum", "-a", "256", "-b")


def b3_and_xxh_lists(lists):
    lists.by("b3sum.b3", "b3sum")
    # The tool does not support "--", so the name that begins with a hyphen is left out.
    names = [name for name in NAMES if not name.startswith("-")]
    for flag, ending in [("-H1", "xxh64"), ("-H2", "xxh128"), ("-H3", "xxh3")]:
        for form, extra in [("gnu", []), ("bsd", ["--tag"])]:
            content = output_of(["xxhsum", flag, *extra, *names], lists.folder)
            lists.add(f"xxhsum-{form}.{ending}", content, names)


def rhash_lists(lists):
    # A line that begins with "#" is a comment in such a file.
    sfv_names = [name for name in NAMES if not name.startswith("#")]
    lists.by("rhash.sfv", "rhash", "--sfv", "--crc32", names=sfv_names)
    for flag, ending in [("crc32", "crc32"), ("md4", "md4"), ("md5", "md5"), ("sha1", "sha1"), ("sha-256", "sha256"),
                         ("sha-384", "sha384"), ("sha-512", "sha512"), ("sha3-256", "sha3-256"),
                         ("sha3-384", "sha3-384"), ("sha3-512", "sha3-512")]:
        # In a file named .crc32 such a line would be read as SFV.
        lists.by(f"rhash-bsd-{ending}.digests", "rhash", "--bsd", f"--{ending}")
        lists.by(f"rhash-plain.{ending}", "rhash", "--printf", f"%{{{flag}}}  %p\\n")
    lists.by("rhash-all.digests", "rhash", "--bsd", "--md5", "--sha1", "--sha512", "--crc32")


def openssl_lists(lists):
    # The tool does not support "--".
    names = [name for name in NAMES if not name.startswith("-")]
    for algorithm in ["md5", "sha1", "sha256", "sha512", "sha3-256", "sha3-512"]:
        lists.add(f"openssl.{algorithm}", output_of(["openssl", "dgst", "-r", f"-{algorithm}", *names], lists.folder),
                  names)


def encoded_lists(lists):
    text = output_of(["sha256sum", "--", *NAMES], lists.folder).decode()
    lists.add("utf16.sha256", text.encode("utf-16"))  # with a byte-order mark, in the machine's byte order
    lists.add("utf16-be.sha256", b"\xfe\xff" + text.encode("utf-16-be"))
    lists.add("utf8-mark.sha256", b"\xef\xbb\xbf" + text.encode())
    lists.add("crlf.sha256", text.replace("\n", "\r\n").encode())
    lists.add("no-last-line-end.sha256", text.rstrip("\n").encode())
    western = [name for name in NAMES if name.isascii() or name == "Ünïcödé ñ.txt"]
    ansi = output_of(["sha256sum", "--", *western], lists.folder).decode()
    lists.add("ansi.sha256", ansi.encode("cp1252"), western)


def escaped_list(lists):
    """A name with backslashes, which the tool escapes, refers to a file in a folder on Windows."""
    name = "sub folder/deep.txt"
    with tempfile.TemporaryDirectory(prefix="sumwright-escaped-") as elsewhere:
        flat = name.replace("/", "\\")
        shutil.copy(lists.folder / name, pathlib.Path(elsewhere, flat))
        content = output_of(["sha256sum", "--", flat], elsewhere)
    assert content.startswith(b"\\"), content
    lists.add("escaped.sha256", content, [name])


def signed_list(lists, home):
    """A list clear-signed with a new key."""
    home.mkdir(mode=0o700)
    gpg = ["gpg", "--homedir", str(home), "--batch", "--quiet", "--pinentry-mode", "loopback", "--passphrase", ""]
    subprocess.run([*gpg, "--quick-generate-key", "Tester <tester@example.com>", "ed25519", "sign", "never"],
                   check=True, stderr=subprocess.DEVNULL)
    text = output_of(["sha256sum", "--", *NAMES], lists.folder)
    signed = subprocess.run([*gpg, "--clear-sign"], input=text, check=True, stdout=subprocess.PIPE).stdout
    subprocess.run(["gpgconf", "--homedir", str(home), "--kill", "gpg-agent"], check=False)
    lists.add("SHA256SUMS.asc", signed)


def windows_path(path):
    return "Z:" + str(path).replace("/", "\\")


class Driver:
    def __init__(self, program, driver):
        self.command = ["wine", driver, windows_path(os.path.abspath(program))]

    def verify(self, lists):
        """The result line of each list, and the status and path of each of its rows."""
        paths = [windows_path(lists.folder / name) for name in lists.names_of]
        out = subprocess.run([*self.command, "verify", *paths], check=True, stdout=subprocess.PIPE,
                             timeout=600).stdout.decode()
        results, rows = {}, {}
        for fields in (line.split("\t") for line in out.splitlines()):
            if fields[0] == "list":
                name = fields[1].rsplit("\\", 1)[1]
                rows[name] = []
            elif fields[0] == "result":
                results[name] = fields[1]
            else:
                rows[name].append((fields[1], fields[2]))
        return results, rows

    def save(self, algorithms, label, target, paths):
        subprocess.run([*self.command, "save", str(algorithms), label, windows_path(target),
                        *map(windows_path, paths)], check=True, timeout=300)


class Findings:
    def __init__(self):
        self.count = 0

    def expect(self, what, found, expected):
        if found != expected:
            self.count += 1
            print(f"{what}: {found!r} instead of {expected!r}")


def check_verdicts(driver, lists, changed_files, findings):
    """`changed_files`: the expected status of each file that was altered or deleted."""
    results, rows = driver.verify(lists)
    findings.expect("lists", sorted(results), sorted(lists.names_of))
    for name, listed in lists.names_of.items():
        files = {windows_path(lists.folder / file): file for file in listed}
        per_file = 4 if name == "rhash-all.digests" else 1
        findings.expect(f"{name}, paths", sorted(path for _, path in rows[name]), sorted([*files] * per_file))
        counts = {"OK": 0, "FAILED": 0, "Missing": 0}
        for status, path in rows[name]:
            word = "OK" if status.startswith("OK (") else status
            findings.expect(f"{name}, {path}", word, changed_files.get(files.get(path), "OK"))
            counts[word] = counts.get(word, 0) + 1
        findings.expect(f"{name}, result", results[name], sentence(counts))


def sentence(counts):
    if not counts["FAILED"] and not counts["Missing"]:
        return "The file is OK." if counts["OK"] == 1 else f"All {counts['OK']} files are OK."
    text = f"Not all files match: {counts['OK']} OK"
    if counts["FAILED"]:
        text += f", {counts['FAILED']} FAILED"
    if counts["Missing"]:
        text += f", {counts['Missing']} missing"
    return text + "."


def check_reading(driver, folder, findings):
    make_files(folder)
    lists = Lists(folder)
    for add in (gnu_lists, b3_and_xxh_lists, rhash_lists, openssl_lists, encoded_lists, escaped_list,
                functools.partial(signed_list, home=folder.parent / "gpg")):
        add(lists)
    check_verdicts(driver, lists, {}, findings)
    altered = folder / ALTERED
    content = bytearray(altered.read_bytes())
    content[-1] ^= 1
    altered.write_bytes(content)
    check_verdicts(driver, lists, {ALTERED: "FAILED"}, findings)
    (folder / DELETED).unlink()
    check_verdicts(driver, lists, {ALTERED: "FAILED", DELETED: "Missing"}, findings)
    print(f"{len(lists.names_of)} lists of other tools were verified three times")


def accepts(command, names, folder, findings):
    """The tool succeeds, and reports each of the names as OK."""
    done = subprocess.run(command, cwd=folder, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    if done.returncode != 0:
        findings.count += 1
        print(f"{' '.join(command)} ends with {done.returncode}:\n{done.stdout.decode(errors='replace')}")
    lines = [line.rstrip() for line in done.stdout.decode().splitlines()]
    reported = [line.removesuffix(" OK").rstrip().removesuffix(":") for line in lines
            if line.endswith(" OK") and line != "Everything OK"]
    findings.expect(" ".join(command), sorted(reported), sorted(names))


# What is saved: mask of algorithms, label of the format, name of the file, command that verifies it.
SAVED = [
    (MD5, "MD5 checksums, sha256sum format (*.md5)", "saved.md5", ["md5sum", "--strict", "-c"]),
    (SHA1, "SHA-1 checksums, sha256sum format (*.sha1)", "saved.sha1", ["sha1sum", "--strict", "-c"]),
    (SHA256, "SHA-256 checksums, sha256sum format (*.sha256)", "saved.sha256", ["sha256sum", "--strict", "-c"]),
    (SHA512, "SHA-512 checksums, sha256sum format (*.sha512)", "saved.sha512", ["sha512sum", "--strict", "-c"]),
    (BLAKE3, "BLAKE3 checksums, sha256sum format (*.b3)", "saved.b3", ["b3sum", "-c"]),
    (XXH64, "XXH64 checksums, sha256sum format (*.xxh64)", "saved.xxh64", ["xxhsum", "--strict", "-c"]),
    (XXH128, "XXH128 checksums, sha256sum format (*.xxh128)", "saved.xxh128", ["xxhsum", "--strict", "-c"]),
    (SHA256, "All algorithms, BSD tagged format (*.digests)", "saved.digests", ["sha256sum", "--strict", "-c"]),
    (CRC32 | MD5 | SHA3_256, "All algorithms, BSD tagged format (*.digests)", "mixed.digests", ["rhash", "-c"]),
    # xxhsum 0.8.1 reads XXH3 only in this form.
    (XXH3, "All algorithms, BSD tagged format (*.digests)", "xxh3.digests", ["xxhsum", "--strict", "-c"]),
    (CRC32, "SFV (*.sfv)", "saved.sfv", ["rhash", "-c"]),
]


def check_writing(driver, folder, findings):
    make_files(folder)
    paths = [folder / name for name in NAMES]
    # Every reader of such a file treats it as a comment.
    sfv_paths = [folder / name for name in NAMES if not name.startswith("#")]
    for mask, label, target, tool in SAVED:
        saved = sfv_paths if target.endswith(".sfv") else paths
        driver.save(mask, label, folder / target, saved)
        names = [str(path.relative_to(folder)) for path in saved]
        accepts([*tool, target], names * mask.bit_count(), folder, findings)
    mask = MD5 | SHA256
    driver.save(mask, "CSV spreadsheet (*.csv)", folder / "saved.csv", paths)
    driver.save(mask, "JSON (*.json)", folder / "saved.json", paths)
    expected = []
    for name in NAMES:
        content = (folder / name).read_bytes()
        expected.append((name, len(content), hashlib.md5(content).hexdigest(), hashlib.sha256(content).hexdigest()))
    with open(folder / "saved.csv", newline="", encoding="utf-8") as file:
        rows = list(csv.reader(file))
    findings.expect("CSV heading", rows[0], ["Path", "Size", "MD5", "SHA-256"])
    findings.expect("CSV rows", [(row[0], int(row[1]), row[2], row[3]) for row in rows[1:]], expected)
    with open(folder / "saved.json", encoding="utf-8") as file:
        entries = json.load(file)
    findings.expect("JSON keys", {tuple(entry) for entry in entries}, {("path", "size", "md5", "sha256")})
    findings.expect("JSON", [tuple(entry.values()) for entry in entries], expected)
    print(f"{len(SAVED) + 2} saved files were read by other tools")


def main():
    program, driver_program = sys.argv[1:]
    needed = ["b3sum", "cksum", "gpg", "md5sum", "openssl", "rhash", "sha256sum", "shasum", "xxhsum"]
    missing = [tool for tool in needed if shutil.which(tool) is None]
    if missing:
        sys.exit(f"not installed: {', '.join(missing)}")
    findings = Findings()
    driver = Driver(program, driver_program)
    with tempfile.TemporaryDirectory(prefix="sumwright-interop-") as scratch:
        for check in (check_reading, check_writing):
            folder = pathlib.Path(scratch, check.__name__)
            folder.mkdir()
            check(driver, folder, findings)
    sys.exit(1 if findings.count else 0)


main()
