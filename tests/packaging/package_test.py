#!/usr/bin/env python3
"""Tests the downloads: builds them twice, unpacks them, starts every program, installs, uses and uninstalls.

    package_test.py PACKAGE_COMMAND WINDOW_TESTS.EXE VERDICT_DRIVER.EXE
    package_test.py --setup FOLDER WINDOW_TESTS.EXE MACHINE

For use inside tools/wine-run --display. The second form tests only the setup in FOLDER, in this prefix, where
it must install the program for MACHINE; the first also runs it in a 32-bit prefix. Exit code 77 means that
32-bit programs can't be run here and everything else passed.
"""

import hashlib
import json
import os
import pathlib
import re
import struct
import subprocess
import sys
import tempfile
import time
import zipfile

ROOT = pathlib.Path(__file__).resolve().parents[2]
VERSION = re.search(r"^project\(Sumwright VERSION (\S+)", (ROOT / "CMakeLists.txt").read_text(), re.MULTILINE)[1]
SETUP = "sumwright-setup.exe"
ZIP = "sumwrite.zip"
DEB = f"swrhash_{VERSION}_amd64.deb"
MANIFESTS = ("scoop/sumwright.json", "winget/Zendrik.Sumwright.yaml", "winget/Zendrik.Sumwright.installer.yaml",
             "winget/Zendrik.Sumwright.locale.en-US.yaml")
TEXTS = ("LICENSE.txt", "NOTICE.txt", "swrhash-completion.ps1")
UNINSTALL_KEY = (r"HKCU\Software\Microsoft\Windows\CurrentVersion\Uninstall"
                 r"\{6C0E5B52-8D3A-4F0B-9E47-1A2D7C93F5E8}_is1")
EXPLORER_ENTRY = r"HKCU\Software\Classes\*\shell\ZendrikSumwright"
SETTINGS_KEY = r"HKCU\Software\Zendrik"
X64, X86 = 0x8664, 0x014C  # machines of the PE format
READERS = {X64: ROOT / "build/windows/tools/read_list.exe", X86: ROOT / "build/windows-x86/tools/read_list.exe"}
HAS_WINE32 = os.access("/usr/lib/wine/wine", os.X_OK)
NOT_ALL_TRIED = 77  # ctest reports the test as skipped

failures = 0


def expect(what, found, expected):
    global failures
    if found != expected:
        failures += 1
        print(f"{what}: {found!r} instead of {expected!r}")


def windows_path(path):
    return "Z:" + str(path).replace("/", "\\")


def run(*command, **options):
    return subprocess.run([*map(str, command)], check=True, timeout=300, **options)


def wine(*command):
    return subprocess.run(["wine", *map(str, command)], timeout=300, stdout=subprocess.PIPE,
                          stderr=subprocess.DEVNULL)


def in_registry(key, value=None):
    """The value as text, True for an existing key, None for what does not exist."""
    query = wine("reg", "query", key, *(["/v", value] if value else []))
    if query.returncode != 0:
        return None
    if value is None:
        return True
    lines = query.stdout.decode().splitlines()
    return next(line.split("REG_SZ", 1)[1].strip() for line in lines if "REG_SZ" in line)


def check_same_bytes(first, second):
    for file in (ZIP, SETUP, DEB, "SHA256SUMS", *MANIFESTS):
        expect(f"{file} is reproducible", first.joinpath(file).read_bytes() ==
               second.joinpath(file).read_bytes(), True)


def check_sums(dist, program, driver):
    """SHA256SUMS has the bytes that Sumwright itself would save, and Sumwright verifies it."""
    lines = [f"{hashlib.sha256((dist / name).read_bytes()).hexdigest()}  {name}\n" for name in (SETUP, ZIP, DEB)]
    expect("SHA256SUMS", (dist / "SHA256SUMS").read_text(), "".join(lines))
    verified = wine(driver, windows_path(program), "verify", windows_path(dist / "SHA256SUMS"))
    result = [line for line in verified.stdout.decode().splitlines() if line.startswith("result")]
    expect("verification", result, ["result\tAll 3 files are OK."])
    saved = dist / "saved.sha256"
    sha256 = 8
    wine(driver, windows_path(program), "save", sha256, "SHA-256 checksums, sha256sum format (*.sha256)",
         windows_path(saved), *(windows_path(dist / name) for name in (SETUP, ZIP, DEB)))
    expect("the list that Sumwright saves", saved.read_bytes(), (dist / "SHA256SUMS").read_bytes())


def machine_of(program):
    content = program.read_bytes()
    header = struct.unpack_from("<I", content, 0x3C)[0]
    return struct.unpack_from("<H", content, header + 4)[0]


def start_window(program, window_tests):
    """A portable copy: its window opens, shows its location, and closes."""
    tests = wine(window_tests[machine_of(program)], windows_path(program), "--gtest_brief=1",
                 "--gtest_filter=AboutTest.*:StartTest.PathsOfTheCommandLine*")
    expect(f"{program.name}, started", (tests.returncode, tests.stdout.decode()[-2000:] if tests.returncode else ""),
           (0, ""))


def run_tool(program, _window_tests):
    """The command-line tool: its version, and a list that sha256sum reads."""
    version = wine(windows_path(program), "--version")
    expect(f"{program.name} --version", (version.returncode, version.stdout), (0, f"swrhash {VERSION}\n".encode()))
    listed = wine(windows_path(program), windows_path(program))
    with tempfile.NamedTemporaryFile(suffix=".sha256") as sums:
        sums.write(listed.stdout.replace(b"Z:", b""))
        sums.flush()
        verified = subprocess.run(["sha256sum", "--strict", "-c", sums.name], stdout=subprocess.PIPE, check=False)
        expect(f"list of {program.name}", verified.stdout, f"{program}: OK\n".encode())


# Every program in the zip: its machine, and the function that starts it.
PROGRAMS = {
    "Sumwright.exe": (X64, start_window),
    "Sumwright-x86.exe": (X86, start_window),
    "swrhash.exe": (X86, run_tool),
    "swrhash64.exe": (X64, run_tool),
}


def check_zip(dist, folder, window_tests):
    zipfile.ZipFile(dist / ZIP).extractall(folder)
    expect("files in the zip", sorted(path.name for path in folder.iterdir()),
           sorted([*PROGRAMS, *TEXTS]))
    for name, (machine, start) in PROGRAMS.items():
        expect(f"machine of {name}", machine_of(folder / name), machine)
        if machine == X64 or HAS_WINE32:
            start(folder / name, window_tests)


def check_deb(dist, folder):
    """The files are where Debian expects them, the program runs, and lintian reports no error."""
    run("dpkg-deb", "-x", dist / DEB, folder)
    listed = subprocess.run([folder / "usr/bin/swrhash", "SHA256SUMS"], cwd=dist, stdout=subprocess.PIPE, check=False)
    sums = hashlib.sha256((dist / "SHA256SUMS").read_bytes()).hexdigest()
    expect("what the packaged program prints", listed.stdout.decode(), f"{sums}  SHA256SUMS\n")
    for file in ("share/man/man1/swrhash.1.gz", "share/bash-completion/completions/swrhash",
                 "share/zsh/vendor-completions/_swrhash", "share/fish/vendor_completions.d/swrhash.fish",
                 "share/doc/swrhash/copyright", "share/doc/swrhash/changelog.gz"):
        expect(f"{file} in the Debian package", (folder / "usr" / file).is_file(), True)
    checked = subprocess.run(["lintian", "--allow-root", "--fail-on", "error", dist / DEB], stdout=subprocess.PIPE,
                             stderr=subprocess.STDOUT, check=False)
    expect("lintian", (checked.returncode, checked.stdout.decode() if checked.returncode else ""), (0, ""))


def check_manifests(dist):
    """The manifests contain the digests of the files, the version and no other addresses."""
    digests = {name: hashlib.sha256((dist / name).read_bytes()).hexdigest() for name in (SETUP, ZIP)}
    scoop = json.loads((dist / "scoop/sumwright.json").read_text())
    expect("digest for Scoop", scoop["hash"], digests[ZIP])
    expect("programs for Scoop", scoop["bin"], [["swrhash64.exe", "swrhash"]])
    installer = (dist / "winget/Zendrik.Sumwright.installer.yaml").read_text()
    expect("digest for winget", f"InstallerSha256: {digests[SETUP].upper()}\n" in installer, True)
    for name in MANIFESTS:
        text = (dist / name).read_text()
        expect(f"version in {name}", VERSION in text, True)
        expect(f"other hosts in {name}",
               set(re.findall(r"https://([^/\s\"]+)", text)) - {"aka.ms", "sumwright.example"}, set())


def wait_until(condition):
    for _ in range(300):
        if condition():
            return True
        time.sleep(0.1)
    return False


def check_setup(dist, drive, window_tests, machine):
    home = pathlib.Path(drive, "users", os.environ.get("USER") or "root")
    programs = home / "AppData/Local/Programs"
    start_menu = home / "AppData/Roaming/Microsoft/Windows/Start Menu/Programs/Sumwright.lnk"
    send_to = home / "AppData/Roaming/Microsoft/Windows/SendTo/Sumwright.lnk"
    folder = programs / "Sumwright"
    location = windows_path_in_prefix(drive, folder)
    setup = windows_path(dist / SETUP)

    expect("exit code of the setup", wine(setup, "/S").returncode, 0)
    expect("files", sorted(path.name for path in folder.iterdir()),
           sorted([*TEXTS, "Sumwright.exe", "Uninstall.exe", "swrhash.exe", "swrhash64.exe"]))
    version = wine(location + r"\swrhash.exe", "--version")
    expect("the installed command-line tool", (version.returncode, version.stdout), (0, f"swrhash {VERSION}\n".encode()))
    expect("machine of the installed program", machine_of(folder / "Sumwright.exe"), machine)
    expect("Start menu", start_menu.is_file(), True)
    expect("InstallLocation", in_registry(UNINSTALL_KEY, "InstallLocation"), location)
    expect("version", in_registry(UNINSTALL_KEY, "DisplayVersion"), VERSION)
    expect("Explorer entry without /EXPLORER", in_registry(EXPLORER_ENTRY), None)

    expect("exit code of the setup over itself", wine(setup, "/S", "/EXPLORER").returncode, 0)
    expect("Explorer entry", in_registry(EXPLORER_ENTRY), True)
    installed = wine(window_tests, location + r"\Sumwright.exe", "--gtest_brief=1",
                     "--gtest_filter=InstalledCopyTest.*")
    expect("the installed copy", (installed.returncode, installed.stdout.decode()[-2000:] if installed.returncode
                                  else ""), (0, ""))
    expect("Send To link", send_to.is_file(), True)

    # A running program can't be replaced or uninstalled.
    reader = READERS[machine]
    expect("the program, started", wine(reader, "--start", location + r"\Sumwright.exe").returncode, 0)
    expect("exit code of the setup while the program runs", wine(setup, "/S").returncode, 2)
    wine(location + r"\Uninstall.exe", "/S", "_?=" + location)
    expect("the program, uninstalled while it runs", (folder / "Sumwright.exe").is_file(), True)
    expect("the program, closed", wine(reader, "--close").returncode, 0)

    expect("settings", in_registry(SETTINGS_KEY), True)
    (folder / "of the user.txt").write_text("stays")
    uninstall(location, folder / "Uninstall.exe")
    expect("what is left in the folder", [path.name for path in folder.iterdir()], ["of the user.txt"])
    (folder / "of the user.txt").unlink()
    folder.rmdir()
    check_nothing_is_left(start_menu, send_to)

    elsewhere = pathlib.Path(drive, "my programs", "Sumwright here")
    # The setup takes the rest of its command line literally, including blanks, so it must not be quoted.
    expect("exit code of the setup to another folder",
           wine(setup, "/S", *r"/D=C:\my programs\Sumwright here".split()).returncode, 0)
    expect("the program in another folder", (elsewhere / "Sumwright.exe").is_file(), True)
    uninstall(r"C:\my programs\Sumwright here", elsewhere)
    check_nothing_is_left(start_menu, send_to)


def uninstall(location, last):
    # It runs from a copy of itself, because a program can't delete its own file. Wait for that copy.
    wine(location + r"\Uninstall.exe", "/S")
    expect(f"{last} after uninstalling", wait_until(lambda: not last.exists()), True)


def check_nothing_is_left(start_menu, send_to):
    for key in (UNINSTALL_KEY, EXPLORER_ENTRY, SETTINGS_KEY):
        expect(f"{key} after uninstalling", in_registry(key), None)
    for link in (start_menu, send_to):
        expect(f"{link} after uninstalling", link.exists(), False)


def windows_path_in_prefix(drive, path):
    return "C:\\" + str(path.relative_to(drive)).replace("/", "\\")


def build_window_tests_x86():
    """The tests of the 32-bit window, which ./check has already built."""
    run("cmake", "--build", "--preset", "windows-x86", "--target", "window_tests", "read_list", cwd=ROOT,
        stdout=subprocess.DEVNULL)
    return ROOT / "build/windows-x86/tests/window_tests.exe"


def check_setup_on_32_bit_windows(dist, window_tests):
    status = subprocess.run(
        [ROOT / "tools/wine-run", "--display", "--screen", "3200x2800", "--", sys.executable, __file__, "--setup", dist,
         window_tests, str(X86)], env=os.environ | {"WINEARCH": "win32"}, timeout=600).returncode
    expect("exit code of the test of the setup on 32-bit Windows", status, 0)


def check_package(package, window_tests, driver):
    tests = {X64: window_tests}
    with tempfile.TemporaryDirectory(prefix="sumwright-package-") as scratch:
        first, second, unpacked = (pathlib.Path(scratch, name) for name in ("first", "second", "unpacked"))
        for folder in (first, second):
            run(package, folder, stdout=subprocess.DEVNULL)
        if HAS_WINE32:
            tests[X86] = build_window_tests_x86()
        check_same_bytes(first, second)
        check_deb(first, pathlib.Path(scratch, "debian"))
        check_manifests(first)
        check_zip(first, unpacked, tests)
        check_sums(first, unpacked / "Sumwright.exe", driver)
        if HAS_WINE32:
            check_setup(first, drive_c(), window_tests, X64)
            check_setup_on_32_bit_windows(first, tests[X86])


def drive_c():
    return pathlib.Path(os.environ["WINEPREFIX"], "drive_c")


def main():
    if sys.argv[1] == "--setup":
        _, _, dist, window_tests, machine = sys.argv
        check_setup(pathlib.Path(dist), drive_c(), window_tests, int(machine))
    else:
        check_package(*map(os.path.abspath, sys.argv[1:]))
    if not failures and not HAS_WINE32:
        print("NOT TRIED: the setup and the 32-bit programs, because 32-bit Wine (wine32) is not installed")
        sys.exit(NOT_ALL_TRIED)
    sys.exit(1 if failures else 0)


main()
