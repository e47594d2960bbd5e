#include "cli/select/file_selection.h"

#include <algorithm>
#include <utility>

#include "cli/select/line_source.h"
#include "cli/select/name_pattern.h"
#include "swr/paths/folder_walk.h"
#include "swr/paths/path_forms.h"
#include "swr/system/error_codes.h"
#include "swr/system/file.h"
#include "swr/text/text.h"

namespace cli {
namespace {

class Selector {
 public:
  Selector(const Options& options, bool withSizes, const std::atomic<bool>& cancel,
           const SelectionCallbacks& callbacks)
      : selection_(options.selection),
        withSizes_(withSizes),
        cancel_(cancel),
        callbacks_(callbacks) {}

  void Take(std::u16string name, bool canBeStandardInput) {
    if (canBeStandardInput && name == StandardInputName) {
      callbacks_.found({.path = std::move(name), .isStandardInput = true});
      return;
    }
    if (name.empty()) {
      callbacks_.failed(name, swr::ErrorFileNotFound);
      return;
    }
    uint64_t size = 0;
    // Unless folders are walked or sizes are wanted, nothing is queried before the file is opened.
    if (selection_.recursive || withSizes_) {
      uint32_t error = 0;
      const auto info = swr::QueryFileInfo(swr::ToLongPath(name), error);
      if (info && info->isDirectory && selection_.recursive) {
        Walk(name);
        return;
      }
      if (info) size = info->size;
    }
    callbacks_.found({.path = std::move(name), .size = size});
  }

 private:
  void Walk(const std::u16string& root) {
    swr::WalkOptions walk{.includeHidden = selection_.hidden,
                          .withSizes = withSizes_,
                          .cancel = &cancel_,
                          .followLinks = selection_.followLinks,
                          .onError = callbacks_.failed};
    if (!selection_.exclude.empty() || !selection_.include.empty()) {
      walk.wants = [this](std::u16string_view relative, bool isDirectory) {
        return Wants(relative, isDirectory);
      };
    }
    swr::WalkFolder(root, walk, [this](swr::FoundFile file) {
      callbacks_.found({.path = std::move(file.path), .size = file.size});
    });
  }

  bool Wants(std::u16string_view relative, bool isDirectory) const {
    const auto fits = [&](const std::u16string& pattern) { return FitsPattern(relative, pattern); };
    if (std::ranges::any_of(selection_.exclude, fits)) return false;
    return isDirectory || selection_.include.empty() ||
           std::ranges::any_of(selection_.include, fits);
  }

  const Selection& selection_;
  bool withSizes_;
  const std::atomic<bool>& cancel_;
  const SelectionCallbacks& callbacks_;
};

}  // namespace

void SelectFiles(const Options& options, bool withSizes, const std::atomic<bool>& cancel,
                 const SelectionCallbacks& callbacks) {
  Selector selector(options, withSizes, cancel, callbacks);
  const auto isCancelled = [&] { return cancel.load(std::memory_order_relaxed); };
  for (const std::u16string& operand : options.operands) {
    if (isCancelled()) return;
    selector.Take(operand, true);
  }
  for (const std::u16string& list : options.filesFrom) {
    LineSource lines;
    if (const uint32_t error = lines.Open(list, options.nullNames ? '\0' : '\n')) {
      callbacks.listFailed(list, error);
      continue;
    }
    std::u16string name;
    while (!isCancelled() && lines.Next(name)) {
      if (!options.nullNames && name.ends_with(u'\r')) name.pop_back();
      if (!name.empty()) selector.Take(std::move(name), false);
    }
    if (lines.Error() != 0) callbacks.listFailed(list, lines.Error());
  }
}

}  // namespace cli
