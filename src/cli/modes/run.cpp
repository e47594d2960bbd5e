#include "cli/modes/run.h"

#include <memory>
#include <utility>

#include "swr/paths/path_forms.h"
#include "swr/system/error_codes.h"
#include "swr/system/file.h"
#include "swr/text/display_text.h"

namespace cli {
namespace {

class ReportJob final : public Job {
 public:
  explicit ReportJob(std::function<void()> report) : report_(std::move(report)) {}
  void Run(WorkTools& /*tools*/) override {}
  void Report() override { report_(); }

 private:
  std::function<void()> report_;
};

}  // namespace

void ExitStatus::Note(int code) {
  int before = code_.load();
  while (before < code && !code_.compare_exchange_weak(before, code)) {
  }
}

void ExitStatus::NoteError(uint32_t error) {
  Note(swr::IsMissingError(error) || error == ErrorFileChanged ? Mismatch : Trouble);
}

std::u16string ErrorMessage(uint32_t error) {
  if (error == ErrorFileChanged) return u"the file changed while it was read";
  if (error == swr::ErrorIsDirectory) return u"is a folder; use -r to include its files";
  return swr::FormatErrorText(error);
}

void ReportError(Run& run, std::u16string_view name, uint32_t error) {
  run.console.WriteMessage(run.console.NameForErr(name) + u": " + ErrorMessage(error));
}

swr::HashOutcome HashSelected(Run& run, WorkTools& tools, const SelectedFile& file,
                              swr::AlgoMask algorithms) {
  run.progress.Begin(file.path);
  swr::HashOptions options{.cancel = &tools.cancel};
  uint64_t counted = 0;
  if (run.progress.IsShown()) {
    options.progress = [&run, &counted](uint64_t bytes) {
      run.progress.AddBytes(bytes - std::exchange(counted, bytes));
      run.progress.Tick();
    };
  }
  swr::HashOutcome outcome;
  if (file.isStandardInput) {
    swr::File input;
    outcome.error = swr::File::OpenStandardInput(input);
    if (outcome.error == 0) outcome = tools.hasher.HashStream(input, algorithms, options);
  } else {
    outcome = tools.hasher.HashFile(file.path, algorithms, options);
  }
  if (outcome.changed && outcome.error == 0) {
    outcome.error = ErrorFileChanged;
    outcome.digests = {};
  }
  run.progress.EndFile();
  return outcome;
}

std::unique_ptr<Job> MakeReport(std::function<void()> report) {
  return std::make_unique<ReportJob>(std::move(report));
}

void RunOverFiles(Run& run, const std::function<std::unique_ptr<Job>(SelectedFile)>& makeJob) {
  const Options& options = run.options;
  const auto tick = [&] {
    run.progress.Tick();
    run.console.Flush();
    if (run.console.OutError() != 0) run.work.Cancel();
  };
  const auto fail = [&run](const std::u16string& path, uint32_t error) {
    ReportError(run, path, error);
    run.status.NoteError(error);
  };
  const auto failList = [&run](const std::u16string& path, uint32_t error) {
    ReportError(run, path, error);
    run.status.Note(ExitStatus::Trouble);
  };
  // A single file needs no worker threads.
  const bool isSingle =
      options.operands.size() == 1 && options.filesFrom.empty() && !options.selection.recursive;
  if (isSingle) {
    const SelectionCallbacks callbacks{.found =
                                           [&](SelectedFile file) {
                                             run.progress.AddExpected(file.size);
                                             run.progress.EndExpected();
                                             run.work.RunOne(*makeJob(std::move(file)));
                                           },
                                       .failed = fail,
                                       .listFailed = failList};
    SelectFiles(options, run.progress.IsShown(), run.work.CancelFlag(), callbacks);
    return;
  }
  const auto produce = [&](const OrderedWork::Submit& submit) {
    const SelectionCallbacks callbacks{
        .found =
            [&](SelectedFile file) {
              run.progress.AddExpected(file.size);
              submit(makeJob(std::move(file)));
            },
        .failed = [&](const std::u16string& path,
                      uint32_t error) { submit(MakeReport([=] { fail(path, error); })); },
        .listFailed = [&](const std::u16string& path,
                          uint32_t error) { submit(MakeReport([=] { failList(path, error); })); }};
    SelectFiles(options, run.progress.IsShown(), run.work.CancelFlag(), callbacks);
    run.progress.EndExpected();
  };
  run.work.Run(produce, tick);
}

}  // namespace cli
