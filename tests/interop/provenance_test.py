#!/usr/bin/env python3
"""Checks what the trust services and the real window report for signed programs and downloaded files.

    provenance_test.py SUMWRIGHT.EXE SIGNATURE_DRIVER.EXE

For use inside tools/wine-run --display. Certificates and signatures are made by the test.
"""

import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

CONFIGURATION = """
[ca]
default_ca = authority
[authority]
database = {folder}/index.txt
serial = {folder}/serial
new_certs_dir = {folder}
default_md = sha256
policy = any
unique_subject = no
x509_extensions = signing
[any]
commonName = supplied
[root]
basicConstraints = critical, CA:true
keyUsage = critical, keyCertSign
[signing]
basicConstraints = critical, CA:false
keyUsage = critical, digitalSignature
extendedKeyUsage = codeSigning
[req]
distinguished_name = name
[name]
"""


def run(*command):
    subprocess.run([str(part) for part in command], check=True, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE)


class Authority:
    """A certificate authority: a root certificate and the certificates that it issues."""

    def __init__(self, folder, name):
        self.folder = folder
        folder.mkdir()
        self.configuration = folder / "openssl.cnf"
        self.configuration.write_text(CONFIGURATION.format(folder=folder))
        (folder / "index.txt").touch()
        (folder / "serial").write_text("1000\n")
        run("openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "3650", "-subj", f"/CN={name}",
            "-keyout", folder / "root.key", "-out", folder / "root.pem", "-config", self.configuration,
            "-extensions", "root")
        run("openssl", "x509", "-in", folder / "root.pem", "-outform", "DER", "-out", folder / "root.der")

    def issue(self, name, start, end):
        """Issues a certificate. Times are YYMMDD. Returns certificate and key."""
        stem = self.folder / name.replace(" ", "-")
        run("openssl", "req", "-newkey", "rsa:2048", "-nodes", "-subj", f"/CN={name}", "-keyout", f"{stem}.key",
            "-out", f"{stem}.csr", "-config", self.configuration)
        run("openssl", "ca", "-batch", "-notext", "-config", self.configuration, "-cert", self.folder / "root.pem",
            "-keyfile", self.folder / "root.key", "-in", f"{stem}.csr", "-out", f"{stem}.pem",
            "-startdate", f"{start}000000Z", "-enddate", f"{end}000000Z")
        return f"{stem}.pem", f"{stem}.key"

    def sign(self, program, target, certificate, key):
        run("osslsigncode", "sign", "-h", "sha256", "-certs", certificate, "-ac", self.folder / "root.pem",
            "-key", key, "-in", program, "-out", target)


def windows_path(path):
    return "Z:" + os.path.abspath(path).replace("/", "\\")


def driver_output(driver, *arguments):
    out = subprocess.run(["wine", driver, *arguments], check=True, stdout=subprocess.PIPE, timeout=300).stdout
    return out.decode().splitlines()


def main():
    program, driver = sys.argv[1:]
    for tool in ["openssl", "osslsigncode"]:
        if shutil.which(tool) is None:
            sys.exit(f"not installed: {tool}")
    with tempfile.TemporaryDirectory(prefix="sumwright-provenance-") as scratch:
        sys.exit(check(pathlib.Path(scratch), program, driver))


def make_files(folder, unsigned):
    trusted = Authority(folder / "trusted", "Sumwright Trusted Test Root")
    other = Authority(folder / "other", "Sumwright Other Test Root")
    valid = trusted.issue("Sumwright Tester", "250101", "450101")
    trusted.sign(unsigned, folder / "trusted.exe", *valid)
    other.sign(unsigned, folder / "untrusted.exe", *other.issue("A Stranger", "250101", "450101"))
    trusted.sign(unsigned, folder / "expired.exe", *trusted.issue("A Former Tester", "200101", "210101"))
    altered = bytearray((folder / "trusted.exe").read_bytes())
    altered[len(altered) // 2] ^= 1
    (folder / "altered.exe").write_bytes(altered)
    shutil.copy(unsigned, folder / "unsigned.exe")
    (folder / "text.txt").write_text("text\n")
    with open(folder / "large.bin", "wb") as file:
        file.truncate((256 << 20) + 1)
    return trusted


def check(folder, program, driver):
    trusted = make_files(folder, driver)
    failures = 0

    def expect(what, found, expected):
        nonlocal failures
        if found != expected:
            failures += 1
            print(f"{what}: {found!r} instead of {expected!r}")

    driver_output(driver, "trust", windows_path(trusted.folder / "root.der"))
    # State (the number in SignatureState), signer, whether found in a catalog, error code.
    expected = {
        "trusted.exe": "2\tSumwright Tester\t0\t00000000",
        # Wine trusts any complete chain, whatever its root and its dates; Windows returns 800b0109 and
        # 800b0101, which are Untrusted.
        "untrusted.exe": "2\tA Stranger\t0\t00000000",
        "expired.exe": "2\tA Former Tester\t0\t00000000",
        # Nor does it report the signer of an altered program.
        "altered.exe": "3\t\t0\t80096010",
        "unsigned.exe": "1\t\t0\t800b0100",
        "text.txt": "0\t\t0\t800b0003",
        "large.bin": "0\t\t0\t800b0003",
        "gone.exe": "5\t\t0\t00000002",
    }
    found = driver_output(driver, "check", *(windows_path(folder / name) for name in expected))
    for (name, line), shown in zip(expected.items(), found, strict=True):
        expect(name, shown, line)

    driver_output(driver, "mark", windows_path(folder / "trusted.exe"),
                  "[ZoneTransfer]|ZoneId=3|HostUrl=https://example.com/get?a=b|ReferrerUrl=https://example.com/")
    driver_output(driver, "mark", windows_path(folder / "altered.exe"), "[ZoneTransfer]|ZoneId=3|")
    details = {
        "trusted.exe": "Signature:\tSigned by Sumwright Tester, valid|Downloaded from:\thttps://example.com/get?a=b|"
                       "From the page:\thttps://example.com/",
        "altered.exe": "Signature:\tSigned, but the signature is not valid (the file was changed "
                       "after signing)|Downloaded from:\tthe Internet (no address recorded)",
        "unsigned.exe": "Signature:\tNot signed",
        "text.txt": "Signature:\tNot applicable (this file type has no digital signature)",
    }
    found = driver_output(driver, "details", windows_path(program),
                          *(windows_path(folder / name) for name in details))
    for (name, line), shown in zip(details.items(), found, strict=True):
        expect(f"details of {name}", shown, line)
    return 1 if failures else 0


main()
