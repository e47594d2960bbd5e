#!/usr/bin/env python3
"""Runs the command-line tool as users do, and compares its output and exit code.

    command_line_test.py PROGRAM [EMULATOR...]

Each case is a row of the table: files, arguments, standard input, and the standard output, standard
error and exit code that are expected. With an EMULATOR, the program is one for Windows; rows for
one of the systems only are marked.
"""

import os
import pathlib
import pty
import re
import select
import signal
import subprocess
import sys
import tempfile
import time

VERSION = re.search(r"^project\(Sumwright VERSION (\S+)",
                    (pathlib.Path(__file__).resolve().parents[2] / "CMakeLists.txt").read_text(), re.MULTILINE)[1]

ABC_MD5 = "900150983cd24fb0d6963f7d28e17f72"
ABC_SHA1 = "a9993e364706816aba3e25717850c26c9cd0d89d"
ABC_SHA256 = "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad"
ABC_CRC32 = "352441c2"
DEF_SHA256 = "cb8379ac2098aa165029e3938a51da0bcecfc008fd6795f401178647f96c5b34"
EMPTY_SHA256 = "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855"
XXH3_ABC = "78af5f94892f3950"

OK_LINE = "The file is OK.\n"
HINT = "Try 'swrhash --help' for more information.\n"

# The fields of a row: files (name: content; None for a folder), args, input, out, err, code, on ("posix" or
# "windows" for rows of one system), after (name: content afterwards). If err is a list, standard error must
# contain each of its strings.
CASES = [
    # Calculating
    dict(what="one file", files={"a": "abc"}, args=["a"], out=f"{ABC_SHA256}  a\n"),
    dict(what="several files in the order given", files={"a": "abc", "b": "def"}, args=["b", "a"],
         out=f"{DEF_SHA256}  b\n{ABC_SHA256}  a\n"),
    dict(what="an empty file", files={"a": ""}, args=["a"], out=f"{EMPTY_SHA256}  a\n"),
    dict(what="standard input", args=["-"], input="abc", out=f"{ABC_SHA256}  -\n"),
    dict(what="no arguments, input from a pipe", args=[], input="abc", out=f"{ABC_SHA256}  -\n"),
    dict(what="one other algorithm", files={"a": "abc"}, args=["-a", "md5", "a"],
         out=f"{ABC_MD5}  a\n"),
    dict(what="several algorithms are tagged, in the order of the catalogue",
         files={"a": "abc"}, args=["-a", "sha256,md5", "a"],
         out=f"MD5 (a) = {ABC_MD5}\nSHA256 (a) = {ABC_SHA256}\n"),
    dict(what="XXH3 has its prefix", files={"a": "abc"}, args=["-a", "xxh3", "a"],
         out=f"XXH3_{XXH3_ABC}  a\n"),
    dict(what="a folder", files={"d/f10": "abc", "d/f9": "abc", "d/e/x": "def", "d/.h": ""},
         args=["-r", "d"],
         out=f"{ABC_SHA256}  d/f9\n{ABC_SHA256}  d/f10\n{DEF_SHA256}  d/e/x\n"),
    dict(what="a folder with hidden files", files={"d/a": "abc", "d/.h": ""},
         args=["-r", "--hidden", "d"], on="posix",
         out=f"{EMPTY_SHA256}  d/.h\n{ABC_SHA256}  d/a\n"),
    dict(what="the current folder", files={"a": "abc"}, args=["-r", "."],
         out=f"{ABC_SHA256}  ./a\n"),
    dict(what="a folder without -r", files={"d/a": "abc", "b": "abc"}, args=["d", "b"],
         out=f"{ABC_SHA256}  b\n", err="swrhash: d: is a folder; use -r to include its files\n", code=2),
    dict(what="a missing file does not stop the others", files={"b": "abc"}, args=["a", "b"],
         out=f"{ABC_SHA256}  b\n", err=["swrhash: a: "], code=1),
    dict(what="excluded and included names",
         files={"d/a.iso": "abc", "d/b.txt": "abc", "d/tmp/c.iso": "abc", "d/e/f.iso": "def"},
         args=["-r", "--include", "*.iso", "--exclude", "tmp", "d"],
         out=f"{ABC_SHA256}  d/a.iso\n{DEF_SHA256}  d/e/f.iso\n"),
    dict(what="an exclusion with a path", files={"d/e/a": "abc", "d/f/a": "abc"},
         args=["-r", "--exclude", "e/*", "d"], out=f"{ABC_SHA256}  d/f/a\n"),
    dict(what="names from a file", files={"a": "abc", "b c": "abc", "list": "a\r\n\nb c\n"},
         args=["--files-from", "list"], out=f"{ABC_SHA256}  a\n{ABC_SHA256}  b c\n"),
    dict(what="names from standard input, terminated by nulls", files={"a": "abc", "b c": "abc"},
         args=["-0", "--files-from", "-"], input="b c\0a\0",
         out=f"{ABC_SHA256}  b c\n{ABC_SHA256}  a\n"),
    dict(what="a missing list of names", files={"a": "abc"}, args=["--files-from", "nope", "a"],
         code=2, out=f"{ABC_SHA256}  a\n", err=["swrhash: nope: "]),
    dict(what="a name that begins with a hyphen", files={"-a": "abc"}, args=["--", "-a"],
         out=f"{ABC_SHA256}  -a\n"),
    dict(what="a name in another script", files={"ж 文.txt": "abc"}, args=["ж 文.txt"],
         out=f"{ABC_SHA256}  ж 文.txt\n"),
    dict(what="a name that is not valid UTF-8", files={b"\xff\xfe\x80": "abc"}, args=[b"\xff\xfe\x80"],
         on="posix", out=ABC_SHA256.encode() + b"  \xff\xfe\x80\n"),
    dict(what="a name with a line end and a backslash", files={"a\nb\\c": "abc"},
         args=["a\nb\\c"], on="posix", out=f"\\{ABC_SHA256}  a\\nb\\\\c\n"),
    dict(what="backslashes become slashes", files={"d/a": "abc"}, args=["d\\a"], on="windows",
         out=f"{ABC_SHA256}  d/a\n"),
    dict(what="wildcards", files={"f10.iso": "abc", "f9.iso": "abc", "x.txt": "abc"},
         args=["*.ISO"], on="windows", out=f"{ABC_SHA256}  f9.iso\n{ABC_SHA256}  f10.iso\n"),
    dict(what="wildcards in a folder", files={"d/a.iso": "abc", "d/b.iso": "def"},
         args=["d\\?.iso"], on="windows", out=f"{ABC_SHA256}  d/a.iso\n{DEF_SHA256}  d/b.iso\n"),
    dict(what="a path relative to a drive's current folder", files={"a": "abc"}, args=["Z:a"], on="windows",
         out=f"{ABC_SHA256}  Z:a\n"),
    dict(what="wildcards with such a path", files={"a.iso": "abc"}, args=["Z:*.iso"], on="windows",
         out=f"{ABC_SHA256}  Z:a.iso\n"),
    dict(what="a path of more than 260 characters", files={"/".join(["d" * 60] * 6) + "/a": "abc"},
         args=["-r", "."], out=f"{ABC_SHA256}  ./" + "/".join(["d" * 60] * 6) + "/a\n"),
    dict(what="wildcards without a match", args=["*.iso"], on="windows",
         err=["swrhash: *.iso: "], code=2),
    # Formats
    dict(what="SFV", files={"a": "abc"}, args=["--format", "sfv", "a"],
         out=f"; Generated by Sumwright\na {ABC_CRC32.upper()}\n"),
    dict(what="CSV", files={"a,b": "abc"}, args=["--format", "csv", "-a", "crc32,md5", "a,b"],
         out=f'Path,Size,CRC32,MD5\n"a,b",3,{ABC_CRC32},{ABC_MD5}\n'),
    dict(what="JSON", files={"a": "abc", "b": ""}, args=["--format", "json", "a", "b"],
         out=f'[\n  {{"path": "a", "size": 3, "sha256": "{ABC_SHA256}"}},\n'
             f'  {{"path": "b", "size": 0, "sha256": "{EMPTY_SHA256}"}}\n]\n'),
    dict(what="JSON without a file", files={"d": None}, args=["-r", "--format", "json", "d"],
         out="[\n]\n"),
    dict(what="JSON of a name that is not valid UTF-8", files={b"\xff": "abc"},
         args=["--format", "json", b"\xff"], on="posix",
         out=f'[\n  {{"path": "\\udcff", "size": 3, "sha256": "{ABC_SHA256}"}}\n]\n'),
    # Output to a file
    dict(what="an output file", files={"a": "abc"}, args=["-o", "out", "a"],
         after={"out": f"{ABC_SHA256}  a\n"}),
    dict(what="an existing output file", files={"a": "abc", "out": "old"},
         args=["-o", "out", "a"], after={"out": f"{ABC_SHA256}  a\n"}),
    dict(what="an output file without any result", files={"out": "old"}, args=["-o", "out", "a"],
         err=["swrhash: a: "], code=1, after={"out": "old"}),
    dict(what="a full disk", files={"a": "abc"}, args=["-o", "/dev/full", "a"], on="posix",
         err="swrhash: /dev/full: No space left on device\n", code=2),
    dict(what="an output file in a missing folder", files={"a": "abc"}, args=["-o", "d/out", "a"],
         err=["swrhash: d/out: "], code=2),
    # Verifying
    dict(what="a good list", files={"a": "abc", "L": f"{ABC_SHA256}  a\n"}, args=["-c", "L"],
         out="a: OK\n", err=OK_LINE),
    dict(what="a list in another folder", files={"d/a": "abc", "d/L": f"{ABC_SHA256} *a\n"},
         args=["-c", "d/L"], out="a: OK\n", err=OK_LINE),
    dict(what="a list from standard input", files={"a": "abc"}, args=["-c"],
         input=f"{ABC_MD5}  a\n", out="a: OK\n", err=OK_LINE),
    dict(what="a mismatch", files={"a": "abc", "b": "abc", "L": f"{ABC_SHA256}  a\n{DEF_SHA256}  b\n"},
         args=["-c", "L"], out="a: OK\nb: FAILED\n",
         err="Not all files match: 1 OK, 1 FAILED.\n", code=1),
    dict(what="a missing file in a list", files={"a": "abc", "L": f"{ABC_SHA256}  a\n{DEF_SHA256}  b\n"},
         args=["-c", "L"], out="a: OK\nb: FAILED open or read\n",
         err=["swrhash: b: ", "Not all files match: 1 OK, 1 missing.\n"], code=1),
    dict(what="missing files ignored",
         files={"a": "abc", "L": f"{ABC_SHA256}  a\n{DEF_SHA256}  b\n"},
         args=["-c", "--ignore-missing", "L"], out="a: OK\n", err=OK_LINE),
    dict(what="nothing verified", files={"L": f"{ABC_SHA256}  a\n"},
         args=["-c", "--ignore-missing", "L"], err="No file was verified.\n", code=2),
    dict(what="only missing files", files={"L": f"{ABC_SHA256}  a\n"}, args=["-c", "L"],
         out="a: FAILED open or read\n", err=["1 missing"], code=2),
    dict(what="quiet and everything OK", files={"a": "abc", "L": f"{ABC_SHA256}  a\n"},
         args=["-c", "--quiet", "L"]),
    dict(what="quiet and a mismatch", files={"a": "abc", "b": "abc", "L": f"{ABC_SHA256}  a\n{DEF_SHA256}  b\n"},
         args=["-c", "--quiet", "L"], out="b: FAILED\n",
         err="Not all files match: 1 OK, 1 FAILED.\n", code=1),
    dict(what="only the exit code", files={"a": "abc", "L": f"{DEF_SHA256}  a\n{DEF_SHA256}  b\n"},
         args=["-c", "--status", "L"], code=1),
    dict(what="a line that is not a checksum", files={"a": "abc", "L": f"hello\n{ABC_SHA256}  a\n"},
         args=["-c", "L"], out="a: OK\n",
         err="The file is OK. 1 line of the checksum file aren't checksums and were skipped "
             "(first: line 1).\n"),
    dict(what="a warning for each such line", files={"a": "abc", "L": f"{ABC_SHA256}  a\nhello\n"},
         args=["-c", "-w", "--strict", "L"], out="a: OK\n",
         err=["swrhash: L: line 2 isn't a checksum\n"], code=2),
    dict(what="a list without checksums", files={"L": "hello\n"}, args=["-c", "L"],
         err=["swrhash: L: no checksums were found in this file\n", "No file was verified."], code=2),
    dict(what="a list that is missing", files={"a": "abc", "L": f"{ABC_SHA256}  a\n"},
         args=["-c", "M", "L"], out="a: OK\n", err=["swrhash: M: ", "The file is OK."], code=2),
    dict(what="a mix of forms", files={"a": "abc", "b.txt.sha256": ABC_SHA256 + "\n", "b.txt": "abc",
                                       "L": f"MD5 (a) = {ABC_MD5}\na {ABC_CRC32}\n"
                                            f"SHA2-256(a)= {ABC_SHA256}\n{ABC_SHA1}\ta\n"},
         args=["-c", "L", "b.txt.sha256"], out="a: OK\na: OK\na: OK\na: OK\nb.txt: OK\n",
         err="All 2 files are OK.\n"),
    dict(what="a file with one right and one wrong digest",
         files={"a": "abc", "L": f"MD5 (a) = {ABC_MD5}\nSHA1 (a) = {'0' * 40}\n"}, args=["-c", "L"],
         out="a: OK\na: FAILED\n", err="Not all files match: 0 OK, 1 FAILED.\n", code=1),
    dict(what="digests that could belong to several algorithms",
         files={"a": "abc", "L": f"{'3a985da74fe225b2045c172d6bd390bd855f086e3e9d525b46bfe24511431532'}  a\n"},
         args=["-c", "L"], out="a: OK\n", err=OK_LINE),
    dict(what="an algorithm chosen by the user",
         files={"a": "abc", "L": f"{ABC_SHA256}  a\n"}, args=["-c", "-a", "blake3", "L"],
         out="a: FAILED\n", err="Not all files match: 0 OK, 1 FAILED.\n", code=1),
    dict(what="a UTF-16 list", files={"ж": "abc", "L": f"\ufeff{ABC_SHA256}  ж\r\n".encode("utf-16-le")},
         args=["-c", "L"], out="ж: OK\n", err=OK_LINE),
    dict(what="extra and moved files",
         files={"L": f"{ABC_SHA256}  a\n{DEF_SHA256}  old\n", "a": "abc", "d/new": "def", "x": ""},
         args=["-c", "--extra", "L"],
         out="a: OK\nold: FAILED open or read\nx: EXTRA\nd/new: MOVED from old\n",
         err=["Not all files match: 1 OK, 1 missing. 2 extra files, 1 of them moved.\n"], code=1),
    dict(what="an extra file and --strict", files={"L": f"{ABC_SHA256}  a\n", "a": "abc", "x": ""},
         args=["-c", "--extra", "--strict", "L"], out="a: OK\nx: EXTRA\n",
         err="The file is OK. 1 extra file.\n", code=1),
    # An expected hash
    dict(what="a match", files={"a": "abc"}, args=["--expect", ABC_SHA256.upper(), "a"],
         out="Match. The SHA-256 of a is the expected hash.\n"),
    dict(what="a match with the last candidate", files={"a": "abc"},
         args=["--expect", "da853b0d3f88d99b30283a69e6ded6bb", "a"],
         out="Match. The MD2 of a is the expected hash.\n"),
    dict(what="a match on standard input", args=["--expect", "a448017aaf21d8525fc10ae87aa6729d", "-"],
         input="abc", out="Match. The MD4 of - is the expected hash.\n"),
    dict(what="no match", files={"a": "abc"}, args=["--expect", DEF_SHA256, "a"],
         out="No match. a has a different SHA-256, SHA3-256 and BLAKE3.\n", code=1),
    dict(what="one match among several files", files={"a": "abc", "b": "def"},
         args=["--expect", DEF_SHA256, "a", "b"],
         out="Match. The SHA-256 of b is the expected hash.\n"),
    dict(what="several matches", files={"a": "abc", "b": "abc"}, args=["--expect", ABC_MD5, "a", "b"],
         out="Match. 2 files have this MD5 hash.\n"),
    dict(what="none of several files", files={"a": "abc", "b": "abc"},
         args=["--expect", DEF_SHA256, "a", "b"],
         out="No match. None of the 2 files has this hash.\n", code=1),
    dict(what="without a match, the verdict names the file on the line", files={"a": "abc", "b": "abc"},
         args=["--expect", f"SHA1 (b) = {'0' * 40}", "a", "b"],
         out="No match. b has a different SHA-1.\n", code=1),
    dict(what="a file that can't be read", args=["--expect", ABC_MD5, "a"],
         out="a can't be read, so it can't be compared.\n", err=["swrhash: a: "], code=1),
    dict(what="a base64 value", files={"a": "abc"}, args=["--expect", "kAFQmDzST7DWlj99KOF/cg==", "a"],
         out="Match. The MD5 of a is the expected hash.\n"),
    dict(what="not a hash", files={"a": "abc"}, args=["--expect", "hello", "a"],
         err="swrhash: This doesn't look like a hash. Paste the hex or base64 value from the website.\n"
             + HINT, code=2),
    dict(what="a hash without a file", args=["--expect", ABC_SHA1],
         err="swrhash: Add the file to compare with this hash (SHA-1).\n", code=2),
    # Updating
    dict(what="a new list", files={"a": "abc"}, args=["--update", "L.md5", "a"],
         err="1 file added.\n", after={"L.md5": f"{ABC_MD5}  a\n"}),
    dict(what="a list that lacks a file", files={"a": "abc", "b": "abc", "L": f"# kept\n{'0' * 64}  a\njunk"},
         args=["--update", "L", "-r", "."], err="1 file added.\n",
         after={"L": f"# kept\n{'0' * 64}  a\njunk\n{ABC_SHA256}  b\n"}),
    dict(what="a list that already has every file", files={"a": "abc", "L": f"{'0' * 64}  a"},
         args=["--update", "L", "a"], err="0 files added.\n", after={"L": f"{'0' * 64}  a"}),
    dict(what="the list's own format and line ends",
         files={"a": "abc", "L": f"MD5 (x) = {'0' * 32}\r\nSHA1 (x) = {'0' * 40}\r\n"},
         args=["--update", "L", "a"], err="1 file added.\n",
         after={"L": f"MD5 (x) = {'0' * 32}\r\nSHA1 (x) = {'0' * 40}\r\n"
                     f"MD5 (a) = {ABC_MD5}\r\nSHA1 (a) = {ABC_SHA1}\r\n"}),
    dict(what="a list in UTF-16", files={"a": "abc", "L": f"\ufeff{'0' * 64}  ж\n".encode("utf-16-le")},
         args=["--update", "L", "a"], err="1 file added.\n",
         after={"L": f"\ufeff{'0' * 64}  ж\n{ABC_SHA256}  a\n".encode("utf-16-le")}),
    dict(what="names relative to the list", files={"d/a": "abc", "d/L": f"{'0' * 64}  x\n"},
         args=["--update", "d/L", "d/a"], err="1 file added.\n",
         after={"d/L": f"{'0' * 64}  x\n{ABC_SHA256}  a\n"}),
    dict(what="lines of files that no longer exist", files={"a": "abc", "L": f"{'0' * 64}  gone\n# kept\n{'0' * 64}  a\n"},
         args=["--update", "L", "--prune"], err="0 files added, 1 line dropped.\n",
         after={"L": f"# kept\n{'0' * 64}  a\n"}),
    dict(what="a signed list", files={"a": "abc", "L": "-----BEGIN PGP SIGNED MESSAGE-----\n\n"},
         args=["--update", "L", "a"],
         err="swrhash: L: the list is signed, and a change would break its signature\n", code=2,
         after={"L": "-----BEGIN PGP SIGNED MESSAGE-----\n\n"}),
    # Usage
    dict(what="an unknown option", args=["--frobnicate"],
         err="swrhash: no such option: '--frobnicate'\n" + HINT, code=2),
    dict(what="the version", args=["--version"], out=f"swrhash {VERSION}\n"),
]


# Tests that need more than a table row: shells, signals, pipes, terminals.


def test_command_prompt(command):
    """In cmd.exe: redirected output, a pipe, wildcards and the exit code."""
    program = "Z:" + command[-1].replace("/", "\\")
    with tempfile.TemporaryDirectory() as folder:
        root = pathlib.Path(folder)
        (root / "ж.iso").write_bytes(b"abc")
        script = f"@\"{program}\" *.iso > out\r\n" \
                 f"@\"{program}\" -r . | \"{program}\" -c --quiet\r\n" \
                 f"@\"{program}\" missing 2> nul\r\n@exit %ERRORLEVEL%\r\n"
        (root / "run.bat").write_bytes(script.encode())
        done = subprocess.run([*command[:-1], "cmd", "/c", "run.bat"], cwd=folder, timeout=120,
                              capture_output=True, check=False)
        check("exit code of the batch file", done.returncode, 1)
        check("redirected output", (root / "out").read_bytes(), f"{ABC_SHA256}  ж.iso\n".encode())
        # The files that the batch file writes may not exist yet, or may change while they are read.
        if b"FAILED\n" in done.stdout:
            raise Failure(f"output of the pipe: {done.stdout!r}")


def test_interrupt(command):
    """A signal ends the program, and leaves the old output file and no temporary file."""
    for number in (signal.SIGINT, signal.SIGTERM):
        with tempfile.TemporaryDirectory() as folder:
            root = pathlib.Path(folder)
            (root / "out").write_bytes(b"old")
            with open(root / "large", "wb") as large:
                large.truncate(1 << 36)
            with subprocess.Popen([*command, "-o", "out", "large"], cwd=folder,
                                  stderr=subprocess.PIPE) as running:
                deadline = time.monotonic() + 30
                while not [name for name in os.listdir(folder) if name.endswith(".part")]:
                    if time.monotonic() > deadline:
                        running.kill()
                        raise Failure("no file is being written")
                    time.sleep(0.01)
                running.send_signal(number)
                check("exit", running.wait(30), -number)
            check("files", sorted(os.listdir(folder)), ["large", "out"])
            check("the old file", (root / "out").read_bytes(), b"old")


def test_closed_pipe(command):
    """When the reader closes the pipe, the program ends at once and without a message."""
    with tempfile.TemporaryDirectory() as folder:
        for number in range(3000):
            (pathlib.Path(folder) / f"{number:04}").write_bytes(b"")
        with subprocess.Popen([*command, "-r", "."], cwd=folder, stdout=subprocess.PIPE,
                              stderr=subprocess.PIPE, preexec_fn=restore_pipe_signal) as running:
            running.stdout.read(10)
            running.stdout.close()
            check("exit", running.wait(60), -signal.SIGPIPE)
            check("standard error", running.stderr.read(), b"")


def restore_pipe_signal():
    signal.signal(signal.SIGPIPE, signal.SIG_DFL)


def test_terminal(command):
    """On a terminal there are colours (except with NO_COLOR), escaped names and a progress line."""
    with tempfile.TemporaryDirectory() as folder:
        root = pathlib.Path(folder)
        (root / "a\x1b[31mb").write_bytes(b"abc")
        (root / "L").write_bytes(f"{ABC_SHA256}  a\x1b[31mb\n".encode())
        for color, wanted in ((None, b"a[U+001B][31mb: \x1b[32mOK\x1b[0m"),
                              ("1", b"a[U+001B][31mb: OK")):
            environment = {**os.environ, "TERM": "xterm"}
            environment.pop("NO_COLOR", None)
            if color:
                environment["NO_COLOR"] = color
            shown = shown_on_terminal([*command, "-c", "L"], folder, environment)
            if wanted not in shown:
                raise Failure(f"on a terminal: {shown!r}\n  expected in it: {wanted!r}")
        with open(root / "large", "wb") as large:
            large.truncate(3 << 30)
        shown = shown_on_terminal([*command, "-a", "sha3-512", "large"], folder,
                                  {**os.environ, "TERM": "xterm"}, until=b"large", seconds=30)
        if not re.search(rb"\r\d+%, 0 of 1 files, [\d.]+ [MG]B, [\d.]+ [MG]B/s.* large", shown):
            raise Failure(f"no progress: {shown!r}")


def shown_on_terminal(command, folder, environment, until=None, seconds=60):
    """What the program writes to a terminal until it ends or has written `until`."""
    process, terminal = pty.fork()
    if process == 0:
        os.chdir(folder)
        os.execvpe(command[0], command, environment)
    shown = b""
    deadline = time.monotonic() + seconds
    try:
        while time.monotonic() < deadline and not (until and until in shown):
            if select.select([terminal], [], [], 0.1)[0]:
                shown += os.read(terminal, 65536)
    except OSError:  # the program has ended
        pass
    if until:
        os.kill(process, signal.SIGKILL)
    os.waitpid(process, 0)
    os.close(terminal)
    return shown


def test_links(command):
    """Links to folders are not followed, or are followed without loops."""
    with tempfile.TemporaryDirectory() as folder:
        root = pathlib.Path(folder)
        (root / "d/e").mkdir(parents=True)
        (root / "d/e/a").write_bytes(b"abc")
        (root / "other").mkdir()
        (root / "other/b").write_bytes(b"abc")
        (root / "d/loop").symlink_to("..")
        (root / "d/e/loop").symlink_to(".")
        (root / "d/to").symlink_to("../other")
        (root / "d/file").symlink_to("e/a")
        names = lambda *options: subprocess.run(
            [*command, "-r", *options, "d"], cwd=folder, timeout=60, check=True,
            stdout=subprocess.PIPE).stdout.decode().replace(f"{ABC_SHA256}  ", "").split()
        check("without --follow", names(), ["d/file", "d/e/a"])
        # The link to the parent folder is followed once, but not into a folder that is being walked.
        check("with --follow", names("--follow"),
              ["d/file", "d/e/a", "d/loop/other/b", "d/to/b"])


def test_denied(command):
    """A folder and a file that can't be read are reported, and the others are still hashed."""
    if os.geteuid() == 0:
        prefix = ["setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"]
    else:
        prefix = []
    with tempfile.TemporaryDirectory() as folder:
        os.chmod(folder, 0o755)
        root = pathlib.Path(folder)
        (root / "no").mkdir()
        (root / "yes").write_bytes(b"abc")
        (root / "secret").write_bytes(b"abc")
        os.chmod(root / "no", 0)
        os.chmod(root / "secret", 0)
        done = subprocess.run([*prefix, *command, "-r", "."], cwd=folder, capture_output=True,
                              timeout=60, check=False)
        check("exit code", done.returncode, 2)
        check("standard output", done.stdout, f"{ABC_SHA256}  ./yes\n".encode())
        check("standard error", done.stderr, b"swrhash: ./secret: Permission denied\n"
                                             b"swrhash: ./no: Permission denied\n")
        os.chmod(root / "no", 0o755)


TESTS = {
    "posix": [test_interrupt, test_closed_pipe, test_terminal, test_links, test_denied],
    "windows": [test_command_prompt],
}


class Failure(Exception):
    pass


def as_bytes(text):
    return text if isinstance(text, bytes) else os.fsencode(text)


def check(what, actual, wanted):
    if actual != wanted:
        raise Failure(f"{what}: {actual!r}\n  expected: {wanted!r}")


def run_program(command, case, folder):
    def run():
        return subprocess.run([*command, *case["args"]], cwd=folder, capture_output=True, timeout=120,
                              input=as_bytes(case.get("input", "")), check=False)
    done = run()
    is_emulated = len(command) > 1
    if is_emulated and done.returncode != case.get("code", 0) and not done.stdout and not done.stderr:
        # In rare cases Wine does not start a program.
        print(f"{case['what']}: exit code {done.returncode} without any output; running it once more")
        done = run()
    return done


def run_case(command, case):
    with tempfile.TemporaryDirectory() as folder:
        root = folder.encode()
        for name, content in case.get("files", {}).items():
            path = os.path.join(root, as_bytes(name))
            os.makedirs(path if content is None else os.path.dirname(path), exist_ok=True)
            if content is not None:
                pathlib.Path(os.fsdecode(path)).write_bytes(
                    content if isinstance(content, bytes) else content.encode())
        done = run_program(command, case, folder)
        if done.returncode != case.get("code", 0):
            raise Failure(f"exit code: {done.returncode}, with {done.stdout!r} and {done.stderr!r}\n"
                          f"  expected: {case.get('code', 0)}")
        check("standard output", done.stdout, as_bytes(case.get("out", "")))
        err = case.get("err", "")
        if isinstance(err, list):
            for piece in err:
                if as_bytes(piece) not in done.stderr:
                    raise Failure(f"standard error: {done.stderr!r}\n  expected in it: {piece!r}")
        else:
            check("standard error", done.stderr, as_bytes(err))
        for name, content in case.get("after", {}).items():
            check(f"content of {name}", (pathlib.Path(folder) / name).read_bytes(),
                  content if isinstance(content, bytes) else content.encode())
        left = [name for name in os.listdir(folder) if name.endswith(".part")]
        check("files left behind", left, [])


def main():
    if len(sys.argv) < 2 or sys.argv[1].startswith("-"):
        print(__doc__.strip())
        return 0 if "--help" in sys.argv else 2
    program = os.path.abspath(sys.argv[1])
    emulator = sys.argv[2:]
    system = "windows" if program.endswith(".exe") else "posix"
    failures = 0
    rows = [case for case in CASES if case.get("on", system) == system]
    for case in rows:
        try:
            run_case([*emulator, program], case)
        except Failure as failure:
            failures += 1
            print(f"{case['what']} ({case['args']})\n  {failure}")
    for test in TESTS[system]:
        try:
            test([*emulator, program])
        except Failure as failure:
            failures += 1
            print(f"{test.__name__}\n  {failure}")
    print(f"{len(rows)} rows and {len(TESTS[system])} other tests, {failures} failed")
    return 1 if failures else 0


sys.exit(main())
