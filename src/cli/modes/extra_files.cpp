#include "cli/modes/extra_files.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "cli/modes/listed_files.h"
#include "swr/checksums/listed_path.h"
#include "swr/paths/path_forms.h"
#include "swr/text/decimal_text.h"

namespace cli {

class ExtraFiles::ExtraJob final : public Job {
 public:
  ExtraJob(ExtraFiles& all, SelectedFile file, std::u16string name)
      : all_(all), file_(std::move(file)), name_(std::move(name)) {}

  void Run(WorkTools& tools) override {
    if (all_.missing_.empty()) return;
    const swr::HashOutcome outcome = HashSelected(all_.run_, tools, file_, all_.missingAlgorithms_);
    error_ = outcome.error;
    if (error_ != 0) return;
    for (const swr::AlgoId id : swr::IdsFromMask(all_.missingAlgorithms_)) {
      const std::span<const uint8_t> digest = outcome.digests[swr::IndexOf(id)].View();
      const auto found = all_.missing_.find(
          KeyOf(id, {reinterpret_cast<const char*>(digest.data()), digest.size()}));
      if (found == all_.missing_.end()) continue;
      oldName_ = &found->second;
      return;
    }
  }

  void Report() override {
    cli::Run& run = all_.run_;
    if (error_ != 0) {
      ReportError(run, file_.path, error_);
      run.status.NoteError(error_);
    }
    ++all_.found_;
    if (oldName_ != nullptr) ++all_.moved_;
    if (run.options.strict) run.status.Note(ExitStatus::Mismatch);
    if (run.options.status) return;
    std::string text = ListedName(run.console, name_) + ": " +
                       run.console.Toned(oldName_ != nullptr ? "MOVED" : "EXTRA", Tone::Bad);
    if (oldName_ != nullptr) text += " from " + ListedName(run.console, *oldName_);
    run.console.Out(text + "\n");
  }

 private:
  ExtraFiles& all_;
  SelectedFile file_;
  std::u16string name_;
  const std::u16string* oldName_ = nullptr;
  uint32_t error_ = 0;
};

std::string ExtraFiles::KeyOf(swr::AlgoId algo, std::string_view digest) {
  std::string key(1, static_cast<char>(swr::IndexOf(algo)));
  key += digest;
  return key;
}

void ExtraFiles::AddList(const std::u16string& listPath) {
  const std::u16string_view folder = swr::SplitPath(listPath).folder;
  const bool isAtRoot = folder.empty() && !listPath.empty() && listPath.size() > 1 &&
                        (listPath[0] == u'/' || listPath[0] == u'\\');
  std::u16string root(isAtRoot ? listPath.substr(0, 1) : std::u16string(folder));
  if (root.empty()) root = u".";
  if (std::ranges::find(folders_, root) == folders_.end()) folders_.push_back(std::move(root));
  if (!listPath.empty()) listed_.insert(PathIdentity(listPath));
}

void ExtraFiles::AddListed(const std::u16string& path) { listed_.insert(PathIdentity(path)); }

void ExtraFiles::AddMissing(const std::u16string& name, std::vector<uint8_t> digest,
                            std::vector<swr::AlgoId> candidates) {
  if (!run_.options.extra) return;
  const std::string_view bytes(reinterpret_cast<const char*>(digest.data()), digest.size());
  for (const swr::AlgoId id : candidates) {
    missing_.emplace(KeyOf(id, bytes), name);
    missingAlgorithms_ |= swr::MaskOf(id);
  }
}

void ExtraFiles::Find() {
  const auto produce = [this](const OrderedWork::Submit& submit) {
    for (const std::u16string& folder : folders_) {
      Options options = run_.options;
      options.operands = {folder};
      options.filesFrom.clear();
      options.selection.recursive = true;
      const SelectionCallbacks callbacks{
          .found =
              [&](SelectedFile file) {
                // A list's folder inside that of another list is walked twice, but its files are
                // reported once.
                if (!listed_.insert(PathIdentity(file.path)).second) return;
                std::u16string name =
                    swr::ToForwardSlashes(swr::MakeRelativePath(folder, file.path));
                submit(std::make_unique<ExtraJob>(*this, std::move(file), std::move(name)));
              },
          .failed =
              [&](const std::u16string& path, uint32_t error) {
                submit(MakeReport([this, path, error] {
                  ReportError(run_, path, error);
                  run_.status.NoteError(error);
                }));
              }};
      SelectFiles(options, false, run_.work.CancelFlag(), callbacks);
    }
  };
  run_.work.Run(produce, [this] {
    run_.progress.Tick();
    run_.console.Flush();
    if (run_.console.OutError() != 0) run_.work.Cancel();
  });
}

std::u16string ExtraFiles::Summary() const {
  if (found_ == 0) return {};
  std::u16string text =
      u" " + swr::DecimalText(found_) + (found_ == 1 ? u" extra file" : u" extra files");
  if (moved_ > 0) text += u", " + swr::DecimalText(moved_) + u" of them moved";
  return text + u".";
}

}  // namespace cli
