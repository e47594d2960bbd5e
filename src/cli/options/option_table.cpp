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
     "xxh3, xxh128, md2 and md4. Several, separated by commas or given by several options, are "
     "calculated in one pass over each file. With --check they say which algorithms a digest that "
     "names none can belong to."},
    {OptionId::Recursive, Calculate, 'r', "recursive", None, "", false, "go into folders",
     "A folder's files come first, then its subfolders, each in natural order."},
    {OptionId::Format, Calculate, 0, "format", Format, "FORMAT", false,
     "sum, bsd, sfv, csv or json (default: sum, or bsd for several algorithms)",
     "sum is the format of sha256sum, for one algorithm. bsd has tagged lines, one for each "
     "digest. "
     "sfv holds CRC32 checksums only. csv has a column for each algorithm, json an object for each "
     "file."},
    {OptionId::Tag, Calculate, 0, "tag", None, "", false, "the same as --format bsd", ""},
    {OptionId::Output, Calculate, 'o', "output", File, "FILE", false,
     "write to FILE, which appears whole or not at all",
     "The list is written beside FILE and put in its place when it is complete. If something goes "
     "wrong or the program is interrupted, FILE stays as it was."},
    {OptionId::FilesFrom, Calculate, 0, "files-from", File, "FILE", true,
     "read names of files from FILE, one a line; - for standard input", ""},
    {OptionId::Null, Calculate, '0', "null", None, "", false,
     "the names of --files-from end in a null character", "As find -print0 writes them."},

    {OptionId::Check, Verify, 'c', "check", None, "", false,
     "verify the files that the given lists name",
     "A list can mix the formats sum, bsd and sfv, in any encoding, also inside a PGP clear-signed "
     "text, whose signature is not checked. Names are taken from the list's own folder. Without a "
     "LIST, or for -, the list comes from standard input."},
    {OptionId::Quiet, Verify, 'q', "quiet", None, "", false,
     "don't print OK for each file, nor a summary that all is well", ""},
    {OptionId::Status, Verify, 0, "status", None, "", false,
     "print nothing about files; the exit code says it all", ""},
    {OptionId::IgnoreMissing, Verify, 0, "ignore-missing", None, "", false,
     "pass over files that don't exist", "If none of the files exists, that is still an error."},
    {OptionId::Strict, Verify, 0, "strict", None, "", false,
     "fail for lines that aren't checksums and, with --extra, for extra files", ""},
    {OptionId::Warn, Verify, 'w', "warn", None, "", false, "name each line that isn't a checksum",
     ""},
    {OptionId::Extra, Verify, 0, "extra", None, "", false,
     "also name files below the list's folder that no list names",
     "If such a file has the digest of a missing one, it is said to have been moved."},

    {OptionId::Expect, Compare, 'e', "expect", Text, "HASH", false,
     "compare the files with a hash from a web page",
     "HASH can be hex or base64, with or without the name of its algorithm, or a whole line of a "
     "checksum file. If it names no algorithm, all algorithms of its length are tried."},

    {OptionId::Update, OptionGroup::Update, 0, "update", File, "LIST", false,
     "add to LIST the files that it lacks",
     "Every line that is there stays as it is. New lines have the format and the algorithms of the "
     "last one, and names relative to the list's folder. A list that doesn't exist is made. The "
     "list "
     "is written whole or not at all."},
    {OptionId::Prune, OptionGroup::Update, 0, "prune", None, "", false,
     "with --update: drop the lines of files that are gone", ""},

    {OptionId::Hidden, Select, 0, "hidden", None, "", false,
     "go into hidden folders and take hidden files in folders", ""},
    {OptionId::Exclude, Select, 0, "exclude", Text, "GLOB", true,
     "leave out files and folders of this name in folders",
     "* stands for any characters but a slash, ** for any characters, ? for one character and "
     "[a-z] "
     "for one of a set. A GLOB with a slash is compared with the path below the given folder, any "
     "other with the name alone."},
    {OptionId::Include, Select, 0, "include", Text, "GLOB", true,
     "in folders, take only files of this name", ""},
    {OptionId::Follow, Select, 'L', "follow", None, "", false, "follow links to folders",
     "A link to a folder that contains it is not followed again."},

    {OptionId::Threads, General, 'j', "threads", Text, "N", false,
     "files hashed at the same time (default: one for each core)", ""},
    {OptionId::Color, General, 0, "color", Color, "WHEN", false,
     "auto, always or never (default: auto)",
     "auto means on a terminal, unless the environment variable NO_COLOR is set."},
    {OptionId::Help, General, 'h', "help", None, "", false, "print this help", ""},
    {OptionId::Version, General, 'V', "version", None, "", false, "print the version", ""},
}};

constexpr std::array<std::string_view, 5> formatNames = {"sum", "bsd", "sfv", "csv", "json"};
constexpr std::array<std::string_view, 3> colorNames = {"auto", "always", "never"};

constexpr std::array<ExitCodeRow, 3> exitCodes = {{
    {0, "all is well"},
    {1, "a mismatch, or a file that is missing or changed while it was read"},
    {2, "trouble: wrong usage, a file or list that can't be read, nothing verified"},
}};

constexpr std::array<ExampleRow, 7> examples = {{
    {"swrhash setup.exe", "the SHA-256 of a file"},
    {"swrhash -a md5,sha256 -r Downloads > checksums.txt", "a list of a whole folder"},
    {"swrhash -c SHA256SUMS", "verify the files of a list"},
    {"swrhash --expect <hash> setup.exe", "compare a file with a hash from a web page"},
    {"swrhash -c --extra SHA256SUMS", "verify, and name files that the list lacks"},
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
