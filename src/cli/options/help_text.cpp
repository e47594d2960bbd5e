#include "cli/options/help_text.h"

#include "cli/options/option_table.h"

namespace cli {
namespace {

constexpr size_t LineWidth = 80;
constexpr size_t HelpColumn = 28;
constexpr size_t ExampleColumn = 6;

std::string Names(const OptionRow& row) {
  std::string names = row.shortName != 0 ? std::string("  -") + row.shortName + ", " : "      ";
  names += "--";
  names += row.longName;
  if (!row.valueName.empty()) {
    names += ' ';
    names += row.valueName;
  }
  return names;
}

// Appends the text, wrapped and indented to `column`, where its first line begins.
void AppendWrapped(std::string& out, size_t column, std::string_view text) {
  const size_t width = LineWidth - column;
  while (text.size() > width) {
    const size_t blank = text.rfind(' ', width);
    if (blank == text.npos) break;
    out += text.substr(0, blank);
    out += '\n' + std::string(column, ' ');
    text.remove_prefix(blank + 1);
  }
  out += text;
  out += '\n';
}

void AppendOption(std::string& out, const OptionRow& row) {
  std::string names = Names(row);
  if (names.size() + 2 > HelpColumn) {
    names += '\n' + std::string(HelpColumn, ' ');
  } else {
    names.resize(HelpColumn, ' ');
  }
  out += names;
  AppendWrapped(out, HelpColumn, row.help);
}

}  // namespace

std::string HelpText() {
  std::string out =
      "swrhash calculates and verifies checksums of files.\n"
      "\n"
      "  swrhash [OPTION...] FILE...       write checksums; - is standard input\n"
      "  swrhash -c [OPTION...] [LIST...]  verify the files named in lists\n"
      "  swrhash --expect HASH FILE...     compare files with a hash\n"
      "  swrhash --update LIST FILE...     add files to a list\n";
  OptionGroup group = OptionGroup::General;
  bool isFirst = true;
  for (const OptionRow& row : AllOptions()) {
    if (isFirst || row.group != group) {
      group = row.group;
      isFirst = false;
      out += '\n';
      out += TitleOf(group);
      out += ":\n";
    }
    AppendOption(out, row);
  }
  out += "\nExamples:\n";
  for (const ExampleRow& row : Examples()) {
    out += "  ";
    out += row.command;
    out += '\n' + std::string(ExampleColumn, ' ');
    out += row.meaning;
    out += '\n';
  }
  out += "\nExit code:\n";
  for (const ExitCodeRow& row : ExitCodes()) {
    out += "  " + std::to_string(row.code) + "  ";
    out += row.meaning;
    out += '\n';
  }
  return out;
}

std::string VersionText() { return "swrhash " + std::string(VersionNumber) + "\n"; }

}  // namespace cli
