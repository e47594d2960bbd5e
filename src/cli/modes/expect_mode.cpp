// Compares files with an expected hash.
#include <atomic>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>

#include "cli/modes/run.h"
#include "swr/checksums/expected_digest.h"
#include "swr/checksums/verdict_text.h"
#include "swr/paths/path_forms.h"
#include "swr/text/encoding.h"
#include "swr/text/text.h"

namespace cli {
namespace {

using swr::CompareOutcome;

// The results of all files reported so far, in order.
struct ExpectRun {
  Run& run;
  const swr::ParsedHash& expected;
  std::atomic<bool> hasMatch = false;  // set before the matching file is reported
  size_t files = 0;
  size_t matches = 0;
  std::u16string matchName;  // of the first match
  swr::AlgoId matchAlgo = {};
  // The file that the verdict names if nothing matches: the last one with the name that came with
  // the hash, or the only file.
  std::u16string verdictName;
  bool hasExpectedName = false;  // it is the name that came with the hash
  bool isUnreadable = false;
};

class ExpectJob final : public Job {
 public:
  ExpectJob(ExpectRun& shared, SelectedFile file) : shared_(shared), file_(std::move(file)) {}

  // The likeliest algorithm first; the others only while no file has matched.
  void Run(WorkTools& tools) override {
    const std::span<const swr::AlgoId> candidates = shared_.expected.candidates;
    Compare(tools, candidates.first(1));
    const bool isUndecided = result_.outcome == CompareOutcome::Mismatch && candidates.size() > 1 &&
                             !file_.isStandardInput && !shared_.hasMatch.load();
    if (isUndecided) Compare(tools, candidates.subspan(1));
    if (result_.outcome == CompareOutcome::Match) shared_.hasMatch.store(true);
  }

  void Report() override {
    const std::u16string_view name = swr::SplitPath(file_.path).name;
    if (error_ != 0) {
      ReportError(shared_.run, file_.path, error_);
      shared_.run.status.NoteError(error_);
    }
    ++shared_.files;
    if (result_.outcome == CompareOutcome::Match && shared_.matches++ == 0) {
      shared_.matchName = name;
      shared_.matchAlgo = result_.algo;
    }
    const bool isNamed =
        !shared_.expected.name.empty() && swr::EqualsNoCase(name, shared_.expected.name);
    if (isNamed || (shared_.files == 1 && !shared_.hasExpectedName)) {
      shared_.verdictName = name;
      shared_.hasExpectedName = isNamed;
      shared_.isUnreadable = error_ != 0;
    }
  }

 private:
  void Compare(WorkTools& tools, std::span<const swr::AlgoId> candidates) {
    // Standard input can be read only once.
    if (file_.isStandardInput) candidates = shared_.expected.candidates;
    const swr::HashOutcome outcome =
        HashSelected(shared_.run, tools, file_, swr::CandidateMask(candidates));
    error_ = outcome.error;
    result_ = error_ != 0
                  ? swr::CompareResult{swr::OutcomeOfError(error_)}
                  : swr::CompareDigests(outcome.digests, shared_.expected.digest, candidates);
  }

  ExpectRun& shared_;
  SelectedFile file_;
  swr::CompareResult result_;
  uint32_t error_ = 0;
};

struct Verdict {
  std::u16string text;
  Tone tone;
};

Verdict VerdictOf(const ExpectRun& shared) {
  if (shared.matches == 1) return {swr::MatchText(shared.matchName, shared.matchAlgo), Tone::Good};
  if (shared.matches > 1) return {swr::MatchesText(shared.matches, shared.matchAlgo), Tone::Good};
  if (!shared.hasExpectedName && shared.files > 1) {
    return {swr::NoMatchAmongText(shared.files), Tone::Bad};
  }
  if (shared.isUnreadable) return {swr::CannotCompareText(shared.verdictName), Tone::Bad};
  return {swr::NoMatchText(shared.verdictName, shared.expected.candidates), Tone::Bad};
}

}  // namespace

void RunExpect(Run& run) {
  const swr::ParsedHash& expected = *run.options.expected;
  ExpectRun shared{.run = run, .expected = expected};
  RunOverFiles(run, [&shared](SelectedFile file) {
    return std::make_unique<ExpectJob>(shared, std::move(file));
  });
  if (shared.files == 0) {
    if (run.status.Code() == ExitStatus::Good) {
      run.console.WriteMessage(u"no file to compare with the expected hash");
    }
    run.status.Note(ExitStatus::Trouble);
    return;
  }
  if (shared.matches == 0) run.status.Note(ExitStatus::Mismatch);
  if (run.options.status || (run.options.quiet && shared.matches > 0)) return;
  const Verdict verdict = VerdictOf(shared);
  run.console.Out(run.console.Toned(swr::WideToUtf8(verdict.text), verdict.tone) + "\n");
}

}  // namespace cli
