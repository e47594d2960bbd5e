#include "app/intake/intake_run.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <unordered_set>
#include <utility>
#include <vector>

#include "swr/checksums/checksum_file.h"
#include "swr/checksums/listed_path.h"
#include "swr/paths/folder_walk.h"
#include "swr/paths/path_forms.h"
#include "swr/system/full_path.h"
#include "swr/text/text.h"
#include "swr/text/text_file.h"

namespace app {
namespace {

// Passes the files of one request on.
class FoundFiles {
 public:
  explicit FoundFiles(const IntakeCallbacks& callbacks) : callbacks_(callbacks) {}

  // False when no more is wanted.
  bool Report(IntakeFile file) {
    // Unequal paths with the same hash value do no harm: their files only seem to repeat.
    file.mayRepeat = !hashes_.insert(swr::CaseHash(file.path)).second;
    if (!file.walkedPath.empty()) {
      file.mayRepeat |= !hashes_.insert(swr::CaseHash(file.walkedPath)).second;
    }
    return callbacks_.found(std::move(file));
  }

 private:
  const IntakeCallbacks& callbacks_;
  std::unordered_set<uint64_t> hashes_;  // of the paths so far
};

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
  FoundFiles found(callbacks);
  for (const std::u16string& path : request.paths) {
    if (cancel) break;
    if (swr::IsDirectoryPath(path)) {
      swr::WalkFolder(path, options, [&](swr::FoundFile walked) {
        IntakeFile file = LookUpFile(walked.path);
        file.isWalked = true;
        // Mostly it is the same: one text less for the other thread to free.
        if (walked.path != file.path) file.walkedPath = std::move(walked.path);
        found.Report(std::move(file));
      });
    } else if (!cancel && !found.Report(LookUpFile(path))) {
      break;
    }
  }
  return {.cancelled = cancel};
}

IntakeFile ListedFile(swr::ChecksumLine line, const std::u16string& checksumFile) {
  IntakeFile file = WithFullPath(swr::ResolveListedPath(checksumFile, line.name));
  file.listed = ListedChecksum{.digest = std::move(line.digest),
                               .candidates = std::move(line.candidates),
                               .lineNumber = line.lineNumber};
  return file;
}

IntakeEnd Run(const ChecksumFileRequest& request, const std::atomic<bool>& cancel,
              const IntakeCallbacks& callbacks) {
  if (cancel) return {.cancelled = true};
  uint32_t error = 0;
  const std::optional<std::u16string> text = swr::ReadTextFile(request.path, &error);
  if (!text) return {.cancelled = cancel, .readError = error};
  swr::ChecksumTextReader reader(*text, request.path);
  FoundFiles found(callbacks);
  const auto report = [&](IntakeFile file) {
    if (cancel) {
      file.lookedUp = false;
    } else {
      LookUp(file);
    }
    return found.Report(std::move(file));
  };
  // Unless all paths are wanted first, the first file is looked up, and hashed, while the lines
  // after it are still to be read.
  std::vector<IntakeFile> announced;
  bool goesOn = true;
  while (goesOn) {
    std::optional<swr::ChecksumLine> line = reader.Next();
    if (!line) break;
    IntakeFile file = ListedFile(*std::move(line), request.path);
    if (request.announcePaths) {
      goesOn = callbacks.announced(file.path);
      announced.push_back(std::move(file));
    } else {
      goesOn = report(std::move(file));
    }
  }
  for (size_t i = 0; goesOn && i < announced.size(); ++i) goesOn = report(std::move(announced[i]));
  return {.cancelled = cancel, .skippedLines = reader.SkippedLines()};
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
