#include "cli/options/parse_options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <charconv>
#include <functional>
#include <utility>

#include "cli/options/option_table.h"
#include "swr/checksums/verdict_text.h"
#include "swr/system/name_bytes.h"
#include "swr/text/encoding.h"

namespace cli {
namespace {

// The values given for each option, by OptionId; those of an option without a value are empty.
struct GivenOptions {
  std::vector<std::vector<std::string>> values =
      std::vector<std::vector<std::string>>(AllOptions().size());
  std::vector<std::string> operands;

  bool Has(OptionId id) const { return !Of(id).empty(); }
  const std::vector<std::string>& Of(OptionId id) const { return values[static_cast<size_t>(id)]; }
};

[[noreturn]] void Fail(std::string text) { throw UsageError{std::move(text)}; }

std::string Quoted(std::string_view text) {
  // The text comes from the user and is printed on the user's terminal.
  std::string quoted = "'";
  for (const char byte : text) quoted += static_cast<unsigned char>(byte) < ' ' ? '?' : byte;
  return quoted + "'";
}

std::string NamesOf(const OptionRow& row) {
  std::string names = "--" + std::string(row.longName);
  if (row.shortName != 0) names = std::string("-") + row.shortName + "," + names;
  return names;
}

GivenOptions ReadCommandLine(std::vector<std::string> arguments) {
  GivenOptions given;
  CLI::App app;
  app.set_help_flag();
  app.allow_windows_style_options(false);
  // Operands are taken from the remaining arguments, because the library would split one like
  // "[a,b]".
  app.allow_extras();
  for (const OptionRow& row : AllOptions()) {
    std::vector<std::string>& values = given.values[static_cast<size_t>(row.id)];
    CLI::Option* option = nullptr;
    if (row.kind == ValueKind::None) {
      option = app.add_flag_function(
          NamesOf(row), [&values](int64_t count) { values.resize(static_cast<size_t>(count)); });
      option->disable_flag_override();
    } else {
      // The raw values: the library's own vectors would treat "{}" as empty.
      option = app.add_option(NamesOf(row), [&values](const CLI::results_t& results) {
        values = results;
        return true;
      });
      if (row.repeatable) {
        option->expected(1, CLI::detail::expected_max_vector_size)->allow_extra_args(false);
      } else {
        option->expected(1)->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
      }
    }
  }
  try {
    std::ranges::reverse(arguments);  // the order that the library expects
    app.parse(std::move(arguments));
  } catch (const CLI::ArgumentMismatch& error) {
    const std::string_view text = error.what();
    const size_t colon = text.find(':');
    if (colon == text.npos) Fail(std::string(text));
    Fail(std::string(text.substr(0, colon)) + " needs a value");
  } catch (const CLI::ParseError& error) {
    Fail(error.what());
  }
  bool isAfterDoubleDash = false;
  for (std::string& rest : app.remaining()) {
    if (!isAfterDoubleDash && rest == "--") {
      isAfterDoubleDash = true;
    } else if (!isAfterDoubleDash && rest.size() > 1 && rest.starts_with('-')) {
      Fail("no such option: " + Quoted(rest));
    } else {
      given.operands.push_back(std::move(rest));
    }
  }
  return given;
}

swr::AlgoMask AlgorithmsFrom(const std::vector<std::string>& values) {
  swr::AlgoMask mask = 0;
  for (const std::string& value : values) {
    std::string_view rest = value;
    while (true) {
      const size_t comma = rest.find(',');
      const std::string_view name = rest.substr(0, comma);
      const std::optional<swr::AlgoId> algo = swr::ParseAlgoName(name);
      if (!algo) Fail("no such algorithm: " + Quoted(name));
      mask |= swr::MaskOf(*algo);
      if (comma == rest.npos) break;
      rest.remove_prefix(comma + 1);
    }
  }
  return mask;
}

// The index of the value among the names.
size_t ChoiceFrom(const OptionRow& row, std::span<const std::string_view> names,
                  std::string_view value) {
  const auto found = std::ranges::find(names, value);
  if (found == names.end()) {
    std::string all;
    for (const std::string_view name : names) {
      if (!all.empty()) all += ", ";
      all += name;
    }
    Fail("--" + std::string(row.longName) + " can't be " + Quoted(value) + " (one of " + all + ")");
  }
  return static_cast<size_t>(found - names.begin());
}

uint32_t ThreadsFrom(std::string_view value) {
  uint32_t number = 0;
  const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), number);
  constexpr uint32_t most = 1024;
  if (error != std::errc() || end != value.data() + value.size() || number == 0 || number > most) {
    Fail("--threads needs a number from 1 to 1024, not " + Quoted(value));
  }
  return number;
}

std::vector<std::u16string> TextsFrom(const std::vector<std::string>& values) {
  std::vector<std::u16string> texts;
  texts.reserve(values.size());
  for (const std::string& value : values) texts.push_back(swr::TextFromNameBytes(value));
  return texts;
}

Mode ModeOf(const GivenOptions& given) {
  if (given.Has(OptionId::Help)) return Mode::Help;
  if (given.Has(OptionId::Version)) return Mode::Version;
  constexpr std::array<std::pair<OptionId, Mode>, 3> modes = {{{OptionId::Check, Mode::Check},
                                                               {OptionId::Expect, Mode::Expect},
                                                               {OptionId::Update, Mode::Update}}};
  Mode mode = Mode::Hash;
  for (const auto& [option, its] : modes) {
    if (!given.Has(option)) continue;
    if (mode != Mode::Hash) Fail("only one of --check, --expect and --update is possible");
    mode = its;
  }
  return mode;
}

// Rejects options that do not apply to the mode.
void RejectInapplicable(const GivenOptions& given, Mode mode) {
  struct Rule {
    OptionId option;
    std::vector<Mode> modes;
    std::string_view wanted;
  };
  const std::vector<Mode> verifying = {Mode::Check};
  const std::vector<Mode> walking = {Mode::Hash, Mode::Expect, Mode::Update};
  const Rule rules[] = {
      {OptionId::Format, {Mode::Hash, Mode::Update}, "when checksums are calculated"},
      {OptionId::Tag, {Mode::Hash, Mode::Update}, "when checksums are calculated"},
      {OptionId::Output, {Mode::Hash}, "when checksums are calculated"},
      {OptionId::FilesFrom, walking, "without --check"},
      {OptionId::Recursive, walking, "without --check"},
      {OptionId::Quiet, {Mode::Check, Mode::Expect, Mode::Update}, "with --check"},
      {OptionId::Status, {Mode::Check, Mode::Expect}, "with --check"},
      {OptionId::IgnoreMissing, verifying, "with --check"},
      {OptionId::Strict, verifying, "with --check"},
      {OptionId::Warn, verifying, "with --check"},
      {OptionId::Extra, verifying, "with --check"},
      {OptionId::Prune, {Mode::Update}, "with --update"},
  };
  for (const Rule& rule : rules) {
    if (!given.Has(rule.option) || std::ranges::find(rule.modes, mode) != rule.modes.end())
      continue;
    Fail("--" + std::string(GetOption(rule.option).longName) + " is only possible " +
         std::string(rule.wanted));
  }
}

swr::ParsedHash ExpectedFrom(std::string_view value, swr::AlgoMask algorithms) {
  std::optional<swr::ParsedHash> hash = swr::ParseExpectedHash(swr::TextFromNameBytes(value));
  if (!hash) Fail(swr::WideToUtf8(swr::NotAHashText()));
  if (algorithms != 0) {
    std::erase_if(hash->candidates,
                  [&](swr::AlgoId id) { return (swr::MaskOf(id) & algorithms) == 0; });
    if (hash->candidates.empty()) Fail("the expected hash can't belong to these algorithms");
  }
  return *std::move(hash);
}

void CheckFormat(const Options& options) {
  if (!options.format || options.algorithms == 0) return;
  if (*options.format == swr::ExportFormat::Sha256Sum && swr::CountAlgos(options.algorithms) > 1) {
    Fail("--format sum allows one algorithm; bsd, csv and json allow several");
  }
  if (*options.format == swr::ExportFormat::Sfv &&
      options.algorithms != swr::MaskOf(swr::AlgoId::Crc32)) {
    Fail("--format sfv allows CRC32 only");
  }
}

Options OptionsFrom(const GivenOptions& given) {
  Options options;
  options.mode = ModeOf(given);
  if (options.mode == Mode::Help || options.mode == Mode::Version) return options;
  RejectInapplicable(given, options.mode);
  options.operands = TextsFrom(given.operands);
  options.algorithms = AlgorithmsFrom(given.Of(OptionId::Algorithm));
  if (given.Has(OptionId::Tag)) options.format = swr::ExportFormat::Tagged;
  if (given.Has(OptionId::Format)) {
    options.format = static_cast<swr::ExportFormat>(
        ChoiceFrom(GetOption(OptionId::Format), FormatNames(), given.Of(OptionId::Format).back()));
  }
  CheckFormat(options);
  if (given.Has(OptionId::Output)) {
    options.output = swr::TextFromNameBytes(given.Of(OptionId::Output).back());
    if (options.output.empty()) Fail("--output needs the name of a file");
  }
  options.filesFrom = TextsFrom(given.Of(OptionId::FilesFrom));
  options.nullNames = given.Has(OptionId::Null);
  if (options.nullNames && options.filesFrom.empty())
    Fail("--null is only possible with --files-from");
  options.quiet = given.Has(OptionId::Quiet);
  options.status = given.Has(OptionId::Status);
  options.ignoreMissing = given.Has(OptionId::IgnoreMissing);
  options.strict = given.Has(OptionId::Strict);
  options.warn = given.Has(OptionId::Warn);
  options.extra = given.Has(OptionId::Extra);
  if (given.Has(OptionId::Expect)) {
    options.expected = ExpectedFrom(given.Of(OptionId::Expect).back(), options.algorithms);
  }
  if (given.Has(OptionId::Update)) {
    options.updatedList = swr::TextFromNameBytes(given.Of(OptionId::Update).back());
  }
  options.prune = given.Has(OptionId::Prune);
  options.selection = {.recursive = given.Has(OptionId::Recursive),
                       .hidden = given.Has(OptionId::Hidden),
                       .followLinks = given.Has(OptionId::Follow),
                       .exclude = TextsFrom(given.Of(OptionId::Exclude)),
                       .include = TextsFrom(given.Of(OptionId::Include))};
  if (given.Has(OptionId::Threads)) {
    options.threads = ThreadsFrom(given.Of(OptionId::Threads).back());
  }
  if (given.Has(OptionId::Color)) {
    options.color = static_cast<ColorWhen>(
        ChoiceFrom(GetOption(OptionId::Color), ColorNames(), given.Of(OptionId::Color).back()));
  }
  return options;
}

}  // namespace

std::variant<Options, UsageError> ParseOptions(const std::vector<std::string>& arguments) {
  try {
    return OptionsFrom(ReadCommandLine(arguments));
  } catch (UsageError& error) {
    return std::move(error);
  }
}

}  // namespace cli
