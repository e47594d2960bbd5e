// Calculates checksums and writes them as a list.
#include <memory>
#include <utility>

#include "cli/modes/run.h"
#include "swr/checksums/checksum_writer.h"
#include "swr/checksums/listed_path.h"

namespace cli {
namespace {

// Shared by the jobs of a run.
struct HashRun {
  Run& run;
  swr::AlgoMask algorithms;
  swr::ChecksumWriter writer;
  bool hasRows = false;
};

class HashJob final : public Job {
 public:
  HashJob(HashRun& shared, SelectedFile file) : shared_(shared), file_(std::move(file)) {}

  void Run(WorkTools& tools) override {
    const swr::HashOutcome outcome = HashSelected(shared_.run, tools, file_, shared_.algorithms);
    error_ = outcome.error;
    if (error_ != 0 || outcome.cancelled) return;
    swr::ExportRow row{.name = swr::ToForwardSlashes(shared_.run.console.NameForOut(file_.path)),
                       .size = outcome.bytesRead};
    for (const swr::AlgoId id : swr::IdsFromMask(shared_.algorithms)) {
      row.digests.push_back({id, outcome.digests[swr::IndexOf(id)]});
    }
    text_ = shared_.writer.Row(row);
    // Only the text is kept until the file is reported.
    file_ = {};
  }

  void Report() override {
    if (error_ != 0) {
      ReportError(shared_.run, file_.path, error_);
      shared_.run.status.NoteError(error_);
      return;
    }
    if (std::exchange(shared_.hasRows, true)) shared_.run.console.Out(shared_.writer.Between());
    shared_.run.console.Out(text_);
  }

 private:
  HashRun& shared_;
  SelectedFile file_;
  std::string text_;
  uint32_t error_ = 0;
};

swr::ExportOptions ExportOptionsFor(const Run& run, swr::AlgoMask algorithms) {
  using swr::ExportFormat;
  const bool isSeveral = swr::CountAlgos(algorithms) > 1;
  return {.format = run.options.format.value_or(isSeveral ? ExportFormat::Tagged
                                                          : ExportFormat::Sha256Sum),
          .exactNames = !run.console.OutIsTerminal()};
}

}  // namespace

void RunHash(Run& run) {
  swr::AlgoMask algorithms = run.options.algorithms;
  if (algorithms == 0) {
    const bool isSfv = run.options.format == swr::ExportFormat::Sfv;
    algorithms = swr::MaskOf(isSfv ? swr::AlgoId::Crc32 : swr::AlgoId::Sha256);
  }
  HashRun shared{.run = run,
                 .algorithms = algorithms,
                 .writer = {ExportOptionsFor(run, algorithms), algorithms}};
  run.console.Out(shared.writer.Head());
  RunOverFiles(run, [&shared](SelectedFile file) {
    return std::make_unique<HashJob>(shared, std::move(file));
  });
  run.console.Out(shared.writer.Tail(shared.hasRows));
  run.hasOnlyErrors = !shared.hasRows && run.status.Code() != ExitStatus::Good;
}

}  // namespace cli
