#include "tests/kit/test_log.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>

namespace kit {
namespace {

TestLog LogOf(std::initializer_list<std::string_view> lines) {
  TestLog log;
  for (const std::string_view line : lines) log.AddLine(line);
  return log;
}

TEST(TestLogTest, KeepsResultTimeAndOutputOfAFailedTest) {
  const TestLog log = LogOf({
      "Running main() from gtest_main.cc",
      "[==========] Running 3 tests from 2 test suites.",
      "[----------] Global test environment set-up.",
      "[ RUN      ] ATest.Passes",
      "a remark",
      "[       OK ] ATest.Passes (12 ms)",
      "[ RUN      ] ATest.Fails",
      "a_test.cpp:5: Failure",
      "Expected: 1",
      "",
      "[  FAILED  ] ATest.Fails (3 ms)",
      "[ RUN      ] BTest.Skips",
      "b_test.cpp:9: Skipped",
      "There is no such drive.",
      "",
      "[  SKIPPED ] BTest.Skips (0 ms)",
      "[==========] 3 tests from 2 test suites ran. (15 ms total)",
      "[  PASSED  ] 1 test.",
      "[  FAILED  ] 1 test, listed below:",
      "[  FAILED  ] ATest.Fails",
  });
  EXPECT_EQ(log.Announced(), 3);
  EXPECT_EQ(log.Running(), "");
  const std::vector<TestResult> expected = {
      {"ATest.Passes", TestStatus::Passed, 12, ""},
      {"ATest.Fails", TestStatus::Failed, 3, "a_test.cpp:5: Failure\nExpected: 1"},
      {"BTest.Skips", TestStatus::Skipped, 0, "There is no such drive."},
  };
  EXPECT_EQ(log.Results(), expected);
}

TEST(TestLogTest, ReadsLinesOfWindowsAndOfParameterizedTests) {
  const TestLog log = LogOf({
      "[ RUN      ] All/ATest.Fails/1\r",
      "[  FAILED  ] All/ATest.Fails/1, where GetParam() = 7 (250 ms)\r",
  });
  const std::vector<TestResult> expected = {{"All/ATest.Fails/1", TestStatus::Failed, 250, ""}};
  EXPECT_EQ(log.Results(), expected);
}

TEST(TestLogTest, ATestThatIsRunningWhenTheProgramEndsHasFailed) {
  TestLog log = LogOf({"[ RUN      ] ATest.Crashes", "before"});
  EXPECT_EQ(log.Running(), "ATest.Crashes");
  log.End("The program crashed.");
  const std::vector<TestResult> expected = {
      {"ATest.Crashes", TestStatus::Failed, 0, "before\nThe program crashed."}};
  EXPECT_EQ(log.Results(), expected);
  log.End("The program ended.");
  EXPECT_EQ(log.Results().size(), 1u) << "nothing was running";
}

TEST(TestLogTest, AResultLineInTheOutputOfATestIsOutput) {
  const TestLog log = LogOf({
      "[ RUN      ] ATest.Quotes",
      "[       OK ] BTest.Other (1 ms)",
      "[  FAILED  ] ATest.Quotes (2 ms)",
  });
  const std::vector<TestResult> expected = {
      {"ATest.Quotes", TestStatus::Failed, 2, "[       OK ] BTest.Other (1 ms)"}};
  EXPECT_EQ(log.Results(), expected);
}

TEST(TestLogTest, FiguresAreKeptApart) {
  const TestLog log = LogOf({
      "[ RUN      ] ATest.Measures",
      "[ FIGURE   ] longest answer\t34 ms",
      "[  FAILED  ] ATest.Measures (2 ms)",
  });
  const std::vector<Figure> figures = {{"longest answer", "34 ms"}};
  EXPECT_EQ(log.Figures(), figures);
  EXPECT_EQ(log.Results().at(0).detail, "");
}

TEST(TestLogTest, EndlessOutputIsTruncated) {
  TestLog log;
  log.AddLine("[ RUN      ] ATest.Prints");
  for (int i = 0; i < 10'000; ++i) log.AddLine(std::string(100, 'x'));
  log.End("ended");
  EXPECT_LT(log.Results().at(0).detail.size(), 20'000u);
}

}  // namespace
}  // namespace kit
