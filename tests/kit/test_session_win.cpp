#include "tests/kit/test_session_win.h"

#include <algorithm>
#include <cctype>
#include <chrono>
#include <cstdio>
#include <mutex>

#include "swr/system/wide_text_win.h"
#include "swr/text/encoding.h"
#include "tests/kit/computer_info_win.h"
#include "tests/kit/file_bytes_win.h"
#include "tests/kit/program_run_win.h"
#include "tests/kit/speed_win.h"

namespace kit {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using std::chrono::steady_clock;

// How often a program that crashes is restarted for the remaining tests.
constexpr int MaxStarts = 4;
constexpr size_t TitleWidth = 26;
constexpr size_t ConsoleWidth = 78;

std::wstring Wide(const std::string& ascii) { return {ascii.begin(), ascii.end()}; }

bool IsSet(HANDLE event) { return WaitForSingleObject(event, 0) == WAIT_OBJECT_0; }

int Rounded(double value) { return static_cast<int>(value + 0.5); }

// One line of the console that is overwritten repeatedly, and finally kept.
class ProgressLine {
 public:
  explicit ProgressLine(std::string title) : title_(std::move(title)) {
    title_.resize(std::max(title_.size(), TitleWidth), ' ');
    DWORD mode = 0;
    isConsole_ = GetConsoleMode(GetStdHandle(STD_OUTPUT_HANDLE), &mode) != FALSE;
  }

  void Show(const std::string& text) {
    if (isConsole_) Print(text, '\r');
  }
  void Finish(const std::string& text) { Print(text, '\n'); }

 private:
  void Print(const std::string& text, char end) {
    std::string line = title_ + text;
    // Temporary text is truncated; the final text is not, and covers the old one.
    if (end == '\r') line.resize(std::min(line.size(), ConsoleWidth));
    if (isConsole_) line.resize(std::max(line.size(), ConsoleWidth), ' ');
    std::printf("%s%c", line.c_str(), end);
    std::fflush(stdout);
  }

  std::string title_;
  bool isConsole_ = false;
};

// The filter of a restarted program, which excludes the tests that have run.
std::string Without(std::string filter, const std::vector<TestResult>& results) {
  bool hasExclusions = filter.find('-') != filter.npos;
  for (const TestResult& result : results) {
    filter += (hasExclusions ? ":" : "-") + result.name;
    hasExclusions = true;
  }
  return filter;
}

// "Idle" for "01 idle.png": the number only sets the order.
std::string TitleOf(const std::string& file) {
  const size_t start = file.find(' ') + 1;
  std::string title = file.substr(start, file.rfind('.') - start);
  if (!title.empty()) title[0] = static_cast<char>(std::toupper(title[0]));
  return title;
}

class Session {
 public:
  Session(const SessionFolders& folders, const SessionOptions& options, HANDLE stop)
      : folders_(folders),
        options_(options),
        stop_(stop),
        end_(steady_clock::now() + seconds(options.limitSeconds)) {
    CreateDirectoryW(Temp().c_str(), nullptr);
    CreateDirectoryW(Pictures().c_str(), nullptr);
    CreateDirectoryW(Logs().c_str(), nullptr);
  }

  ProgramReport Run(const PlannedProgram& planned) {
    return planned.kind == ProgramKind::Soak ? RunSoakTest(planned) : RunTests(planned);
  }

  std::vector<SpeedRow> RunSpeed() {
    ProgressLine progress("Speed");
    progress.Show("measuring");
    std::vector<SpeedRow> rows =
        MeasureSpeed(TestsFolder(Is64BitWindows() ? 64 : 32) + L"\\hash_file.exe", folders_.work,
                     options_.speedMegabytes, stop_);
    const auto compared =
        std::ranges::count_if(rows, [](const SpeedRow& row) { return row.problem.empty(); });
    progress.Finish(std::to_string(compared) + " comparisons");
    return rows;
  }

  std::vector<Picture> TakenPictures() const {
    std::vector<Picture> pictures;
    WIN32_FIND_DATAW data = {};
    const HANDLE search = FindFirstFileW((Pictures() + L"\\*.png").c_str(), &data);
    if (search == INVALID_HANDLE_VALUE) return pictures;
    do {
      const std::optional<std::string> png = ReadBytes(Pictures() + L"\\" + data.cFileName);
      const std::string name = swr::WideToUtf8(swr::FromWide(data.cFileName));
      if (png) pictures.push_back({name, *png});
    } while (FindNextFileW(search, &data));
    FindClose(search);
    std::ranges::sort(pictures, {}, &Picture::title);
    for (Picture& picture : pictures) picture.title = TitleOf(picture.title);
    return pictures;
  }

 private:
  std::wstring TestsFolder(int bits) const {
    return folders_.kit + L"\\tests\\" + std::to_wstring(bits);
  }
  std::wstring Temp() const { return folders_.work + L"\\temp"; }
  std::wstring Pictures() const { return folders_.work + L"\\pictures"; }
  std::wstring Logs() const { return folders_.kit + L"\\logs"; }

  milliseconds TimeFor(const PlannedProgram& planned) const {
    const milliseconds limit = seconds(planned.limitSeconds);
    if (planned.kind == ProgramKind::Soak) return limit;
    return std::min(limit, std::chrono::duration_cast<milliseconds>(end_ - steady_clock::now()));
  }

  // Tests find their files by relative paths, which are plain ASCII wherever the kit is.
  ProgramRun Prepare(const PlannedProgram& planned) const {
    const std::wstring folder = TestsFolder(planned.bits);
    ProgramRun run = {.program = folder + L"\\" + Wide(planned.file), .folder = folder};
    run.environment = {{L"TEMP", Temp()},
                       {L"TMP", Temp()},
                       {L"SUMWRIGHT_TEST_DATA", L"..\\data"},
                       {L"SUMWRIGHT_KIT_PICTURES", Pictures()},
                       {L"SUMWRIGHT_KIT_FILES", std::to_wstring(options_.fileCount)}};
    run.limit = TimeFor(planned);
    return run;
  }

  static std::wstring ProgramUnderTest(int bits) {
    return bits == 64 ? L"..\\..\\programs\\Sumwright.exe" : L"..\\..\\programs\\Sumwright-x86.exe";
  }

  // A long filter would not fit on the command line.
  std::wstring FlagFile(const std::string& filter) const {
    const std::wstring path = Temp() + L"\\test flags";
    WriteBytes(path, "--gtest_filter=" + filter + "\n");
    return path;
  }

  void KeepLog(const PlannedProgram& planned, const std::string& output) const {
    WriteBytes(Logs() + L"\\" + Wide(planned.title) + L".txt", output);
  }

  ProgramReport RunTests(const PlannedProgram& planned) {
    ProgramReport report = {.title = planned.title};
    ProgressLine progress(planned.title);
    std::string output;
    double time = 0;
    size_t announced = 0;
    for (int start = 0; start < MaxStarts; ++start) {
      ProgramRun run = Prepare(planned);
      if (run.limit <= milliseconds(0)) {
        report.problem = "No time was left for it.";
        break;
      }
      if (planned.kind == ProgramKind::WindowTests) run.arguments = ProgramUnderTest(planned.bits);
      run.arguments += L" --gtest_color=no \"--gtest_flagfile=" +
                       FlagFile(Without(planned.filter, report.results)) + L"\"";
      TestLog log;
      run.onLine = [&](std::string_view line) {
        output.append(line).append("\n");
        log.AddLine(line);
        const size_t number = report.results.size() + log.Results().size() + 1;
        const int total = static_cast<int>(report.results.size()) + log.Announced();
        if (!log.Running().empty()) {
          progress.Show(std::to_string(number) + " of " + std::to_string(total) + "  " +
                        log.Running());
        }
      };
      const RunOutcome outcome = RunProgram(run, stop_);
      time += outcome.seconds;
      std::string problem = ProblemOf(outcome);
      log.End(problem.empty() ? "The program ended." : problem);
      const size_t ran = log.Results().size();
      if (start == 0) announced = static_cast<size_t>(log.Announced());
      report.results.insert(report.results.end(), log.Results().begin(), log.Results().end());
      report.figures.insert(report.figures.end(), log.Figures().begin(), log.Figures().end());
      const bool isComplete = announced > 0 && report.results.size() >= announced;
      if (problem.empty() && !isComplete) problem = "It ended before all tests had run.";
      // The test that crashed the program has failed. If it was the last one, nothing is left to
      // run.
      report.problem = isComplete ? "" : problem;
      // The program is restarted for the next test, unless it failed as a whole or its time is up.
      if (isComplete || outcome.end != RunEnd::Exited || ran == 0) break;
    }
    report.seconds = Rounded(time);
    KeepLog(planned, output);
    Finish(progress, report);
    return report;
  }

  ProgramReport RunSoakTest(const PlannedProgram& planned) {
    ProgramReport report = {.title = planned.title};
    ProgressLine progress(planned.title);
    ProgramRun run = Prepare(planned);
    run.arguments =
        ProgramUnderTest(planned.bits) + L" --minutes " + std::to_wstring(options_.soakMinutes);
    std::string output;
    run.onLine = [&](std::string_view line) {
      output.append(line).append("\n");
      progress.Show(std::string(line.substr(0, line.find('\r'))));
    };
    const RunOutcome outcome = RunProgram(run, stop_);
    report.problem = ProblemOf(outcome);
    report.seconds = Rounded(outcome.seconds);
    if (outcome.end == RunEnd::Exited) {
      const bool isGood = outcome.code == 0;
      constexpr size_t lastPart = 4000;
      report.results = {
          {.name = "RandomUse",
           .status = isGood ? TestStatus::Passed : TestStatus::Failed,
           .milliseconds = Rounded(outcome.seconds * 1000),
           .detail =
               isGood ? "" : output.substr(output.size() - std::min(output.size(), lastPart))}};
    }
    KeepLog(planned, output);
    Finish(progress, report);
    return report;
  }

  static void Finish(ProgressLine& progress, const ProgramReport& report) {
    const Counts counts = CountResults({.programs = {report}});
    std::string line = std::to_string(counts.passed) + " passed";
    if (counts.failed > 0) line += ", " + std::to_string(counts.failed) + " FAILED";
    if (counts.skipped > 0) line += ", " + std::to_string(counts.skipped) + " skipped";
    line += ", " + std::to_string(report.seconds) + " s";
    if (!report.problem.empty()) line += ". " + report.problem;
    progress.Finish(line);
  }

  const SessionFolders& folders_;
  const SessionOptions& options_;
  HANDLE stop_;
  steady_clock::time_point end_;
};

}  // namespace

void RunSession(const SessionFolders& folders, const SessionOptions& options, HANDLE stop,
                Report& report) {
  Session session(folders, options, stop);
  for (const PlannedProgram& planned : options.plan) {
    if (IsSet(stop)) break;
    report.programs.push_back(session.Run(planned));
  }
  if (options.speedMegabytes > 0 && !IsSet(stop)) {
    report.speed = session.RunSpeed();
    ProgramReport digests = {.title = "Speed: equal digests"};
    for (const SpeedRow& row : report.speed) {
      digests.results.push_back({.name = row.work + ", " + row.other,
                                 .status = row.digestsDiffer     ? TestStatus::Failed
                                           : row.problem.empty() ? TestStatus::Passed
                                                                 : TestStatus::Skipped,
                                 .milliseconds = Rounded((row.ours + row.theirs) * 1000),
                                 .detail = row.problem});
    }
    report.programs.push_back(std::move(digests));
  }
  report.pictures = session.TakenPictures();
}

}  // namespace kit
