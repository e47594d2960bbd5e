#include "tests/kit/report.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace kit {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

constexpr char Mailbox[] = "somebody@example.com";

Report Sample() {
  Report report{.version = "1.2.3", .started = "2026-11-22 14:05", .seconds = 61};
  report.computer = {{"Windows", "10 Pro"}};
  report.programs = {
      {.title = "Core (64-bit)",
       .results = {{"ATest.Passes", TestStatus::Passed, 5, ""},
                   {"ATest.Skips", TestStatus::Skipped, 0, "there is no such drive"}},
       .figures = {{"longest answer", "34 ms"}}}};
  report.restored = "Your settings were restored.";
  return report;
}

void AddFailure(Report& report) {
  report.programs[0].results.push_back(
      {"ATest.Fails", TestStatus::Failed, 7, "a_test.cpp:3: Failure\n1 < 2 & 3"});
}

TEST(ReportTest, IsGoodOnlyIfAllTestsPassedAndTheRunWasFinished) {
  EXPECT_TRUE(IsGood(Sample()));
  EXPECT_EQ(Verdict(Sample()), "1 test passed, none failed; 1 skipped.");

  Report failed = Sample();
  AddFailure(failed);
  EXPECT_FALSE(IsGood(failed));
  EXPECT_EQ(Verdict(failed), "1 test failed, 1 passed; 1 skipped.");

  Report crashed = Sample();
  crashed.programs[0].problem = "It crashed.";
  EXPECT_FALSE(IsGood(crashed));
  EXPECT_THAT(Verdict(crashed), HasSubstr("1 test program was not finished."));

  Report broken = Sample();
  broken.interruption = "stopped with Ctrl+C.";
  EXPECT_FALSE(IsGood(broken));
  EXPECT_THAT(Verdict(broken), HasSubstr("The run was not finished: stopped with Ctrl+C."));

  Report nothing;
  EXPECT_FALSE(IsGood(nothing));
  EXPECT_EQ(Verdict(nothing), "No tests were run.");

  Report skipped = Sample();
  skipped.programs[0].results.erase(skipped.programs[0].results.begin());
  EXPECT_FALSE(IsGood(skipped)) << "a skipped test has not passed";
}

TEST(ReportTest, TheTextListsFailedAndSkippedTests) {
  Report report = Sample();
  const std::string good = TextReport(report, Mailbox);
  EXPECT_THAT(good, Not(HasSubstr("Tests that failed")));
  EXPECT_THAT(good, HasSubstr("Core (64-bit): ATest.Skips\r\n      there is no such drive\r\n"));
  EXPECT_THAT(good, HasSubstr("longest answer: 34 ms"));
  EXPECT_THAT(good, HasSubstr(Mailbox));
  AddFailure(report);
  EXPECT_THAT(TextReport(report, Mailbox),
              HasSubstr("Tests that failed\r\n-----------------\r\n  Core (64-bit): ATest.Fails\r\n"
                        "      a_test.cpp:3: Failure\r\n      1 < 2 & 3\r\n"));
}

TEST(ReportTest, ThePageIsEscapedAndContainsItsPictures) {
  Report report = Sample();
  AddFailure(report);
  report.pictures = {{"idle", std::string("\x89PNG\0\xFF", 6)}, {"one", "a"}, {"two", "ab"}};
  const std::string page = HtmlReport(report, Mailbox);
  EXPECT_THAT(page, HasSubstr("1 &lt; 2 &amp; 3"));
  EXPECT_THAT(page, HasSubstr("src=\"data:image/png;base64,iVBORwD/\""));
  EXPECT_THAT(page, HasSubstr("base64,YQ==\""));
  EXPECT_THAT(page, HasSubstr("base64,YWI=\""));
  // The page fetches nothing and sends nothing.
  EXPECT_THAT(page, Not(HasSubstr("http")));
}

TEST(ReportTest, SpeedIsARatioOrAReason) {
  Report report = Sample();
  report.speed = {{.work = "SHA-256 of 512 MiB", .other = "certutil", .ours = 1, .theirs = 4},
                  {.work = "MD5 of 512 MiB", .other = "Get-FileHash", .problem = "too old"}};
  for (const std::string& text : {TextReport(report, Mailbox), HtmlReport(report, Mailbox)}) {
    EXPECT_THAT(text, HasSubstr("0.25"));
    EXPECT_THAT(text, HasSubstr("skipped: too old"));
  }
}

TEST(ReportTest, APersonJudgesAtMostTenPoints) {
  EXPECT_LE(PointsForAPerson().size(), 10u);
  const std::string page = HtmlReport(Sample(), Mailbox);
  size_t boxes = 0;
  for (size_t at = 0; (at = page.find("<input type=\"checkbox\">", at)) != page.npos; ++at) ++boxes;
  EXPECT_EQ(boxes, PointsForAPerson().size());
}

TEST(RedactionTest, ReplacesFoldersInAnyCaseAndWithEitherSeparator) {
  const std::vector<Redaction> redactions = {{"C:\\Users\\Jane Doe", "(profile)"}, {"", "never"}};
  EXPECT_EQ(Redacted("at c:\\users\\jane doe\\a and C:/Users/Jane Doe/b", redactions),
            "at (profile)\\a and (profile)/b");
  EXPECT_EQ(Redacted("nothing", redactions), "nothing");
  EXPECT_EQ(Redacted("aa", {{"a", "aa"}}), "aaaa") << "replacements are not searched again";
}

TEST(RedactionTest, CoversEveryTextOfTheReport) {
  Report report = Sample();
  AddFailure(report);
  const std::vector<Redaction> redactions = {{"secret", "(user)"}};
  report.computer[0].value = "secret";
  report.programs[0].problem = "secret";
  report.programs[0].results[2].detail = "secret";
  report.programs[0].figures[0].value = "secret";
  report.speed = {{.work = "a", .other = "b", .problem = "secret"}};
  report.interruption = "secret";
  report.restored = "secret";
  Redact(report, redactions);
  EXPECT_THAT(TextReport(report, Mailbox), Not(HasSubstr("secret")));
  EXPECT_THAT(HtmlReport(report, Mailbox), Not(HasSubstr("secret")));
}

}  // namespace
}  // namespace kit
