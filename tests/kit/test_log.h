// Parses the output of a GoogleTest program: which tests ran, how they ended and what they printed.
// Unlike the XML file, which is written at the very end, this works for programs that crash or are
// ended.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kit {

enum class TestStatus { Passed, Failed, Skipped };

struct TestResult {
  std::string name;  // "Suite.Test"
  TestStatus status = TestStatus::Passed;
  int milliseconds = 0;
  // What a failed test printed, or why a test was skipped. UTF-8.
  std::string detail;

  bool operator==(const TestResult&) const = default;
};

// A measured value that a test printed with PrintFigure (figure_line.h).
struct Figure {
  std::string name;
  std::string value;

  bool operator==(const Figure&) const = default;
};

class TestLog {
 public:
  // One line without its line end. Trailing carriage returns are dropped.
  void AddLine(std::string_view line);
  // The program has ended, or was ended, for this reason ("it crashed"). A test that was still
  // running has failed, and the reason is added to what it printed.
  void End(std::string_view reason);

  // The test that is running; empty between tests.
  const std::string& Running() const { return running_; }
  // How many tests the program has announced, in total.
  int Announced() const { return announced_; }
  const std::vector<TestResult>& Results() const { return results_; }
  const std::vector<Figure>& Figures() const { return figures_; }

 private:
  void EndTest(TestStatus status, std::string_view rest);

  std::string running_;
  std::string printed_;  // by the running test
  int announced_ = 0;
  bool hasSummary_ = false;  // what follows repeats the results
  std::vector<TestResult> results_;
  std::vector<Figure> figures_;
};

}  // namespace kit
