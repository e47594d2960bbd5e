#include "cli/options/option_table.h"

#include <array>

namespace cli {
namespace {

using enum OptionGroup;
using enum ValueKind;

constexpr std::array<OptionRow, 25> table = {{
    {OptionId::Algorithm, Calculate, 'a', "algorithm", Algorithms, "NAME,...", true,
     "algorithms, several in one pass (default: sha256)",
     "One of crc32, md5, sha1, sha256, sha384, sha512, sha3-256, sha3-384, sha3-512, blake3, "
     "xxh64, "
     "xxh3, xxh128, md2 and md4. Several can be given, separated by commas or in several options; "
     "they are calculated in one pass over each file. With --check, only digests that can belong "
     "to these algorithms are verified; other lines are skipped."},
    {OptionId::Recursive, Calculate, 'r', "recursive", None, "", false,
     "include the files in folders",
     "In each folder, files come before subfolders, both in natural order."},
    {OptionId::Format, Calculate, 0, "format", Format, "FORMAT", false,
     "sum, bsd, sfv, csv or json (default: sum, or bsd for several algorithms)",
     "sum is the format of sha256sum, for one algorithm. bsd has tagged lines, one for each "
     "digest. "
     "sfv holds CRC32 checksums only. csv has a column for each algorithm, json an object for each "
     "file."},
    {OptionId::Tag, Calculate, 0, "tag", None, "", false, "the same as --format bsd", ""},
    {OptionId::Output, Calculate, 'o', "output", File, "FILE", false,
     "write to FILE, which is replaced only when the output is complete",
     "Until then the output goes to a temporary file in the same folder. If something goes wrong "
     "or the program is interrupted, FILE is not changed."},
    {OptionId::FilesFrom, Calculate, 0, "files-from", File, "FILE", true,
     "read file names from FILE, one per line; - is standard input", ""},
    {OptionId::Null, Calculate, '0', "null", None, "", false,
     "names in --files-from end in a null character", "As find -print0 writes them."},

    {OptionId::Check, Verify, 'c', "check", None, "", false, "verify the files named in lists",
     "A list can mix the formats sum, bsd and sfv, in UTF-8 or UTF-16, and can be a PGP "
     "clear-signed text, whose signature is not checked. Names are relative to the list's folder. "
     "Without a LIST, or if it is -, the list is read from standard input."},
    {OptionId::Quiet, Verify, 'q', "quiet", None, "", false,
     "print only problems: no OK lines, and no summary of a success", ""},
    {OptionId::Status, Verify, 0, "status", None, "", false,
     "print no results; only set the exit code", ""},
    {OptionId::IgnoreMissing, Verify, 0, "ignore-missing", None, "", false,
     "skip files that don't exist", "It is still an error if none of the files exists."},
    {OptionId::Strict, Verify, 0, "strict", None, "", false,
     "fail for lines that aren't checksums and, with --extra, for extra files", ""},
    {OptionId::Warn, Verify, 'w', "warn", None, "", false, "report each line that isn't a checksum",
     ""},
    {OptionId::Extra, Verify, 0, "extra", None, "", false,
     "also report files in the list's folder that no list names",
     "Subfolders are included. A file with the digest of a missing one is reported as moved."},

    {OptionId::Expect, Compare, 'e', "expect", Text, "HASH", false,
     "compare the files with a hash from a web page",
     "HASH can be hex or base64, with or without the name of its algorithm, or a whole line of a "
     "checksum file. Without a name, all algorithms with that digest length are "
     "tried."},

    {OptionId::Update, OptionGroup::Update, 0, "update", File, "LIST", false,
     "add the files that LIST does not contain yet",
     "Existing lines are not changed. New lines have the format and the algorithms of the last "
     "one, and names relative to the list's folder. A list that doesn't exist is created. The list "
     "is replaced only when the new one is complete."},
    {OptionId::Prune, OptionGroup::Update, 0, "prune", None, "", false,
     "with --update: drop the lines of files that no longer exist", ""},

    {OptionId::Hidden, Select, 0, "hidden", None, "", false,
     "in folders, include hidden files and folders", ""},
    {OptionId::Exclude, Select, 0, "exclude", Text, "GLOB", true,
     "in folders, skip files and folders that match",
     "* matches any characters except a slash, ** any characters, ? one character and [a-z] one "
     "character of a set. A GLOB with a slash is matched against the path below the given folder, "
     "any other against the name only."},
    {OptionId::Include, Select, 0, "include", Text, "GLOB", true,
     "in folders, include only files that match", ""},
    {OptionId::Follow, Select, 'L', "follow", None, "", false, "follow links to folders",
     "Never in a loop."},

    {OptionId::Threads, General, 'j', "threads", Text, "N", false,
     "files to hash at the same time (default: one for each core)", ""},
    {OptionId::Color, General, 0, "color", Color, "WHEN", false,
     "auto, always or never (default: auto)",
     "auto means on a terminal, unless the environment variable NO_COLOR is set."},
    {OptionId::Help, General, 'h', "help", None, "", false, "print this help", ""},
    {OptionId::Version, General, 'V', "version", None, "", false, "print the version", ""},
}};

constexpr std::array<std::string_view, 5> formatNames = {"sum", "bsd", "sfv", "csv", "json"};
constexpr std::array<std::string_view, 3> colorNames = {"auto", "always", "never"};

constexpr std::array<ExitCodeRow, 3> exitCodes = {{
    {0, "success"},
    {1, "a mismatch, or a file that is missing or changed while it was read"},
    {2, "an error: wrong usage, a file or list that can't be read, nothing verified"},
}};

constexpr std::array<ExampleRow, 7> examples = {{
    {"swrhash setup.exe", "the SHA-256 of a file"},
    {"swrhash -a md5,sha256 -r Downloads > checksums.txt", "a list of all files in a folder"},
    {"swrhash -c SHA256SUMS", "verify the files in a list"},
    {"swrhash --expect <hash> setup.exe", "compare a file with a hash from a web page"},
    {"swrhash -c --extra SHA256SUMS", "verify, and report files that are not in the list"},
    {"swrhash --update SHA256SUMS -r .", "add new files to a list"},
    {"swrhash -r --format json -o list.json .", "a list for another program"},
}};

}  // namespace

std::span<const OptionRow> AllOptions() { return table; }

const OptionRow& GetOption(OptionId id) { return table[static_cast<size_t>(id)]; }

std::string_view TitleOf(OptionGroup group) {
  constexpr std::array<std::string_view, 6> titles = {"Calculating", "Verifying", "Comparing",
                                                      "Updating",    "Selecting", "General"};
  return titles[static_cast<size_t>(group)];
}

std::span<const std::string_view> FormatNames() { return formatNames; }
std::span<const std::string_view> ColorNames() { return colorNames; }
std::span<const ExitCodeRow> ExitCodes() { return exitCodes; }
std::span<const ExampleRow> Examples() { return examples; }

}  // namespace cli
