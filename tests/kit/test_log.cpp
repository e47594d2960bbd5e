#include "tests/kit/test_log.h"

#include <cstdlib>

#include "tests/kit/figure_line.h"

namespace kit {
namespace {

constexpr std::string_view StartMark = "[ RUN      ] ";
constexpr std::string_view PassedMark = "[       OK ] ";
constexpr std::string_view FailedMark = "[  FAILED  ] ";
constexpr std::string_view SkippedMark = "[  SKIPPED ] ";
constexpr std::string_view ProgramMark = "[==========] ";
constexpr std::string_view RunningWord = "Running ";
// A test that prints endlessly must not fill the report.
constexpr size_t MaxDetail = 8000;

std::string Trimmed(std::string_view text) {
  constexpr std::string_view blanks = " \n\t";
  const size_t first = text.find_first_not_of(blanks);
  if (first == text.npos) return {};
  return std::string(text.substr(first, text.find_last_not_of(blanks) - first + 1));
}

// GoogleTest prints the source location on a line that ends like this, then the message.
std::string SkipReason(std::string_view printed) {
  constexpr std::string_view mark = ": Skipped\n";
  const size_t at = printed.rfind(mark);
  return Trimmed(at == printed.npos ? printed : printed.substr(at + mark.size()));
}

// From "Suite.Test (12 ms)".
int MillisecondsIn(std::string_view rest) {
  const size_t open = rest.rfind('(');
  return open == rest.npos ? 0 : std::atoi(std::string(rest.substr(open + 1)).c_str());
}

}  // namespace

void TestLog::AddLine(std::string_view line) {
  while (line.ends_with('\r')) line.remove_suffix(1);
  if (hasSummary_) return;
  const auto rest = [&](std::string_view mark) { return line.substr(mark.size()); };
  const auto endsRunningTest = [&](std::string_view mark) {
    return !running_.empty() && line.starts_with(mark) && rest(mark).starts_with(running_);
  };
  if (line.starts_with(ProgramMark)) {
    if (rest(ProgramMark).starts_with(RunningWord)) {
      announced_ = std::atoi(std::string(rest(ProgramMark).substr(RunningWord.size())).c_str());
    } else {
      hasSummary_ = true;
    }
  } else if (line.starts_with(StartMark)) {
    running_ = rest(StartMark);
    printed_.clear();
  } else if (endsRunningTest(PassedMark)) {
    EndTest(TestStatus::Passed, rest(PassedMark));
  } else if (endsRunningTest(FailedMark)) {
    EndTest(TestStatus::Failed, rest(FailedMark));
  } else if (endsRunningTest(SkippedMark)) {
    EndTest(TestStatus::Skipped, rest(SkippedMark));
  } else if (line.starts_with(FigureMark)) {
    const std::string_view figure = rest(FigureMark);
    const size_t tab = figure.find('\t');
    if (tab != figure.npos) {
      figures_.push_back({std::string(figure.substr(0, tab)), std::string(figure.substr(tab + 1))});
    }
  } else if (!running_.empty() && printed_.size() < MaxDetail) {
    printed_.append(line.substr(0, MaxDetail)).append("\n");
  }
}

void TestLog::End(std::string_view reason) {
  if (running_.empty()) return;
  printed_.append(reason);
  EndTest(TestStatus::Failed, {});
}

void TestLog::EndTest(TestStatus status, std::string_view rest) {
  TestResult result{.name = running_, .status = status, .milliseconds = MillisecondsIn(rest)};
  if (status == TestStatus::Failed) result.detail = Trimmed(printed_);
  if (status == TestStatus::Skipped) result.detail = SkipReason(printed_);
  results_.push_back(std::move(result));
  running_.clear();
  printed_.clear();
}

}  // namespace kit
