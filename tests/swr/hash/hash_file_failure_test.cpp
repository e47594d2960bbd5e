// The outcome of hashing a file when something fails, when it is cancelled, and when the file
// changes meanwhile.
#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "swr/hash/hash_file.h"
#include "swr/system/error_codes.h"
#include "tests/support/fault_plan.h"
#include "tests/support/temp_tree.h"
#include "tests/swr/hash/hash_outcome_checks.h"

namespace swr::testing {
namespace {

constexpr uint32_t ChunkSize = 64;
constexpr uint64_t FileSize = 10 * ChunkSize;

void ExpectFailure(const HashOutcome& outcome, uint32_t error, uint64_t bytesRead) {
  EXPECT_EQ(outcome.error, error);
  EXPECT_EQ(outcome.bytesRead, bytesRead);
  EXPECT_FALSE(outcome.cancelled);
  EXPECT_FALSE(outcome.changed);
  ExpectNoDigests(outcome);
}

// --- The file can't be opened -------------------------------------------------------------------

TEST(HashFileFailureTest, ReportsWhyTheFileCannotBeOpened) {
  TempTree tree;
  const std::u16string path = tree.AddFile(u"file", "content");
  for (const uint32_t code : {2u, 3u, 5u, 32u, 53u, 123u, 206u, 1117u, 0xC0000001u}) {
    SCOPED_TRACE(code);
    const InstalledFaults faults({{.call = SystemCall::OpenFile, .code = code}});
    ExpectFailure(HashFile(path, DefaultAlgoMask, {}), code, 0);
    EXPECT_EQ(faults.Count(SystemCall::ReadFile), 0u);
  }
}

TEST(HashFileFailureTest, ReportsAMissingFile) {
  TempTree tree;
  ExpectFailure(HashFile(tree.Path(u"absent"), DefaultAlgoMask, {}), ErrorFileNotFound, 0);
  const HashOutcome outcome = HashFile(tree.Path(u"absent/file"), DefaultAlgoMask, {});
  EXPECT_TRUE(IsMissingError(outcome.error)) << outcome.error;
  ExpectFailure(outcome, outcome.error, 0);
}

TEST(HashFileFailureTest, ReportsAFileThatIsDeletedBeforeItIsHashed) {
  TempTree tree;
  const std::u16string path = tree.AddFile(u"file", "content");
  const InstalledFaults faults(
      {{.call = SystemCall::OpenFile, .before = [&] { RemoveFile(path); }}});
  ExpectFailure(HashFile(path, DefaultAlgoMask, {}), ErrorFileNotFound, 0);
}

// --- The path names a folder --------------------------------------------------------------------

struct DeniedCase {
  std::string_view description;
  std::u16string_view path;
  std::vector<PlannedFault> faults;
  uint32_t error;
};

const DeniedCase deniedCases[] = {
    {"a folder", u"folder", {}, ErrorIsDirectory},
    {"a folder that can't be opened",
     u"folder",
     {{.call = SystemCall::OpenFile, .code = 5}},
     ErrorIsDirectory},
    {"a file to which access is denied", u"file", {{.call = SystemCall::OpenFile, .code = 5}}, 5},
    {"a denied path that does not exist",
     u"absent",
     {{.call = SystemCall::OpenFile, .code = 5}},
     5},
    {"a folder without file info",
     u"folder",
     {{.call = SystemCall::OpenFile, .code = 5}, {.call = SystemCall::PathInfo, .code = 5}},
     5},
    {"a folder with another error",
     u"folder",
     {{.call = SystemCall::OpenFile, .code = 32}},
     ErrorSharingViolation},
};

TEST(HashFileFailureTest, DistinguishesAFolderFromDeniedAccess) {
  TempTree tree;
  tree.AddFolder(u"folder");
  tree.AddFile(u"file", "content");
  for (const DeniedCase& row : deniedCases) {
    SCOPED_TRACE(row.description);
    const InstalledFaults faults(row.faults);
    ExpectFailure(HashFile(tree.Path(row.path), DefaultAlgoMask, {}), row.error, 0);
    EXPECT_EQ(faults.Count(SystemCall::ReadFile), 0u);
  }
}

// --- A provider can't serve an algorithm --------------------------------------------------------

TEST(HashFileFailureTest, FailsCompletelyIfOneAlgorithmIsUnavailable) {
  TempTree tree;
  const std::u16string path = tree.AddFile(u"file", CountingBytes(FileSize));
  const AlgoMask mask = MaskOf(AlgoId::Crc32) | MaskOf(AlgoId::Sha256) | MaskOf(AlgoId::Sha512);
  for (const uint32_t failing : {1u, 2u}) {
    SCOPED_TRACE(failing);
    const InstalledFaults faults({{.call = SystemCall::CreateDigest, .nth = failing, .code = 8}});
    size_t progressCalls = 0;
    ExpectFailure(
        HashFile(path, mask,
                 {.progress = [&](uint64_t) { ++progressCalls; }, .chunkSize = ChunkSize}),
        ErrorNotSupported, 0);
    EXPECT_EQ(faults.Count(SystemCall::ReadFile), 0u);
    EXPECT_EQ(progressCalls, 0u);
  }
}

// --- Reading fails ------------------------------------------------------------------------------

struct ReadFailureCase {
  std::string_view description;
  uint64_t size;
  uint32_t failingRead;
  uint64_t bytesRead;
};

const ReadFailureCase readFailureCases[] = {
    {"the first read", FileSize, 1, 0},
    {"the first read of an empty file", 0, 1, 0},
    {"the first chunk, after a part of it", 32, 2, 32},
    {"the second chunk", FileSize, 2, 64},
    {"the fourth chunk", FileSize, 4, 192},
    {"a chunk on the ring's second round", FileSize, 7, 384},
    {"a later chunk, after a part of it", 96, 3, 64},
    {"the read after the last chunk, which finds the end", FileSize, 11, FileSize},
};

TEST(HashFileFailureTest, ReportsAReadThatFails) {
  TempTree tree;
  for (const ReadFailureCase& row : readFailureCases) {
    const std::u16string path = tree.AddFile(u"file", CountingBytes(static_cast<size_t>(row.size)));
    for (const uint32_t code : {5u, 23u, 33u, 1117u}) {
      SCOPED_TRACE(std::string(row.description) + " with " + std::to_string(code));
      const InstalledFaults faults(
          {{.call = SystemCall::ReadFile, .nth = row.failingRead, .code = code}});
      ExpectFailure(HashFile(path, AllAlgosMask, {.chunkSize = ChunkSize}), code, row.bytesRead);
      EXPECT_EQ(faults.Count(SystemCall::ReadFile), row.failingRead);
    }
  }
}

TEST(HashFileFailureTest, ReportsNoProgressForAFailedRead) {
  TempTree tree;
  const std::u16string path = tree.AddFile(u"file", CountingBytes(FileSize));
  const InstalledFaults faults({{.call = SystemCall::ReadFile, .nth = 3, .code = 23}});
  std::vector<uint64_t> progress;
  HashFile(
      path, DefaultAlgoMask,
      {.progress = [&](uint64_t bytes) { progress.push_back(bytes); }, .chunkSize = ChunkSize});
  EXPECT_EQ(progress, (std::vector<uint64_t>{64, 128}));
}

TEST(HashFileFailureTest, TreatsTwoFailuresAsTheEndOfTheFile) {
  TempTree tree;
  const std::string content = CountingBytes(FileSize);
  const std::u16string path = tree.AddFile(u"file", content);
  for (const uint32_t code : {ErrorHandleEof, ErrorBrokenPipe}) {
    for (const uint32_t failingRead : {1u, 2u, 6u, 11u}) {
      SCOPED_TRACE(std::to_string(code) + " from read " + std::to_string(failingRead));
      const InstalledFaults faults(
          {{.call = SystemCall::ReadFile, .nth = failingRead, .code = code}});
      const HashOutcome outcome = HashFile(path, AllAlgosMask, {.chunkSize = ChunkSize});
      const size_t bytesRead = size_t{failingRead - 1} * ChunkSize;
      ExpectDigestsOf(outcome, AllAlgosMask, std::string_view(content).substr(0, bytesRead));
      EXPECT_EQ(outcome.bytesRead, bytesRead);
      EXPECT_EQ(outcome.changed, bytesRead != FileSize);
    }
  }
}

// --- Cancelled ----------------------------------------------------------------------------------

struct CancelCase {
  std::string_view description;
  uint64_t size;
  uint32_t progressCall;  // the one in which the flag is set; 0 if it is set before the call
  uint64_t bytesRead;
};

const CancelCase cancelCases[] = {
    {"before an empty file", 0, 0, 0},
    {"before a file of one chunk", 40, 0, 40},
    {"before a longer file", FileSize, 0, 64},
    {"at the only chunk", 40, 1, 40},
    {"at the first chunk", FileSize, 1, 64},
    {"at the second chunk", FileSize, 2, 128},
    {"on the ring's second round", FileSize, 6, 384},
    {"at the last chunk that has bytes", FileSize, 10, FileSize},
};

TEST(HashFileFailureTest, StopsWhenItIsCancelled) {
  TempTree tree;
  for (const CancelCase& row : cancelCases) {
    SCOPED_TRACE(row.description);
    const std::u16string path = tree.AddFile(u"file", CountingBytes(static_cast<size_t>(row.size)));
    std::atomic<bool> cancel = row.progressCall == 0;
    uint32_t calls = 0;
    const HashOutcome outcome =
        HashFile(path, AllAlgosMask,
                 {.cancel = &cancel,
                  .progress = [&](uint64_t) { cancel = cancel || ++calls == row.progressCall; },
                  .chunkSize = ChunkSize});
    EXPECT_TRUE(outcome.cancelled);
    EXPECT_EQ(outcome.error, 0u);
    EXPECT_EQ(outcome.bytesRead, row.bytesRead);
    EXPECT_FALSE(outcome.changed);
    ExpectNoDigests(outcome);
  }
}

TEST(HashFileFailureTest, FinishesWhenItIsCancelledTooLate) {
  TempTree tree;
  const std::string content = CountingBytes(FileSize + 1);
  std::atomic<bool> cancel = false;
  const HashOutcome outcome =
      HashFile(tree.AddFile(u"file", content), AllAlgosMask,
               {.cancel = &cancel,
                .progress = [&](uint64_t bytes) { cancel = bytes == content.size(); },
                .chunkSize = ChunkSize});
  ExpectDigestsOf(outcome, AllAlgosMask, content);
}

TEST(HashFileFailureTest, IsNeverBothCancelledAndFailed) {
  TempTree tree;
  const std::u16string path = tree.AddFile(u"file", CountingBytes(FileSize));
  for (const uint32_t failingRead : {1u, 3u}) {
    SCOPED_TRACE(failingRead);
    std::atomic<bool> cancel = false;
    const InstalledFaults faults(
        {{.call = SystemCall::ReadFile, .nth = failingRead, .code = 23, .before = [&] {
            cancel = true;
          }}});
    const HashOutcome outcome =
        HashFile(path, DefaultAlgoMask, {.cancel = &cancel, .chunkSize = ChunkSize});
    ExpectFailure(outcome, 23, uint64_t{failingRead - 1} * ChunkSize);
  }
}

// --- Another program writes to the file ---------------------------------------------------------

using Change = std::function<void(const std::u16string& path)>;

struct ChangeCase {
  std::string_view description;
  Change change;
  bool changed;
  uint64_t bytesRead;
};

// Files are changed when the third chunk has just been read.
constexpr uint64_t ChangePosition = 3 * ChunkSize;

void KeepingTime(const std::u16string& path, const std::function<void()>& change) {
  const FileTime time = ModifiedTime(path);
  change();
  SetModifiedTime(path, time);
}

const ChangeCase changeCases[] = {
    {"not changed", [](const auto&) {}, false, FileSize},
    {"grows", [](const auto& path) { AppendBytes(path, std::string(100, 'x')); }, true,
     FileSize + 100},
    {"grows and keeps its time",
     [](const auto& path) { KeepingTime(path, [&] { AppendBytes(path, std::string(100, 'x')); }); },
     true, FileSize + 100},
    {"shrinks", [](const auto& path) { ResizeFile(path, 256); }, true, 256},
    {"shrinks and keeps its time",
     [](const auto& path) { KeepingTime(path, [&] { ResizeFile(path, 256); }); }, true, 256},
    {"shrinks below what was read",
     [](const auto& path) { KeepingTime(path, [&] { ResizeFile(path, 100); }); }, true,
     ChangePosition},
    {"gets a later time",
     [](const auto& path) { SetModifiedTime(path, ModifiedTime(path) + 10'000'000); }, true,
     FileSize},
    {"gets an earlier time",
     [](const auto& path) { SetModifiedTime(path, ModifiedTime(path) - 10'000'000); }, true,
     FileSize},
    {"is overwritten", [](const auto& path) { WriteBytes(path, std::string(FileSize, 'y')); }, true,
     FileSize},
    {"is removed", [](const auto& path) { RemoveFile(path); }, false, FileSize},
};

HashOutcome HashWhileChanging(const std::u16string& path, const Change& change) {
  // So old that a write changes the time, however coarse the file system's clock is.
  SetModifiedTime(path, ModifiedTime(path) - 36'000'000'000);
  return HashFile(path, DefaultAlgoMask,
                  {.progress =
                       [&](uint64_t bytes) {
                         if (bytes == ChangePosition) change(path);
                       },
                   .chunkSize = ChunkSize});
}

TEST(HashFileFailureTest, MarksAFileThatChanges) {
  for (const ChangeCase& row : changeCases) {
    SCOPED_TRACE(row.description);
    TempTree tree;
    const HashOutcome outcome =
        HashWhileChanging(tree.AddFile(u"file", CountingBytes(FileSize)), row.change);
    EXPECT_EQ(outcome.changed, row.changed);
    EXPECT_EQ(outcome.bytesRead, row.bytesRead);
    EXPECT_EQ(outcome.error, 0u);
    for (const AlgoId id : IdsFromMask(DefaultAlgoMask)) {
      EXPECT_TRUE(outcome.digests[IndexOf(id)].present) << GetAlgo(id).tag;
    }
  }
}

TEST(HashFileFailureTest, GivesTheDigestsOfWhatItRead) {
  TempTree tree;
  const std::string content = CountingBytes(FileSize);
  const HashOutcome outcome =
      HashWhileChanging(tree.AddFile(u"file", content),
                        [](const auto& path) { AppendBytes(path, std::string(100, 'x')); });
  ExpectDigestsOf(outcome, DefaultAlgoMask, content + std::string(100, 'x'));
}

TEST(HashFileFailureTest, MarksAShortFileThatChanges) {
  TempTree tree;
  const std::u16string path = tree.AddFile(u"file", "short");
  const HashOutcome outcome =
      HashFile(path, DefaultAlgoMask, {.progress = [&](uint64_t) { AppendBytes(path, "er"); }});
  ExpectDigestsOf(outcome, DefaultAlgoMask, "short");
  EXPECT_TRUE(outcome.changed);
}

TEST(HashFileFailureTest, DoesNotMarkAFileWithoutFileInfo) {
  for (const uint32_t failing : {1u, 2u}) {
    SCOPED_TRACE(failing);
    TempTree tree;
    const std::u16string path = tree.AddFile(u"file", CountingBytes(FileSize));
    const InstalledFaults faults({{.call = SystemCall::FileInfo, .nth = failing, .code = 5}});
    const HashOutcome outcome =
        HashWhileChanging(path, [](const auto& file) { AppendBytes(file, "more"); });
    ExpectDigestsOf(outcome, DefaultAlgoMask, CountingBytes(FileSize) + "more");
    EXPECT_FALSE(outcome.changed);
  }
}

TEST(HashFileFailureTest, DoesNotMarkAFailedOrCancelledOutcome) {
  TempTree tree;
  const std::u16string path = tree.AddFile(u"file", CountingBytes(FileSize));
  {
    const InstalledFaults faults({{.call = SystemCall::ReadFile, .nth = 6, .code = 23}});
    const HashOutcome outcome =
        HashWhileChanging(path, [](const auto& file) { AppendBytes(file, "more"); });
    ExpectFailure(outcome, 23, 5 * ChunkSize);
  }
  std::atomic<bool> cancel = false;
  const HashOutcome outcome = HashFile(path, DefaultAlgoMask,
                                       {.cancel = &cancel,
                                        .progress =
                                            [&](uint64_t) {
                                              AppendBytes(path, "more");
                                              cancel = true;
                                            },
                                        .chunkSize = ChunkSize});
  EXPECT_TRUE(outcome.cancelled);
  EXPECT_FALSE(outcome.changed);
}

}  // namespace
}  // namespace swr::testing
