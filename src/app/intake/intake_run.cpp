#include "app/intake/intake_run.h"

#include <utility>

#include "swr/checksums/checksum_file.h"
#include "swr/checksums/listed_path.h"
#include "swr/paths/folder_walk.h"
#include "swr/paths/path_forms.h"
#include "swr/system/full_path.h"
#include "swr/text/text_file.h"

namespace app {
namespace {

IntakeFile WithFullPath(const std::u16string& path) {
  IntakeFile file;
  file.path = swr::SystemFullPath(path).value_or(path);
  return file;
}

void LookUp(IntakeFile& file) {
  if (const auto info = swr::QueryFileInfo(swr::ToLongPath(file.path), file.error)) {
    file.size = info->size;
    file.modified = info->modified;
  } else {
    file.failed = true;
  }
}

IntakeEnd Run(const PathsRequest& request, const std::atomic<bool>& cancel,
              const IntakeCallbacks& callbacks) {
  const swr::WalkOptions options{.recursive = true,
                                 .includeHidden = request.includeHidden,
                                 .withSizes = false,
                                 .cancel = &cancel};
  for (const std::u16string& path : request.paths) {
    if (cancel) break;
    if (swr::IsDirectoryPath(path)) {
      swr::WalkFolder(path, options, [&](swr::FoundFile walked) {
        IntakeFile file = LookUpFile(walked.path);
        file.isWalked = true;
        // Mostly it is the same: one text less for the other thread to free.
        if (walked.path != file.path) file.walkedPath = std::move(walked.path);
        callbacks.found(std::move(file));
      });
    } else if (!cancel && !callbacks.found(LookUpFile(path))) {
      break;
    }
  }
  return {.cancelled = cancel};
}

// The lines are read before the first file is looked up: the paths may be wanted first, and after a
// cancel all lines still have to be known.
IntakeEnd Run(const ChecksumFileRequest& request, const std::atomic<bool>& cancel,
              const IntakeCallbacks& callbacks) {
  if (cancel) return {.cancelled = true};
  IntakeEnd end;
  std::vector<IntakeFile> files;
  {
    uint32_t error = 0;
    const std::optional<std::u16string> text = swr::ReadTextFile(request.path, &error);
    if (!text) return {.cancelled = cancel, .readError = error};
    swr::ChecksumTextReader reader(*text, request.path);
    while (std::optional<swr::ChecksumLine> line = reader.Next()) {
      IntakeFile& file =
          files.emplace_back(WithFullPath(swr::ResolveListedPath(request.path, line->name)));
      file.listed = ListedChecksum{.digest = std::move(line->digest),
                                   .candidates = std::move(line->candidates),
                                   .lineNumber = line->lineNumber};
      if (request.announcePaths && !callbacks.announced(file.path)) return {.cancelled = cancel};
    }
    end.skippedLines = reader.SkippedLines();
  }
  for (IntakeFile& file : files) {
    if (cancel) {
      file.lookedUp = false;
    } else {
      LookUp(file);
    }
    if (!callbacks.found(std::move(file))) break;
  }
  end.cancelled = cancel;
  return end;
}

}  // namespace

IntakeFile LookUpFile(const std::u16string& path) {
  IntakeFile file = WithFullPath(path);
  LookUp(file);
  return file;
}

IntakeEnd RunIntake(const IntakeRequest& request, const std::atomic<bool>& cancel,
                    const IntakeCallbacks& callbacks) {
  return std::visit([&](const auto& kind) { return Run(kind, cancel, callbacks); }, request);
}

}  // namespace app
