// The table of options, from which the command-line parser, --help, the manual page and the shell
// completions are generated.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace cli {

enum class OptionId : uint8_t {
  Algorithm,
  Recursive,
  Format,
  Tag,
  Output,
  FilesFrom,
  Null,
  Check,
  Quiet,
  Status,
  IgnoreMissing,
  Strict,
  Warn,
  Extra,
  Expect,
  Update,
  Prune,
  Hidden,
  Exclude,
  Include,
  Follow,
  Threads,
  Color,
  Help,
  Version,
};

enum class OptionGroup : uint8_t { Calculate, Verify, Compare, Update, Select, General };

// What a shell completes after the option.
enum class ValueKind : uint8_t { None, Algorithms, Format, File, Text, Color };

struct OptionRow {
  OptionId id;
  OptionGroup group;
  char shortName;              // 0 for none
  std::string_view longName;   // without "--"
  ValueKind kind;              // None for an option without a value
  std::string_view valueName;  // as shown in the help
  bool repeatable;
  std::string_view help;    // one line for --help, without a full stop
  std::string_view manual;  // more, for the manual page; may be empty
};

// In the order of --help.
std::span<const OptionRow> AllOptions();
const OptionRow& GetOption(OptionId id);

std::string_view TitleOf(OptionGroup group);

// The values that some options accept.
std::span<const std::string_view> FormatNames();  // by swr::ExportFormat
std::span<const std::string_view> ColorNames();

struct ExitCodeRow {
  int code;
  std::string_view meaning;
};
std::span<const ExitCodeRow> ExitCodes();

struct ExampleRow {
  std::string_view command;
  std::string_view meaning;
};
std::span<const ExampleRow> Examples();

}  // namespace cli
