#!/usr/bin/env python3
"""Runs the real window and checks which libraries it loads, and from where.

    session_test.py SUMWRIGHT.EXE WINDOW_TESTS.EXE SIGNATURE_DRIVER.EXE PLANTED.DLL UNPROTECTED_PROGRAM.EXE

For use inside tools/wine-run --display. The program runs in a folder full of libraries with the names of
Windows' own. It must load none of them, nor any library that gives a process access to a network. Wine
reports each library that a process loads.
"""

import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

# Libraries that the program loads when it first calls them, and that Windows' libraries load in turn. Not the
# known DLLs: Windows always takes them from its own folder, while Wine has no such list. Nor uxtheme and
# version: Wine's comctl32 loads them as it starts, before the program can prevent it.
PLANTED = """bcrypt crypt32 wintrust
comdlg32 iphlpapi propsys secur32 setupapi wininet winmm ws2_32
apphelp bcryptprimitives cryptbase dwmapi edputil linkinfo msasn1 ntmarta ntshrui profapi textshaping
userenv""".split()
# Those that Wine would prefer to load from its own; Windows has no such preference.
OVERRIDDEN = PLANTED[:11]
# Libraries with network access, including name resolution and certificate revocation lists.
NETWORK = {"cryptnet", "dnsapi", "iphlpapi", "mswsock", "netapi32", "urlmon", "winhttp", "wininet", "wsock32", "ws2_32"}
# Drops, verification, pickers, saving, dialogs.
SESSION = "VerifyTest.ADropped*:PickersTest.*:SavingTest.*:CompareFilesTest.SaysWhether*:AboutTest.ShowsTheFolder*"
SYSTEM = re.compile(r"c:\\windows\\(system32|winsxs\\[\w.-]+)\\[^\\]+", re.IGNORECASE)

failures = 0


def expect(what, found, expected):
    global failures
    if found != expected:
        failures += 1
        print(f"{what}: {found!r} instead of {expected!r}")


def windows_path(path):
    return "Z:" + os.path.abspath(path).replace("/", "\\")


def marks(folder):
    return sorted(path.name.removesuffix(".dll.loaded") for path in folder.glob("*.loaded"))


def loaded_by(program, *command):
    """Runs the command; returns its exit code, its output, and the paths of the libraries that processes of
    the program loaded."""
    overrides = os.environ.get("WINEDLLOVERRIDES", "") + ";" + ",".join(OVERRIDDEN) + "=n,b"
    environment = os.environ | {"WINEDEBUG": "+pid,+loaddll", "WINEDLLOVERRIDES": overrides}
    # To files, because Wine's own processes, started meanwhile, would keep a pipe open.
    with tempfile.TemporaryFile() as output, tempfile.TemporaryFile() as log:
        status = subprocess.run([*map(str, command)], stdout=output, stderr=log, timeout=300,
                                env=environment).returncode
        output.seek(0)
        log.seek(0)
        printed = output.read().decode(errors="replace")
        traced = log.read().decode(errors="replace")
    loads = [(process, path.replace("\\\\", "\\")) for process, path in re.findall(
        r'^(\w+):\w+:trace:loaddll:build_module Loaded L"([^"]+)"', traced, re.MULTILINE)]
    own = {process for process, path in loads if path.lower() == windows_path(program).lower()}
    expect(f"observed processes of {program.name}", len(own) > 0, True)
    paths = {path for process, path in loads if process in own and path.lower() != windows_path(program).lower()}
    return status, printed[-2000:], paths


def network_libraries(paths):
    return sorted(NETWORK & {pathlib.PureWindowsPath(path).stem.lower() for path in paths})


def check_libraries(what, folder, paths):
    expect(f"libraries of {what} from other folders",
           sorted(path for path in paths if not SYSTEM.fullmatch(path)), [])
    expect(f"planted libraries loaded by {what}", marks(folder), [])
    expect(f"network libraries loaded by {what}", network_libraries(paths), [])


def main():
    program, window_tests, driver, planted, unprotected = sys.argv[1:]
    with tempfile.TemporaryDirectory(prefix="sumwright-session-") as scratch:
        folder = pathlib.Path(scratch, "Downloads")
        folder.mkdir()
        unprotected = pathlib.Path(shutil.copy(unprotected, folder))
        copy = pathlib.Path(shutil.copy(program, folder / "Sumwright.exe"))

        # Wine's own processes must start before these settings, which they would not survive.
        subprocess.run(["wine", unprotected], check=True, timeout=100)
        # The test detects all of this in a program without protection.
        _, _, paths = loaded_by(unprotected, "wine", unprotected, *(f"{name}.dll" for name in sorted(NETWORK)))
        expect("network libraries loaded by an unprotected program", network_libraries(paths), sorted(NETWORK))
        for name in PLANTED:
            shutil.copy(planted, folder / f"{name}.dll")
        loaded_by(unprotected, "wine", unprotected, *(f"{name}.dll" for name in PLANTED))
        expect("planted libraries loaded by an unprotected program", marks(folder), sorted(PLANTED))
        for mark in folder.glob("*.loaded"):
            mark.unlink()

        status, output, paths = loaded_by(copy, "wine", window_tests, windows_path(copy), "--gtest_brief=1",
                                          f"--gtest_filter={SESSION}")
        expect("the session", (status, output if status else ""), (0, ""))
        check_libraries("the session", folder, paths)

        signed = folder / "signed.exe"
        sign(pathlib.Path(scratch), program, signed)
        status, output, paths = loaded_by(copy, "wine", driver, "details", windows_path(copy), windows_path(signed))
        expect("the signature", (status, output.partition("|")[0].strip()), (0, "Signature:\tSigned by A Stranger, valid"))
        expect("the trust libraries are loaded", {"bcrypt", "crypt32", "wintrust"} <=
               {pathlib.PureWindowsPath(path).stem.lower() for path in paths}, True)
        check_libraries("the signature check", folder, paths)
    sys.exit(1 if failures else 0)


def sign(folder, program, target):
    """Signs with a certificate that names addresses for revocation checks and for its issuer's certificate."""
    key, certificate = folder / "key.pem", folder / "certificate.pem"
    subprocess.run(["openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "30", "-subj", "/CN=A Stranger",
                    "-addext", "extendedKeyUsage=codeSigning",
                    "-addext", "crlDistributionPoints=URI:http://127.0.0.1:9/revoked.crl",
                    "-addext", "authorityInfoAccess=OCSP;URI:http://127.0.0.1:9/ocsp,caIssuers;URI:http://127.0.0.1:9/ca",
                    "-keyout", key, "-out", certificate], check=True, stderr=subprocess.DEVNULL)
    subprocess.run(["osslsigncode", "sign", "-h", "sha256", "-certs", certificate, "-key", key, "-in", program,
                    "-out", target], check=True, stdout=subprocess.DEVNULL)


main()
