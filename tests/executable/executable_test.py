#!/usr/bin/python3
"""Inspects the executable file: hardening flags, imports, manifest.

    executable_test.py PROGRAM.EXE PROGRAM.MAP

PROGRAM is Sumwright or swrhash. The map is the linker's; it has the addresses of the functions, which
a stripped file no longer names.
"""

import dataclasses
import pathlib
import re
import struct
import sys
import xml.etree.ElementTree

import pefile

WINDOWS_7 = pathlib.Path(__file__).with_name("windows7_functions.txt")


@dataclasses.dataclass(frozen=True)
class Expected:
    """What differs between the programs."""

    # Loaded at the start. Every version of Windows takes these from its own folder ("known DLLs"), even if
    # the program's folder has files of these names; the manifest selects comctl32 from the side-by-side
    # store.
    loaded_at_start: frozenset
    loaded_later: frozenset  # by full path, when first needed
    fewest_imports: int
    fewest_guarded_functions: int


EXPECTED = {
    "Sumwright": Expected(
        frozenset({"advapi32.dll", "comctl32.dll", "gdi32.dll", "kernel32.dll", "msvcrt.dll", "ole32.dll",
                   "shell32.dll", "shlwapi.dll", "user32.dll"}),
        frozenset({"bcrypt.dll", "crypt32.dll", "uxtheme.dll", "wintrust.dll"}), 200, 150),
    # advapi32 is a known DLL too; the C runtime gets its random numbers from there.
    "swrhash": Expected(frozenset({"kernel32.dll", "msvcrt.dll", "shlwapi.dll"}),
                        frozenset({"advapi32.dll", "bcrypt.dll"}), 80, 100),
}
# Already loaded, and queried for functions that older systems lack. On 32-bit Windows the compiler's start-up
# code also looks for its own library, which it uses only if it is loaded.
QUERIED = {True: {"ntdll.dll"}, False: {"ntdll.dll", "libgcc_s_dw2-1.dll"}}
# Libraries whose names end in these could access a network.
NETWORK = re.compile(r"ws2_32|wsock32|mswsock|winhttp|wininet|urlmon|dnsapi|iphlpapi|rasapi|netapi|wldap|"
                     r"httpapi|webio|websocket|winrnr|bitsadmin|wsdapi|xmlhttp|socket|internetopen|urldownload|"
                     r"cryptretrieveobject", re.IGNORECASE)

failures = 0


def expect(what, found, expected):
    global failures
    if found != expected:
        failures += 1
        print(f"{what}: {found!r} instead of {expected!r}")


class Program:
    def __init__(self, path, linker_map):
        symbols = re.findall(r"^ +0x([0-9a-f]+) {2,}(\S+)$", linker_map.read_text(), re.MULTILINE)
        self.expected = EXPECTED[pathlib.Path(path).stem]
        self.pe = pefile.PE(path)
        self.is_64 = self.pe.OPTIONAL_HEADER.Magic == 0x20B
        self.base = self.pe.OPTIONAL_HEADER.ImageBase
        self.sections = [(section.Name.rstrip(b"\0").decode(), section.VirtualAddress, section.get_data(),
                          section.Characteristics) for section in self.pe.sections]
        self.symbols = {name: int(address, 16) - self.base for address, name in symbols}

    def code(self):
        return [(address, data) for _, address, data, flags in self.sections
                if flags & pefile.SECTION_CHARACTERISTICS["IMAGE_SCN_MEM_EXECUTE"]]

    def relocated(self):
        """The offsets of the addresses that the loader relocates."""
        return [entry.rva for block in self.pe.DIRECTORY_ENTRY_BASERELOC for entry in block.entries
                if entry.type != 0]

    def references(self):
        """How often each address of the program is referenced: by instructions relative to themselves,
        and by absolute addresses, in code and data.

        Without disassembly: any four bytes of code are treated as a relative offset. A false hit on a given
        address happens in about one of several thousand programs.
        """
        counts = {}
        for start, data in self.code():
            for offset in range(len(data) - 3):
                target = start + offset + 4 + struct.unpack_from("<i", data, offset)[0]
                counts[target] = counts.get(target, 0) + 1
        for address in self.relocated():
            target = self.pe.get_qword_at_rva(address) if self.is_64 else self.pe.get_dword_at_rva(address)
            counts[target - self.base] = counts.get(target - self.base, 0) + 1
        for name, _, data, _ in self.sections:
            if name == ".xdata":  # refers to exception handlers by their offset from the image base
                for (target,) in struct.iter_unpack("<I", data[:len(data) // 4 * 4]):
                    counts[target] = counts.get(target, 0) + 1
        return counts

    def find_stubs(self):
        """The named stubs that jump through an import's slot, by slot: the targets of calls by name."""
        named = set(self.symbols.values())
        found = {}
        for start, data in self.code():
            for match in re.finditer(rb"\xff\x25(....)", data, re.DOTALL):
                stub = start + match.start()
                if stub in named:
                    if self.is_64:
                        slot = stub + 6 + struct.unpack("<i", match.group(1))[0]
                    else:
                        slot = struct.unpack("<I", match.group(1))[0] - self.base
                    found[slot] = stub
        return found


def check_headers(program):
    flags = program.pe.OPTIONAL_HEADER.DllCharacteristics
    names = {name for name, bit in pefile.DLL_CHARACTERISTICS.items() if isinstance(name, str) and flags & bit}
    expected = {"IMAGE_DLLCHARACTERISTICS_DYNAMIC_BASE", "IMAGE_DLLCHARACTERISTICS_NX_COMPAT"}
    if program.is_64:
        expected |= {"IMAGE_DLLCHARACTERISTICS_HIGH_ENTROPY_VA"}
    expect("DLL characteristics", sorted(names), sorted(expected))
    # Without relocations the flag has no effect.
    expect("relocations are stripped", bool(program.pe.FILE_HEADER.Characteristics & 1), False)
    expect("enough relocated addresses", len(program.relocated()) > 500, True)
    if program.is_64:
        # With an image base below 4 GiB, Windows keeps the program there, with few random bits.
        expect("image base above 4 GiB", program.base > 0xFFFFFFFF, True)


def check_sections(program):
    write = pefile.SECTION_CHARACTERISTICS["IMAGE_SCN_MEM_WRITE"]
    execute = pefile.SECTION_CHARACTERISTICS["IMAGE_SCN_MEM_EXECUTE"]
    expect("sections with code", [name for name, _, _, flags in program.sections if flags & execute], [".text"])
    expect("sections that are writable and executable",
           [name for name, _, _, flags in program.sections if flags & write and flags & execute], [])


def check_imports(program):
    tables = {table.dll.decode().lower(): table.imports for table in program.pe.DIRECTORY_ENTRY_IMPORT}
    expect("libraries loaded at the start", sorted(tables), sorted(program.expected.loaded_at_start))
    references = program.references()
    stubs = program.find_stubs()
    unused = []
    for table in tables.values():
        for function in table:
            slot = function.address - program.base
            stub = stubs.get(slot)
            # The stub itself refers to the slot.
            direct = references.get(slot, 0) - (stub is not None)
            if direct <= 0 and not references.get(stub, 0):
                unused.append(function.name.decode())
    expect("imports that no code uses", unused, [])
    expect("enough imports", sum(map(len, tables.values())) > program.expected.fewest_imports, True)


def functions_of_windows_7():
    """The pairs of library and function that the file lists."""
    functions = set()
    library = None
    for line in WINDOWS_7.read_text().splitlines():
        if not line or line.startswith("#"):
            continue
        if not line.startswith(" "):
            library = line
            continue
        functions |= {(library, name) for name in line.split() if not name.endswith(":")}
    return functions


def check_functions(program):
    imported = {(table.dll.decode().lower(), function.name.decode() if function.name else f"number {function.ordinal}")
                for table in program.pe.DIRECTORY_ENTRY_IMPORT for function in table.imports}
    unknown = sorted(imported - functions_of_windows_7())
    expect("imported functions that Windows 7 is not known to have", unknown, [])
    if unknown:
        print(f"Add to {WINDOWS_7.name} those that it has (its header says where to look), and look the others up at "
              "run time.")


def texts(data):
    found = {match.decode() for match in re.findall(rb"[\x20-\x7e]{4,}", data)}
    # Not the last letter and the null of a preceding narrow string.
    wide = re.findall(rb"(?<![\x20-\x7e])(?:[\x20-\x7e]\0){4,}", data)
    return found | {match.decode("utf-16-le") for match in wide}


def check_library_names(program):
    """The file names only the expected libraries, whether imported or loaded by name."""
    resources = program.pe.OPTIONAL_HEADER.DATA_DIRECTORY[2].VirtualAddress
    named, network = set(), set()
    for _, address, data, _ in program.sections:
        if address == resources:
            continue
        for text in texts(data):
            named |= {name.lower() for name in re.findall(r"[\w.+-]+\.(?:dll|ocx|drv|cpl)\b", text, re.IGNORECASE)}
            if NETWORK.search(text):
                network.add(text)
    expect("libraries named in the file", sorted(named),
           sorted(program.expected.loaded_at_start | program.expected.loaded_later | QUERIED[program.is_64]))
    expect("texts that suggest network access", sorted(network), [])


def check_manifest(program):
    manifests = [program.pe.get_data(language.data.struct.OffsetToData, language.data.struct.Size)
                 for kind in program.pe.DIRECTORY_ENTRY_RESOURCE.entries if kind.id == 24
                 for number in kind.directory.entries for language in number.directory.entries]
    expect("manifests", len(manifests), 1)
    root = xml.etree.ElementTree.fromstring(manifests[0])
    levels = [element.attrib for element in root.iter() if element.tag.endswith("}requestedExecutionLevel")]
    expect("execution level", levels, [{"level": "asInvoker", "uiAccess": "false"}])


def check_stack_guard(program, linker_map):
    """Functions with arrays check the stack canary; canary and check are our own (stack_guard_win.cpp)."""
    expect("the compiler's own guard library is linked", "libssp.a(" in linker_map.read_text(), False)
    check = program.symbols["__stack_chk_fail"]
    calls = 0
    for start, data in program.code():
        for match in re.finditer(rb"[\xe8\xe9](....)", data, re.DOTALL):
            calls += start + match.start() + 5 + struct.unpack("<i", match.group(1))[0] == check
    expect(f"enough guarded functions ({calls})", calls > program.expected.fewest_guarded_functions, True)


def main():
    linker_map = pathlib.Path(sys.argv[2])
    program = Program(sys.argv[1], linker_map)
    check_headers(program)
    check_sections(program)
    check_imports(program)
    check_functions(program)
    check_library_names(program)
    check_manifest(program)
    check_stack_guard(program, linker_map)
    sys.exit(1 if failures else 0)


main()
