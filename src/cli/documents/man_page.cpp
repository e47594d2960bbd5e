#include "cli/documents/man_page.h"

#include <string_view>

#include "cli/options/help_text.h"
#include "cli/options/option_table.h"

namespace cli {
namespace {

// Escapes text for groff: hyphens stay hyphens when they are copied, and no line is parsed as a
// macro.
std::string Escaped(std::string_view text) {
  std::string out;
  for (const char c : text) {
    if (c == '\\') {
      out += "\\e";
    } else if (c == '-') {
      out += "\\-";
    } else if (c == '\'') {
      out += "\\(aq";
    } else {
      out += c;
    }
  }
  return out.starts_with('.') ? "\\&" + out : out;
}

std::string Bold(std::string_view text) { return "\\fB" + Escaped(text) + "\\fR"; }
std::string Italic(std::string_view text) { return "\\fI" + Escaped(text) + "\\fR"; }

void AppendOption(std::string& page, const OptionRow& row) {
  page += ".TP\n";
  if (row.shortName != 0) page += Bold(std::string("-") + row.shortName) + ", ";
  page += Bold("--" + std::string(row.longName));
  if (!row.valueName.empty()) page += " " + Italic(row.valueName);
  std::string help(row.help);
  if (help.front() >= 'a' && help.front() <= 'z') {
    help.front() = static_cast<char>(help.front() - 'a' + 'A');
  }
  page += "\n" + Escaped(help) + ".\n";
  if (!row.manual.empty()) page += Escaped(row.manual) + "\n";
}

void AppendOptions(std::string& page) {
  page += ".SH OPTIONS\n";
  bool isFirst = true;
  OptionGroup group = {};
  for (const OptionRow& row : AllOptions()) {
    if (isFirst || row.group != group) {
      group = row.group;
      isFirst = false;
      page += ".SS " + std::string(TitleOf(group)) + "\n";
    }
    AppendOption(page, row);
  }
}

}  // namespace

std::string ManPage() {
  std::string page = ".TH SWRHASH 1 \"\" \"swrhash " + std::string(VersionNumber) +
                     "\" \"User Commands\"\n"
                     ".SH NAME\n"
                     "swrhash \\- calculate and verify checksums of files\n"
                     ".SH SYNOPSIS\n";
  const std::string_view operands[] = {"[\\fIOPTION\\fR...] \\fIFILE\\fR...",
                                       "\\fB\\-c\\fR [\\fIOPTION\\fR...] [\\fILIST\\fR...]",
                                       "\\fB\\-\\-expect\\fR \\fIHASH\\fR \\fIFILE\\fR...",
                                       "\\fB\\-\\-update\\fR \\fILIST\\fR \\fIFILE\\fR..."};
  bool isFirst = true;
  for (const std::string_view operand : operands) {
    if (!isFirst) page += ".br\n";
    isFirst = false;
    page += ".B swrhash\n" + std::string(operand) + "\n";
  }
  page +=
      ".SH DESCRIPTION\n"
      "Calculates checksums of files and writes them as a list, verifies the files named in\n"
      "lists, compares files with a hash from a web page, and adds files to lists.\n"
      "A \\fIFILE\\fR can be \\- for standard input or, with \\fB\\-r\\fR, a folder.\n"
      "Files are hashed on all cores; the order of the output does not change.\n"
      "A file that changes while it is read gets an error instead of a digest.\n"
      ".PP\n"
      "Lists have the formats of\n"
      ".BR sha256sum (1)\n"
      "and similar tools. In addition, \\fB\\-c\\fR reads the output of\n"
      ".BR openssl (1),\n"
      "lines with a tab between digest and name, base64 after the name of an algorithm, and files\n"
      "that contain only a digest and are named after the hashed file (\\fIdisk.iso.sha256\\fR).\n";
  AppendOptions(page);
  page += ".SH EXIT STATUS\n";
  for (const ExitCodeRow& row : ExitCodes()) {
    page += ".TP\n" + Bold(std::to_string(row.code)) + "\n" + Escaped(row.meaning) + ".\n";
  }
  page +=
      ".SH ENVIRONMENT\n"
      ".TP\n" +
      Bold("NO_COLOR") +
      "\nIf set, the output is not coloured, except with \\fB\\-\\-color always\\fR.\n";
  page += ".SH EXAMPLES\n";
  for (const ExampleRow& row : Examples()) {
    page += ".TP\n" + Bold(row.command) + "\n" + Escaped(row.meaning) + ".\n";
  }
  page +=
      ".SH SEE ALSO\n"
      ".BR sha256sum (1),\n"
      ".BR md5sum (1),\n"
      ".BR cksum (1)\n";
  return page;
}

}  // namespace cli
