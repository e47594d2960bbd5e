// Verifies the files named in checksum lists.
#include <array>
#include <atomic>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "cli/modes/extra_files.h"
#include "cli/modes/listed_files.h"
#include "cli/modes/run.h"
#include "cli/select/line_source.h"
#include "swr/checksums/checksum_file.h"
#include "swr/checksums/expected_digest.h"
#include "swr/checksums/listed_path.h"
#include "swr/checksums/verdict_text.h"
#include "swr/paths/path_forms.h"
#include "swr/system/error_codes.h"
#include "swr/system/file.h"
#include "swr/text/decimal_text.h"
#include "swr/text/encoding.h"

namespace cli {
namespace {

using swr::CompareOutcome;

// For digests that could belong to several algorithms of the same length: remembers by length which
// one matched last. A list usually comes from a single tool.
class LikelyAlgorithms {
 public:
  swr::AlgoId Of(const std::vector<swr::AlgoId>& candidates) const {
    const uint8_t last = last_[swr::GetAlgo(candidates.front()).digestSize].load();
    for (const swr::AlgoId id : candidates) {
      if (swr::IndexOf(id) + 1 == last) return id;
    }
    return candidates.front();
  }
  void Note(swr::AlgoId matched) {
    last_[swr::GetAlgo(matched).digestSize].store(static_cast<uint8_t>(swr::IndexOf(matched) + 1));
  }

 private:
  std::array<std::atomic<uint8_t>, 65> last_ = {};  // by digest length in bytes; 0 for none yet
};

struct CheckRun {
  Run& run;
  LikelyAlgorithms likely;
  ExtraFiles extra;
  // Updated by the reports, in their order.
  swr::VerificationCounts counts;
  size_t skippedLines = 0;
  uint32_t firstSkippedLine = 0;
};

// Consecutive lines of a list that name the same file. The file is read once.
class CheckJob final : public Job {
 public:
  CheckJob(CheckRun& shared, std::u16string path, swr::ChecksumLine line)
      : shared_(shared), path_(std::move(path)), name_(std::move(line.name)) {
    Add(std::move(line));
  }

  bool IsOf(const std::u16string& name) const { return name == name_; }
  void Add(swr::ChecksumLine line) {
    lines_.push_back({.digest = std::move(line.digest), .candidates = std::move(line.candidates)});
  }

  void Run(WorkTools& tools) override {
    swr::AlgoMask algorithms = 0;
    for (const Line& line : lines_) algorithms |= swr::MaskOf(shared_.likely.Of(line.candidates));
    Compare(tools, algorithms);
    algorithms = 0;
    for (const Line& line : lines_) {
      if (line.result.outcome == CompareOutcome::Pending) {
        algorithms |= swr::CandidateMask(line.candidates);
      }
    }
    if (algorithms != 0) Compare(tools, algorithms);
  }

  void Report() override {
    const bool isIgnored = shared_.run.options.ignoreMissing && swr::IsMissingError(error_);
    if (isIgnored) return;
    if (error_ != 0) {
      shared_.run.status.NoteError(error_);
      if (!shared_.run.options.status) ReportError(shared_.run, path_, error_);
    }
    ++shared_.counts.Of(Outcome());
    for (Line& line : lines_) ReportLine(line);
  }

 private:
  struct Line {
    std::vector<uint8_t> digest;
    std::vector<swr::AlgoId> candidates;
    swr::CompareResult result = {CompareOutcome::Pending};
  };

  // Computes these digests and sets the results of the lines that they decide.
  void Compare(WorkTools& tools, swr::AlgoMask algorithms) {
    const swr::HashOutcome outcome = HashSelected(shared_.run, tools, {.path = path_}, algorithms);
    error_ = outcome.error;
    for (Line& line : lines_) {
      if (error_ != 0) {
        line.result = {swr::OutcomeOfError(error_)};
      } else if (line.result.outcome == CompareOutcome::Pending) {
        line.result = swr::CompareDigests(outcome.digests, line.digest, line.candidates);
        if (line.result.outcome == CompareOutcome::Match) shared_.likely.Note(line.result.algo);
      }
    }
  }

  // A file is OK only if all its lines match.
  CompareOutcome Outcome() const {
    for (const Line& line : lines_) {
      if (line.result.outcome != CompareOutcome::Match) return line.result.outcome;
    }
    return CompareOutcome::Match;
  }

  void ReportLine(Line& line) {
    const CompareOutcome outcome = line.result.outcome;
    if (outcome == CompareOutcome::Mismatch) shared_.run.status.Note(ExitStatus::Mismatch);
    if (outcome == CompareOutcome::Missing) {
      shared_.extra.AddMissing(name_, std::move(line.digest), std::move(line.candidates));
    }
    const Options& options = shared_.run.options;
    const bool isOk = outcome == CompareOutcome::Match;
    if (options.status || (options.quiet && isOk)) return;
    Console& console = shared_.run.console;
    std::string text = ListedName(console, name_);
    text += ": ";
    if (isOk) {
      text += console.Toned("OK", Tone::Good);
    } else if (outcome == CompareOutcome::Mismatch) {
      text += console.Toned("FAILED", Tone::Bad);
    } else {
      text += console.Toned("FAILED open or read", Tone::Bad);
    }
    text += '\n';
    console.Out(text);
  }

  CheckRun& shared_;
  std::u16string path_;
  std::u16string name_;
  std::vector<Line> lines_;
  uint32_t error_ = 0;
};

// Reads one list and submits a job for each file in it.
class ListReader {
 public:
  ListReader(CheckRun& shared, const OrderedWork::Submit& submit)
      : shared_(shared), run_(shared.run), submit_(submit) {}

  void Read(const std::u16string& list) {
    LineSource lines;
    if (const uint32_t error = lines.Open(list)) {
      Fail(list, error);
      return;
    }
    // A list from standard input has no folder: its names are relative to the current folder.
    const std::u16string listPath = list == StandardInputName ? u"" : list;
    if (run_.options.extra) shared_.extra.AddList(listPath);
    swr::ChecksumLineReader reader(listPath, swr::ListForms::Extended);
    bool hasChecksums = false;
    std::u16string text;
    while (!run_.work.CancelFlag().load(std::memory_order_relaxed) && lines.Next(text)) {
      swr::ChecksumLine line;
      swr::LineKind kind = reader.Read(text, line);
      if (kind == swr::LineKind::Checksum && !Narrow(line)) kind = swr::LineKind::Skipped;
      if (kind == swr::LineKind::Skipped) Skip(list, reader.LineNumber());
      if (kind != swr::LineKind::Checksum) continue;
      hasChecksums = true;
      Take(listPath, std::move(line));
    }
    Finish();
    if (lines.Error() != 0) {
      Fail(list, lines.Error());
    } else if (!hasChecksums) {
      Say(list, u"no checksums were found in this file", ExitStatus::Trouble);
    }
  }

 private:
  // Removes the candidates that the user has not selected. False when none is left.
  bool Narrow(swr::ChecksumLine& line) const {
    if (run_.options.algorithms == 0) return true;
    std::erase_if(line.candidates,
                  [&](swr::AlgoId id) { return (swr::MaskOf(id) & run_.options.algorithms) == 0; });
    return !line.candidates.empty();
  }

  void Take(const std::u16string& listPath, swr::ChecksumLine line) {
    if (job_ && job_->IsOf(line.name)) {
      job_->Add(std::move(line));
      return;
    }
    Finish();
    std::u16string path = swr::ResolveListedPath(listPath, line.name);
    if (run_.options.extra) shared_.extra.AddListed(path);
    uint64_t size = 0;
    if (run_.progress.IsShown()) {
      uint32_t error = 0;
      if (const auto info = swr::QueryFileInfo(swr::ToLongPath(path), error)) size = info->size;
    }
    run_.progress.AddExpected(size);
    job_ = std::make_unique<CheckJob>(shared_, std::move(path), std::move(line));
  }

  // Submits the file whose lines are being collected.
  void Finish() {
    if (job_) submit_(std::move(job_));
  }

  void Skip(const std::u16string& list, uint32_t number) {
    Finish();
    submit_(MakeReport([this_ = &shared_, list, number] {
      if (this_->skippedLines++ == 0) this_->firstSkippedLine = number;
      if (this_->run.options.strict) this_->run.status.Note(ExitStatus::Trouble);
      if (!this_->run.options.warn || this_->run.options.status) return;
      Console& console = this_->run.console;
      console.WriteMessage(console.NameForErr(list) + u": line " + swr::DecimalText(number) +
                           u" isn't a checksum");
    }));
  }

  void Fail(const std::u16string& list, uint32_t error) {
    Say(list, ErrorMessage(error), ExitStatus::Trouble);
  }

  void Say(const std::u16string& list, std::u16string message, int code) {
    submit_(MakeReport([this_ = &shared_, list, message = std::move(message), code] {
      Console& console = this_->run.console;
      console.WriteMessage(console.NameForErr(list) + u": " + message);
      this_->run.status.Note(code);
    }));
  }

  CheckRun& shared_;
  cli::Run& run_;
  const OrderedWork::Submit& submit_;
  std::unique_ptr<CheckJob> job_;
};

// Writes the last line, the result of the verification.
void Summarize(CheckRun& shared) {
  Run& run = shared.run;
  const size_t verified =
      shared.counts.Of(CompareOutcome::Match) + shared.counts.Of(CompareOutcome::Mismatch);
  if (verified == 0) run.status.Note(ExitStatus::Trouble);
  if (run.options.status) return;
  if (run.options.quiet && run.status.Code() == ExitStatus::Good && shared.skippedLines == 0)
    return;
  std::u16string text;
  Tone tone = Tone::Bad;
  if (shared.counts.Total() > 0) {
    text = swr::VerificationText(shared.counts);
    if (swr::IsAllOk(shared.counts)) tone = Tone::Good;
  } else {
    text = u"No file was verified.";
  }
  text += shared.extra.Summary();
  if (shared.skippedLines > 0) {
    text += u" " + swr::SkippedLinesText(shared.skippedLines, shared.firstSkippedLine) + u".";
  }
  run.console.Err(run.console.TonedErr(swr::WideToUtf8(text), tone) + "\n");
}

}  // namespace

void RunCheck(Run& run) {
  CheckRun shared{.run = run, .likely = {}, .extra = ExtraFiles(run)};
  std::vector<std::u16string> lists = run.options.operands;
  if (lists.empty()) lists.emplace_back(StandardInputName);
  const auto tick = [&] {
    run.progress.Tick();
    run.console.Flush();
    if (run.console.OutError() != 0) run.work.Cancel();
  };
  run.work.Run(
      [&](const OrderedWork::Submit& submit) {
        ListReader reader(shared, submit);
        for (const std::u16string& list : lists) reader.Read(list);
        run.progress.EndExpected();
      },
      tick);
  if (run.options.extra) shared.extra.Find();
  if (run.console.OutError() == 0) Summarize(shared);
}

}  // namespace cli
