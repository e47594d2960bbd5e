#!/usr/bin/env python3
"""Tests the test kit as its users get it: unpacked where this repository is not accessible, run from the
command prompt, with a failing test, and interrupted.

    kit_test.py PACKAGE_COMMAND CLIPBOARD_TEXT.EXE
    kit_test.py --once KIT.zip CLIPBOARD_TEXT.EXE

For use inside tools/wine-run --display. The second form only runs the kit once, in this prefix; the first also
runs it in a 32-bit prefix. Exit code 77 says that 32-bit programs can't be run here.
"""

import os
import pathlib
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import zipfile

ROOT = pathlib.Path(__file__).resolve().parents[2]
HAS_WINE32 = os.access("/usr/lib/wine/wine", os.X_OK)
NOT_TRIED = 77  # ctest reports the test as skipped

SETTINGS = r"HKCU\Software\Zendrik\Sumwright"
ENTRY = r"HKCU\Software\Classes\*\shell\ZendrikSumwright"
FOLDER_ENTRY = r"HKCU\Software\Classes\Directory\shell\ZendrikSumwright"
CLIPBOARD = "what the user had copied"
LINK = b"the user's own link"

failures = 0


def expect(what, found, expected):
    global failures
    if found != expected:
        failures += 1
        print(f"{what}: {found!r} instead of {expected!r}")


def wine(*command, **options):
    return subprocess.run(["wine", *map(str, command)], timeout=600, stdout=subprocess.PIPE,
                          stderr=subprocess.DEVNULL, **options)


def wait_until(condition, seconds=60):
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        if condition():
            return True
        time.sleep(0.2)
    return False


class Kit:
    """The kit, unpacked in the prefix."""

    def __init__(self, archive, clipboard_text):
        self.drive = pathlib.Path(os.environ["WINEPREFIX"], "drive_c")
        self.home = self.drive / "users" / (os.environ.get("USER") or "root")
        # A name that needs quotes and is not ASCII.
        self.folder = self.home / "Downloads" / "Test kit (\u00fc)"
        zipfile.ZipFile(archive).extractall(self.folder)
        self.clipboard_text = shutil.copy(clipboard_text, self.drive / "clipboard_text.exe")
        self.link = self.home / "AppData/Roaming/Microsoft/Windows/SendTo/Sumwright.lnk"
        # The host's files, including this repository, are no longer accessible.
        (pathlib.Path(os.environ["WINEPREFIX"]) / "dosdevices/z:").unlink()
        expect("the host's drive", wine("cmd", "/c", "dir", "Z:\\").returncode != 0, True)

    def start(self, *options):
        return subprocess.Popen(["wine", "cmd.exe", "/c", "run-tests.cmd", *options, "/yes"], cwd=self.folder,
                                stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)

    def run(self, *options):
        """Exit code and what was printed."""
        process = self.start(*options)
        output, _ = process.communicate(timeout=900)
        return process.returncode, output.decode(errors="replace")

    def report(self):
        return (self.folder / "report.txt").read_text()

    # --- What belongs to the user ------------------------------------------------------------------

    def set_user_state(self):
        wine("reg", "add", SETTINGS, "/v", "Algorithms", "/t", "REG_DWORD", "/d", "512", "/f")
        wine("reg", "add", SETTINGS, "/v", "Of the user", "/t", "REG_SZ", "/d", "stays", "/f")
        wine("reg", "add", SETTINGS + r"\below", "/v", "bytes", "/t", "REG_BINARY", "/d", "00ff10", "/f")
        wine("reg", "add", ENTRY + r"\command", "/ve", "/d", r"C:\mine.exe %1", "/f")
        wine("reg", "delete", FOLDER_ENTRY, "/f")
        self.link.write_bytes(LINK)
        wine(self.clipboard_text, "set", CLIPBOARD)

    def user_state(self):
        keys = [wine("reg", "query", key, "/s").stdout.decode().replace("\r", "")
                for key in (SETTINGS, ENTRY, FOLDER_ENTRY, r"HKCU\Software\SumwrightTest",
                            r"HKCU\Software\Sumwright browser of the tests")]
        return {"keys": keys, "link": self.link.read_bytes() if self.link.is_file() else None,
                "clipboard": wine(self.clipboard_text, "get").stdout.decode(),
                "files": sorted(path.name for path in (self.drive / "users/Public").iterdir()),
                "record": (self.home / "AppData/Local/Sumwright test kit").exists()}

    def settings_are_gone(self):
        return b"Of the user" not in wine("reg", "query", SETTINGS).stdout

    # --- Interruptions -----------------------------------------------------------------------------

    def runner_processes(self):
        """Process ids of the runner and of its guard."""
        runner, guard = [], []
        for folder in pathlib.Path("/proc").iterdir():
            try:
                command = (folder / "cmdline").read_bytes().split(b"\0")
                environment = (folder / "environ").read_bytes().split(b"\0")
            except (OSError, ValueError):
                continue
            if f"WINEPREFIX={os.environ['WINEPREFIX']}".encode() not in environment:
                continue
            if any(part.endswith(b"kit_runner.exe") for part in command):
                (guard if b"/guard" in command else runner).append(int(folder.name))
        return runner, guard

    def start_and_interrupt(self, what, end):
        """Starts the window's tests, and calls `end` with the runner and the guard once the tests are running."""
        process = self.start("/only:The window")
        expect(f"{what}: the tests are under way", wait_until(self.settings_are_gone), True)
        runner, guard = self.runner_processes()
        expect(f"{what}: runner and guard", (len(runner), len(guard)), (1, 1))
        end(runner, guard)
        process.communicate(timeout=120)
        return process.returncode


def kill(processes, number=signal.SIGKILL):
    for process in processes:
        os.kill(process, number)


def press_control_c(kit, runner):
    """Repeated as often as necessary, because on a busy machine Wine can lose the signal."""
    for _ in range(5):
        kill(runner, signal.SIGINT)
        if wait_until(lambda: kit.runner_processes()[0] == [], 20):
            return


def run_once(kit):
    before = kit.user_state()
    code, output = kit.run("/quick")
    expect("exit code of the kit", (code, output[-3000:] if code else ""), (0, ""))
    report = kit.report() if (kit.folder / "report.txt").exists() else ""
    for part in ("none failed", "Your settings, clipboard and menu entries were restored.", "Not a real Windows",
                 "Skipped tests", "a locked part of a file can be read here"):
        expect(f"{part!r} in the report", part in report, True)
    expect("redaction", os.environ.get("USER", "root") + "\\Downloads" in report, False)
    page = (kit.folder / "report.html").read_text()
    expect("pictures in the page", page.count("data:image/png;base64,") >= 3, True)
    expect("state after the run", kit.user_state(), before)


def run_with_failure(kit):
    data = kit.folder / "tests/data/checksums/data/golden.sha256"
    content = data.read_bytes()
    data.write_bytes(content + b"more\n")
    code, output = kit.run("/quick", "/only:Core")
    data.write_bytes(content)
    expect("exit code with a failure", code, 1)
    expect("failed test on the console", "1 FAILED" in output, True)
    report = kit.report()
    expect("failed test in the report",
           "Core (64-bit): RenderChecksumsTest." in report.partition("Tests that failed")[2].partition("Each test")[0],
           True)


def run_without_a_file(kit):
    data = kit.folder / "tests/data"
    data.rename(kit.folder / "tests/elsewhere")
    code, output = kit.run("/quick")
    (kit.folder / "tests/elsewhere").rename(data)
    expect("exit code of an incomplete kit", code, 2)
    expect("message of an incomplete kit", "unpack the whole zip" in output, True)


def interrupt(kit):
    before = kit.user_state()

    code = kit.start_and_interrupt("Ctrl+C", lambda runner, guard: press_control_c(kit, runner))
    expect("exit code after Ctrl+C", code, 1)
    expect("state after Ctrl+C", kit.user_state(), before)
    expect("report after Ctrl+C", "The run was not finished: It was stopped." in kit.report(), True)

    kit.start_and_interrupt("killed", lambda runner, guard: kill(runner))
    expect("the guard ends", wait_until(lambda: kit.runner_processes() == ([], [])), True)
    expect("state after the runner was killed", kit.user_state(), before)

    kit.start_and_interrupt("both killed", lambda runner, guard: kill(guard + runner))
    expect("settings before they are restored", kit.settings_are_gone(), True)
    code, output = kit.run("/restore")
    expect("the next start restores them", (code, "An earlier run was interrupted." in output), (0, True))
    expect("state after that", kit.user_state(), before)


def main():
    if sys.argv[1] == "--once":
        kit = Kit(*sys.argv[2:])
        kit.set_user_state()
        run_once(kit)
        sys.exit(1 if failures else 0)
    if not HAS_WINE32:
        print("NOT TRIED: the test kit, because 32-bit Wine (wine32) is not installed")
        sys.exit(NOT_TRIED)
    package, clipboard_text = map(os.path.abspath, sys.argv[1:])
    with tempfile.TemporaryDirectory(prefix="sumwright-test-kit-") as scratch:
        subprocess.run([package, "--test-kit", scratch], check=True, stdout=subprocess.DEVNULL, timeout=1800)
        archive = pathlib.Path(scratch, "sumwright-test-kit.zip")
        kit = Kit(archive, clipboard_text)
        kit.set_user_state()
        run_once(kit)
        run_with_failure(kit)
        run_without_a_file(kit)
        interrupt(kit)
        other = ROOT / "build/windows-x86/tests/clipboard_text.exe"
        status = subprocess.run([ROOT / "tools/wine-run", "--display", "--", sys.executable, __file__, "--once", archive,
                                 other], env=os.environ | {"WINEARCH": "win32"}, timeout=900).returncode
        expect("exit code on 32-bit Windows", status, 0)
    sys.exit(1 if failures else 0)


if __name__ == "__main__":
    main()
