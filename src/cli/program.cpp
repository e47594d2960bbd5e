#include "cli/program.h"

#include <algorithm>
#include <cstdlib>
#include <exception>
#include <optional>
#include <thread>

#include "cli/modes/run.h"
#include "cli/options/help_text.h"
#include "cli/options/parse_options.h"
#include "cli/select/wildcards.h"
#include "swr/checksums/verdict_text.h"
#include "swr/paths/path_forms.h"
#include "swr/system/name_bytes.h"
#include "swr/text/display_text.h"
#include "swr/text/encoding.h"

namespace cli {
namespace {

uint32_t ThreadsFor(const Options& options) {
  return options.threads != 0 ? options.threads : std::max(std::thread::hardware_concurrency(), 1u);
}

// Applies --color and NO_COLOR.
ConsoleTraits TraitsFor(const Options& options, ConsoleTraits streams) {
  if (options.color == ColorWhen::Always) {
    streams.outHasColors = streams.errHasColors = true;
    return streams;
  }
  const char* noColor = std::getenv("NO_COLOR");  // https://no-color.org
  const bool isRefused = options.color == ColorWhen::Never ||
                         (noColor != nullptr && *noColor != '\0') || !options.output.empty();
  streams.outHasColors = streams.outHasColors && !isRefused;
  streams.errHasColors = streams.errHasColors && !isRefused;
  if (!options.output.empty()) streams.outIsTerminal = false;
  return streams;
}

void RunMode(Run& run) {
  switch (run.options.mode) {
    case Mode::Hash:
      RunHash(run);
      break;
    case Mode::Check:
      RunCheck(run);
      break;
    case Mode::Expect:
      RunExpect(run);
      break;
    case Mode::Update:
      RunUpdate(run);
      break;
    case Mode::Help:
    case Mode::Version:
      break;
  }
}

// Reports that writing to standard output, or to the file given with --output, has failed.
void ReportOutputError(Console& console, const Options& options, uint32_t error,
                       ExitStatus& status) {
  const std::u16string name =
      options.output.empty() ? u"standard output" : console.NameForErr(options.output);
  console.WriteMessage(name + u": " + swr::FormatErrorText(error));
  status.Note(ExitStatus::Trouble);
}

int RunWith(const Options& options, ByteSink& standardOut, ByteSink& err,
            const ConsoleTraits& streams) {
  ExitStatus status;
  swr::FileReplacement file;
  ReplacementSink fileSink(file);
  const bool toFile = !options.output.empty();
  Console console(toFile ? static_cast<ByteSink&>(fileSink) : standardOut, err,
                  TraitsFor(options, streams));
  if (toFile) {
    if (const uint32_t error = file.Begin(swr::ToLongPath(options.output))) {
      ReportOutputError(console, options, error, status);
      return status.Code();
    }
  }
  Progress progress(console);
  OrderedWork work(ThreadsFor(options));
  Run run{options, console, progress, work, status};
  try {
    RunMode(run);
  } catch (const std::exception&) {
    // Only running out of memory or threads throws; all other failures are error codes.
    console.WriteMessage(u"not enough memory");
    console.EndProgress();
    return ExitStatus::Trouble;
  }
  console.EndProgress();
  console.Flush();
  uint32_t error = console.OutError();
  if (toFile && error == 0 && !run.hasOnlyErrors) error = file.Commit();
  if (error != 0) ReportOutputError(console, options, error, status);
  return status.Code();
}

// Writes the reason why the program does not start its work. Returns the exit code.
int RejectUsage(ByteSink& err, const std::string& text, bool showsHint) {
  std::string message = "swrhash: " + text + "\n";
  if (showsHint) message += "Try 'swrhash --help' for more information.\n";
  // If standard error fails, there is nowhere left to report it.
  [[maybe_unused]] const uint32_t error = err.Write(message);
  return ExitStatus::Trouble;
}

int Print(ByteSink& out, const std::string& text) {
  return out.Write(text) == 0 ? ExitStatus::Good : ExitStatus::Trouble;
}

}  // namespace

int RunProgram(const std::vector<std::string>& arguments, ByteSink& out, ByteSink& err,
               const ConsoleTraits& streams) {
  std::variant<Options, UsageError> parsed = ParseOptions(arguments);
  if (const auto* error = std::get_if<UsageError>(&parsed))
    return RejectUsage(err, error->text, true);
  Options& options = std::get<Options>(parsed);
  if (options.mode == Mode::Help) return Print(out, HelpText());
  if (options.mode == Mode::Version) return Print(out, VersionText());
  ExpandWildcards(options);
  const bool hasNoFile = options.operands.empty() && options.filesFrom.empty();
  if (hasNoFile && options.mode == Mode::Expect) {
    return RejectUsage(err, swr::WideToUtf8(swr::FileWantedText(*options.expected)), false);
  }
  if (hasNoFile && options.mode != Mode::Check) {
    if (options.mode == Mode::Update && !options.prune) {
      return RejectUsage(err, "no file to add to the list", true);
    }
    if (options.mode == Mode::Hash) {
      // On a terminal the user probably forgot the file. A pipe is used as input.
      if (swr::IsInputTerminal()) return RejectUsage(err, "no file given", true);
      options.operands.emplace_back(StandardInputName);
    }
  }
  return RunWith(options, out, err, streams);
}

int RunProgram(const std::vector<std::string>& arguments) {
  using swr::StandardStream;
  StandardSink out(StandardStream::Output);
  StandardSink err(StandardStream::Error);
  const bool outIsTerminal = swr::IsTerminal(StandardStream::Output);
  const bool errIsTerminal = swr::IsTerminal(StandardStream::Error);
  const ConsoleTraits streams{
      .outIsTerminal = outIsTerminal,
      .errIsTerminal = errIsTerminal,
      .outHasColors = outIsTerminal && swr::EnableColors(StandardStream::Output),
      .errHasColors = errIsTerminal && swr::EnableColors(StandardStream::Error),
      .errWidth = errIsTerminal ? swr::TerminalWidth(StandardStream::Error) : 0};
  return RunProgram(arguments, out, err, streams);
}

}  // namespace cli
