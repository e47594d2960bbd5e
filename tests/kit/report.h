// The results of a run of the kit, and the reports: report.txt to read at once, and report.html, a
// single file with embedded pictures, to send.
#pragma once

#include <string>
#include <vector>

#include "tests/kit/test_log.h"

namespace kit {

// All texts here are UTF-8.

struct Property {
  std::string name;
  std::string value;
};

// One test program, as far as it ran.
struct ProgramReport {
  std::string title;
  std::vector<TestResult> results;
  std::vector<Figure> figures;
  // Why the program did not run, or not to its end; empty when it did.
  std::string problem;
  int seconds = 0;
};

struct SpeedRow {
  std::string work;   // "SHA-256 of 512 MiB"
  std::string other;  // the other command
  double ours = 0;    // seconds
  double theirs = 0;
  // Why there is no comparison; then the times are 0.
  std::string problem;
  bool digestsDiffer = false;
};

struct Picture {
  std::string title;
  std::string png;  // bytes
};

struct Report {
  std::string version;  // of Sumwright
  std::string started;  // "2026-11-22 14:05", local time
  int seconds = 0;
  std::vector<Property> computer;
  std::vector<ProgramReport> programs;
  std::vector<SpeedRow> speed;
  std::vector<Picture> pictures;
  // Why the run as a whole was not finished ("stopped with Ctrl+C"); empty if it was.
  std::string interruption;
  // A sentence that says whether the user's settings, clipboard and menu entries were restored.
  std::string restored;
};

struct Counts {
  int passed = 0;
  int failed = 0;
  int skipped = 0;
  int programsWithProblems = 0;
};
Counts CountResults(const Report& report);
// False when a test failed, a program or the run did not finish, or nothing ran.
bool IsGood(const Report& report);
// One sentence for the top of the report.
std::string Verdict(const Report& report);

// What only a person can judge: at most ten points, each a sentence or two.
const std::vector<std::string>& PointsForAPerson();

// Lines end in "\r\n". `mailbox` is the address to send the report to.
std::string TextReport(const Report& report, const std::string& mailbox);
std::string HtmlReport(const Report& report, const std::string& mailbox);

// Makes text safe to show to strangers: replaces each of these texts (such as a folder of the user)
// with its replacement, ignoring ASCII case and with either separator.
struct Redaction {
  std::string text;
  std::string replacement;
};
std::string Redacted(std::string text, const std::vector<Redaction>& redactions);
// Redacts all texts of the report, but not the pictures.
void Redact(Report& report, const std::vector<Redaction>& redactions);

}  // namespace kit
