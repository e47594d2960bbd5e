#include "app/intake/intake_run.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <utility>

#include "app/intake/hash_value_set.h"
#include "app/rows/shared_path.h"
#include "swr/checksums/checksum_file.h"
#include "swr/checksums/listed_path.h"
#include "swr/paths/folder_walk.h"
#include "swr/paths/path_forms.h"
#include "swr/system/full_path.h"
#include "swr/text/text.h"
#include "swr/text/text_file.h"

namespace app {
namespace {

std::u16string FullPath(const std::u16string& path) {
  return swr::SystemFullPath(path).value_or(path);
}

void LookUp(const std::u16string& fullPath, Row& row) {
  if (const auto info = swr::QueryFileInfo(swr::ToLongPath(fullPath), row.error)) {
    row.size = info->size;
    row.modified = info->modified;
  } else {
    row.status = RowStatus::Failed;
  }
}

// Makes the files of one request.
class FileMaker {
 public:
  // A file that was not looked up.
  IntakeFile Make(const std::u16string& fullPath) {
    IntakeFile file;
    file.row.path = SharedPath(fullPath, folders_);
    file.mayRepeat = CameBefore(fullPath);
    return file;
  }

  IntakeFile LookedUp(const std::u16string& path) {
    const std::u16string fullPath = FullPath(path);
    IntakeFile file = Make(fullPath);
    LookUp(fullPath, file.row);
    return file;
  }

  IntakeFile Walked(std::u16string path) {
    const std::u16string fullPath = FullPath(path);
    IntakeFile file = Make(fullPath);
    LookUp(fullPath, file.row);
    file.isWalked = true;
    if (path == fullPath) return file;
    file.mayRepeat |= CameBefore(path);
    file.walkedPath = std::move(path);
    return file;
  }

 private:
  // Different paths with the same hash value do no harm: their files are only treated as repeated.
  bool CameBefore(const std::u16string& path) { return !hashes_.Insert(swr::CaseHash(path)); }

  FolderTexts folders_;
  HashValueSet hashes_;  // of the paths so far
};

IntakeEnd Run(const PathsRequest& request, const std::atomic<bool>& cancel,
              const IntakeCallbacks& callbacks) {
  const swr::WalkOptions options{.recursive = true,
                                 .includeHidden = request.includeHidden,
                                 .withSizes = false,
                                 .cancel = &cancel};
  FileMaker files;
  for (const std::u16string& path : request.paths) {
    if (cancel) break;
    if (swr::IsDirectoryPath(path)) {
      swr::WalkFolder(path, options, [&](swr::FoundFile walked) {
        callbacks.found(files.Walked(std::move(walked.path)));
      });
    } else if (!cancel && !callbacks.found(files.LookedUp(path))) {
      break;
    }
  }
  return {.cancelled = cancel};
}

IntakeEnd Run(const ChecksumFileRequest& request, const std::atomic<bool>& cancel,
              const IntakeCallbacks& callbacks) {
  if (cancel) return {.cancelled = true};
  uint32_t error = 0;
  const std::optional<std::u16string> text = swr::ReadTextFile(request.path, &error);
  if (!text) return {.cancelled = cancel, .readError = error};
  const auto checksumFile = std::make_shared<const std::u16string>(request.path);
  FileMaker files;
  const auto makeFile = [&](swr::ChecksumLine line, const std::u16string& fullPath) {
    IntakeFile file = files.Make(fullPath);
    file.row.hasExpected = true;
    file.row.extras.Make() = {.expectedBytes = std::move(line.digest),
                              .expectedAlgos = std::move(line.candidates),
                              .checksumFile = checksumFile,
                              .checksumLine = line.lineNumber};
    return file;
  };
  const auto report = [&](IntakeFile file, const std::u16string& fullPath) {
    if (cancel) {
      CancelNewRow(file.row);
    } else {
      LookUp(fullPath, file.row);
    }
    return callbacks.found(std::move(file));
  };
  // Unless all paths are requested first, the first file is looked up, and hashed, before the lines
  // after it are read.
  swr::ChecksumTextReader reader(*text, request.path);
  std::deque<IntakeFile> announced;
  bool goesOn = true;
  while (goesOn) {
    std::optional<swr::ChecksumLine> line = reader.Next();
    if (!line) break;
    std::u16string fullPath = FullPath(swr::ResolveListedPath(request.path, line->name));
    IntakeFile file = makeFile(*std::move(line), fullPath);
    if (request.announcePaths) {
      announced.push_back(std::move(file));
      goesOn = callbacks.announced(std::move(fullPath));
    } else {
      goesOn = report(std::move(file), fullPath);
    }
  }
  for (; goesOn && !announced.empty(); announced.pop_front()) {
    const std::u16string fullPath = announced.front().row.Path();
    goesOn = report(std::move(announced.front()), fullPath);
  }
  return {.cancelled = cancel, .skippedLines = reader.SkippedLines()};
}

}  // namespace

IntakeFile LookUpFile(const std::u16string& path) { return FileMaker().LookedUp(path); }

void CancelNewRow(Row& row) {
  if (row.status == RowStatus::Failed) return;
  row.status = RowStatus::Cancelled;
  row.cancelledByUser = true;
}

IntakeEnd RunIntake(const IntakeRequest& request, const std::atomic<bool>& cancel,
                    const IntakeCallbacks& callbacks) {
  return std::visit([&](const auto& kind) { return Run(kind, cancel, callbacks); }, request);
}

}  // namespace app
