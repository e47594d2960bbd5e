// The report as plain text.
#include <algorithm>
#include <cstdio>

#include "tests/kit/report.h"

namespace kit {
namespace {

class Lines {
 public:
  void Add(const std::string& line = {}) { text_ += line + "\r\n"; }
  void Heading(const std::string& heading) {
    Add();
    Add(heading);
    Add(std::string(heading.size(), '-'));
  }
  // Indents each line of the text.
  void Indented(const std::string& text) {
    for (size_t start = 0; start <= text.size();) {
      const size_t end = std::min(text.find('\n', start), text.size());
      Add("      " + text.substr(start, end - start));
      start = end + 1;
    }
  }
  std::string Text() const { return text_; }

 private:
  std::string text_;
};

std::string Padded(std::string text, size_t width) {
  if (text.size() < width) text.append(width - text.size(), ' ');
  return text;
}

const char* StatusWord(TestStatus status) {
  switch (status) {
    case TestStatus::Passed:
      return "passed";
    case TestStatus::Failed:
      return "FAILED";
    case TestStatus::Skipped:
      return "skipped";
  }
  return "";
}

std::string Decimal(const char* format, double value) {
  char text[32];
  std::snprintf(text, sizeof text, format, value);
  return text;
}

void AddResults(Lines& lines, const Report& report, TestStatus status) {
  for (const ProgramReport& program : report.programs) {
    for (const TestResult& result : program.results) {
      if (result.status != status) continue;
      lines.Add("  " + program.title + ": " + result.name);
      lines.Indented(result.detail);
    }
  }
}

void AddSpeed(Lines& lines, const std::vector<SpeedRow>& rows) {
  for (const SpeedRow& row : rows) {
    const std::string what = "  " + Padded(row.work, 28) + Padded(row.other, 30);
    if (!row.problem.empty()) {
      lines.Add(what + "skipped: " + row.problem);
    } else {
      lines.Add(what + "ours " + Decimal("%.2f", row.ours) + " s, theirs " +
                Decimal("%.2f", row.theirs) + " s, ratio " +
                Decimal("%.2f", row.ours / row.theirs));
    }
  }
}

}  // namespace

std::string TextReport(const Report& report, const std::string& mailbox) {
  const Counts counts = CountResults(report);
  Lines lines;
  lines.Add("Sumwright " + report.version + " on this computer");
  lines.Add();
  lines.Add(Verdict(report));
  lines.Add(report.restored);
  lines.Add("Started " + report.started + ", took " + std::to_string(report.seconds) + " s.");
  lines.Add();
  lines.Add("Please send report.html, which contains the pictures, to " + mailbox + ".");

  lines.Heading("This computer");
  for (const Property& property : report.computer) {
    lines.Add("  " + Padded(property.name, 20) + property.value);
  }

  lines.Heading("Test programs");
  for (const ProgramReport& program : report.programs) {
    const Counts own = CountResults({.programs = {program}});
    lines.Add("  " + Padded(program.title, 36) + std::to_string(own.passed) + " passed, " +
              std::to_string(own.failed) + " failed, " + std::to_string(own.skipped) +
              " skipped, " + std::to_string(program.seconds) + " s");
    if (!program.problem.empty()) lines.Indented(program.problem);
    for (const Figure& figure : program.figures) {
      lines.Indented(figure.name + ": " + figure.value);
    }
  }
  if (counts.failed > 0) {
    lines.Heading("Tests that failed");
    AddResults(lines, report, TestStatus::Failed);
  }
  if (counts.skipped > 0) {
    lines.Heading("Skipped tests");
    AddResults(lines, report, TestStatus::Skipped);
  }
  if (!report.speed.empty()) {
    lines.Heading("Speed compared with Windows' own tools");
    AddSpeed(lines, report.speed);
  }
  lines.Heading("For you to look at");
  for (const std::string& point : PointsForAPerson()) lines.Add("  [ ] " + point);

  lines.Heading("Each test");
  for (const ProgramReport& program : report.programs) {
    lines.Add("  " + program.title);
    for (const TestResult& result : program.results) {
      lines.Add("    " + Padded(StatusWord(result.status), 10) +
                Padded(std::to_string(result.milliseconds) + " ms", 12) + result.name);
    }
  }
  return lines.Text();
}

}  // namespace kit
