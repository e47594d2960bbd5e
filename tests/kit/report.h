// What a run of the kit found out, and how it is written down: report.txt for reading at once, and
// report.html, one file with its pictures inside, for sending.
#pragma once

#include <string>
#include <vector>

#include "tests/kit/test_log.h"

namespace kit {

// All texts here are UTF-8.

struct Fact {
  std::string name;
  std::string value;
};

// One program of tests, as far as it ran.
struct ProgramReport {
  std::string title;
  std::vector<TestResult> results;
  std::vector<Figure> figures;
  // Why the program did not run to its end or at all; empty when it did.
  std::string problem;
  int seconds = 0;
};

struct SpeedRow {
  std::string work;    // "SHA-256 of 512 MiB"
  std::string beside;  // the other command
  double ours = 0;     // seconds
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
  std::vector<Fact> computer;
  std::vector<ProgramReport> programs;
  std::vector<SpeedRow> speed;
  std::vector<Picture> pictures;
  // Why the run as a whole was not finished ("stopped with Ctrl+C"); empty when it was.
  std::string brokenOff;
  // Whether the user's settings, clipboard and menu entries were put back, as a sentence.
  std::string putBack;
};

struct Counts {
  int passed = 0;
  int failed = 0;
  int notHere = 0;
  int programsWithProblems = 0;
};
Counts CountResults(const Report& report);
// False when a test failed, a program or the run was not finished, or nothing ran.
bool IsGood(const Report& report);
// One sentence for the top of the report.
std::string Verdict(const Report& report);

// What no program can judge: at most ten looks, each a sentence or two.
const std::vector<std::string>& LooksForAPerson();

// Lines end in "\r\n". The mailbox is where the report is to be sent.
std::string TextReport(const Report& report, const std::string& mailbox);
std::string HtmlReport(const Report& report, const std::string& mailbox);

// Text that may be shown to strangers: each of these texts (a folder of the user, say), in any case
// of ASCII letters and with either separator, is replaced by what stands beside it.
struct Redaction {
  std::string text;
  std::string replacement;
};
std::string Redacted(std::string text, const std::vector<Redaction>& redactions);
// All texts of the report but the pictures.
void Redact(Report& report, const std::vector<Redaction>& redactions);

}  // namespace kit
