#!/usr/bin/env python3
"""Checks the manual page and the shell completions that are generated from the option table.

    documents_test.py PROGRAM FOLDER
"""

import pathlib
import re
import subprocess
import sys


def run(*command, **options):
    return subprocess.run(command, capture_output=True, timeout=60, check=False, text=True, **options)


def completions(folder, line):
    """The completions that bash offers for the line."""
    script = (f"source {folder}/swrhash.bash; compopt() {{ :; }}\n"
              f"COMP_WORDS=({line}); [[ $1 != + ]] || COMP_WORDS+=('')\n"
              "COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _swrhash; printf '%s\\n' \"${COMPREPLY[@]}\"")
    done = run("bash", "-c", script, "bash", "+" if line.endswith(" ") else "-")
    assert done.stderr == "", done.stderr
    return done.stdout.split()


def main():
    if len(sys.argv) != 3:
        print(__doc__.strip())
        return 2
    program, folder = sys.argv[1], pathlib.Path(sys.argv[2])
    options = re.findall(r"--[a-z][a-z-]*", run(program, "--help").stdout)
    assert len(set(options)) > 20, options

    done = run("man", "--warnings", "-l", "-Tutf8", str(folder / "swrhash.1"),
               env={"LC_ALL": "C.UTF-8", "MANWIDTH": "80", "PATH": "/usr/bin:/bin"})
    assert done.returncode == 0 and done.stderr == "", done.stderr
    page = re.sub(r".\x08|\x1b\[[0-9;]*m", "", done.stdout)
    for option in options:
        assert option in page, f"the manual page lacks {option}"
    for word in ("NAME", "SYNOPSIS", "EXIT STATUS", "EXAMPLES", "sha3-256", "NO_COLOR"):
        assert word in page, f"the manual page lacks {word}"

    for name in ("swrhash.bash", "_swrhash", "swrhash.fish", "swrhash-completion.ps1"):
        text = (folder / name).read_text()
        for option in options:
            wanted = f"-l {option[2:]}" if name.endswith(".fish") else option
            assert wanted in text, f"{name} lacks {option}"

    assert completions(folder, "swrhash --pr") == ["--prune"]
    assert completions(folder, "swrhash -a sha3-") == ["sha3-256", "sha3-384", "sha3-512"]
    assert completions(folder, "swrhash -a md5,bl") == ["md5,blake3"]
    assert completions(folder, "swrhash --format ") == ["sum", "bsd", "sfv", "csv", "json"]
    assert completions(folder, "swrhash --color=x --color al") == ["always"]

    for shell, name in (("zsh", "_swrhash"), ("fish", "swrhash.fish")):
        done = run(shell, "-n", str(folder / name))
        assert done.returncode == 0 and done.stderr == "", (shell, done.stderr)
    shown = run("fish", "-c", f"source {folder}/swrhash.fish; complete -C 'swrhash --ex'").stdout
    assert {line.split("\t")[0] for line in shown.splitlines()} == {
        "--exclude", "--expect", "--extra"}, shown
    print(f"{len(set(options))} options are documented and completed")
    return 0


sys.exit(main())
