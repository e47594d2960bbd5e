#include "tests/kit/report.h"

#include <algorithm>
#include <cctype>

namespace kit {
namespace {

std::string Number(int count, const char* singular, const char* plural) {
  return std::to_string(count) + " " + (count == 1 ? singular : plural);
}

// Makes letters and separators equal that Windows treats as equal in a path.
char Folded(char unit) {
  if (unit == '/') return '\\';
  return static_cast<char>(std::tolower(static_cast<unsigned char>(unit)));
}

}  // namespace

Counts CountResults(const Report& report) {
  Counts counts;
  for (const ProgramReport& program : report.programs) {
    if (!program.problem.empty()) ++counts.programsWithProblems;
    for (const TestResult& result : program.results) {
      switch (result.status) {
        case TestStatus::Passed:
          ++counts.passed;
          break;
        case TestStatus::Failed:
          ++counts.failed;
          break;
        case TestStatus::Skipped:
          ++counts.skipped;
          break;
      }
    }
  }
  return counts;
}

bool IsGood(const Report& report) {
  const Counts counts = CountResults(report);
  return counts.passed > 0 && counts.failed == 0 && counts.programsWithProblems == 0 &&
         report.interruption.empty();
}

std::string Verdict(const Report& report) {
  const Counts counts = CountResults(report);
  std::string verdict;
  if (counts.failed > 0) {
    verdict = Number(counts.failed, "test", "tests") + " failed, " + std::to_string(counts.passed) +
              " passed";
  } else if (counts.passed == 0) {
    verdict = "No tests were run";
  } else {
    verdict = Number(counts.passed, "test", "tests") + " passed, none failed";
  }
  if (counts.skipped > 0) {
    verdict += "; " + std::to_string(counts.skipped) + " skipped";
  }
  verdict += ".";
  if (counts.programsWithProblems > 0) {
    verdict += " " + Number(counts.programsWithProblems, "test program was", "test programs were") +
               " not finished.";
  }
  if (!report.interruption.empty()) verdict += " The run was not finished: " + report.interruption;
  return verdict;
}

const std::vector<std::string>& PointsForAPerson() {
  static const std::vector<std::string> points = {
      "Drag a folder from Explorer onto the window, then some files onto its list: they appear and "
      "are hashed.",
      "While a large file is hashed, Sumwright's button on the taskbar shows the progress. After "
      "Cancel it shows none.",
      "With two screens of different scaling, drag the window from one to the other: text, icons, "
      "columns and the smallest size are scaled.",
      "Options > Add to Explorer Context Menu and Add to Send To Menu. Select twenty files in "
      "Explorer and choose Calculate checksums (on Windows 11 under Show more options): one window "
      "comes to the front with twenty rows. The same through Send To.",
      "Copy a hash on a web page and go back to Sumwright: it offers to compare it. Compare and "
      "Dismiss both work.",
      "Look Up on VirusTotal and Help > Online Help open a page in your browser. Open Folder opens "
      "the folder with the file selected.",
      "Start a second Sumwright as administrator: each window keeps its own list, and no error "
      "message appears.",
      "Run sumwright-setup.exe: it asks for no administrator rights, and the Start menu gets an "
      "entry. Uninstall it in Settings: the folder, the Start menu, Explorer's menu and Send To "
      "are as before.",
      "Hash a file on a network share. Hash a large file on a USB stick and pull the stick out: "
      "the row shows an error, and the next file is hashed.",
      "Close the window on a second screen, unplug that screen and start Sumwright again: the "
      "window opens where you can see it.",
  };
  return points;
}

std::string Redacted(std::string text, const std::vector<Redaction>& redactions) {
  const auto isSame = [](char a, char b) { return Folded(a) == Folded(b); };
  for (const Redaction& redaction : redactions) {
    const std::string& wanted = redaction.text;
    if (wanted.empty()) continue;
    size_t from = 0;
    for (;;) {
      const auto start = text.begin() + static_cast<std::ptrdiff_t>(from);
      const auto found = std::search(start, text.end(), wanted.begin(), wanted.end(), isSame);
      if (found == text.end()) break;
      from = static_cast<size_t>(found - text.begin());
      text.replace(from, wanted.size(), redaction.replacement);
      from += redaction.replacement.size();
    }
  }
  return text;
}

void Redact(Report& report, const std::vector<Redaction>& redactions) {
  const auto redact = [&](std::string& text) { text = Redacted(std::move(text), redactions); };
  for (Property& property : report.computer) redact(property.value);
  for (ProgramReport& program : report.programs) {
    redact(program.problem);
    for (TestResult& result : program.results) redact(result.detail);
    for (Figure& figure : program.figures) redact(figure.value);
  }
  for (SpeedRow& row : report.speed) redact(row.problem);
  redact(report.interruption);
  redact(report.restored);
}

}  // namespace kit
