#!/usr/bin/env python3
"""Runs the commands in the documents and compares their output with the documents.

    manual_test.py PROGRAM DOCUMENT...
    manual_test.py --write PROGRAM DOCUMENT...     writes the output into the documents instead

The commands are the lines that begin with "$ " in "console" blocks and in comments; the latter prepare the files.
All commands of one document run in order in the same folder.
"""

import os
import pathlib
import re
import subprocess
import sys
import tempfile

BLOCK = re.compile(r"(<!--\n|```console\n)(.*?)(-->|```)\n", re.DOTALL)


def printed(command, folder, path):
    done = subprocess.run(["bash", "-c", command], cwd=folder, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, timeout=60, check=False,
                          env={"PATH": f"{path}:/usr/bin:/bin", "LC_ALL": "C.UTF-8"})
    return done.stdout.decode()


def rewritten(text, path):
    with tempfile.TemporaryDirectory() as folder:
        def run(match):
            lines = []
            for line in match.group(2).splitlines(keepends=True):
                if not line.startswith("$ "):
                    continue
                lines.append(line + printed(line[2:], folder, path))
            return match.group(1) + "".join(lines) + match.group(3) + "\n"

        return BLOCK.sub(run, text)


def main():
    arguments = sys.argv[1:]
    is_writing = arguments[:1] == ["--write"]
    arguments = arguments[is_writing:]
    if len(arguments) < 2:
        print(__doc__.strip())
        return 2
    path = os.path.dirname(os.path.abspath(arguments[0]))
    failures = 0
    for name in arguments[1:]:
        document = pathlib.Path(name)
        text = document.read_text()
        wanted = rewritten(text, path)
        commands = sum(block.count("\n$ ") + block.startswith("$ ")
                       for _, block, _ in BLOCK.findall(text))
        if commands == 0:
            failures += 1
            print(f"{name}: no command")
        if is_writing:
            document.write_text(wanted)
        elif text != wanted:
            failures += 1
            for old, new in zip(text.splitlines(), wanted.splitlines()):
                if old != new:
                    print(f"{name}: the document has\n  {old}\n  but the output is\n  {new}")
                    break
        print(f"{name}: {commands} commands")
    return 1 if failures else 0


sys.exit(main())
