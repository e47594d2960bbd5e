// A FileHasher that is kept for many files: no file affects another.
#include "swr/hash/file_hasher.h"

#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "swr/system/error_codes.h"
#include "tests/support/fault_plan.h"
#include "tests/support/own_resources.h"
#include "tests/support/temp_tree.h"
#include "tests/swr/hash/hash_outcome_checks.h"

namespace swr::testing {
namespace {

constexpr uint32_t SmallChunk = 64;
constexpr AlgoMask Sha256 = MaskOf(AlgoId::Sha256);

class FileHasherTest : public ::testing::Test {
 protected:
  // With this chunk size and mask, the usual file is hashed through the ring.
  HashOutcome Hash(AlgoMask mask = AllAlgosMask) {
    return hasher.HashFile(path, mask, {.chunkSize = SmallChunk});
  }

  TempTree tree;
  const std::string content = CountingBytes(20 * SmallChunk + 7);
  const std::u16string path = tree.AddFile(u"usual", content);
  DigestThreads threads{4};
  FileHasher hasher{threads};
};

TEST_F(FileHasherTest, GivesTheDigestsOfEachOfManyFiles) {
  constexpr size_t sizes[] = {0, 1, 63, 64, 65, 255, 256, 257, 1000, 5000};
  constexpr AlgoMask masks[] = {AllAlgosMask, DefaultAlgoMask, MaskOf(AlgoId::Xxh128), Sha256,
                                MaskOf(AlgoId::Blake3) | MaskOf(AlgoId::Crc32)};
  for (int round = 0; round < 3; ++round) {
    for (const size_t size : sizes) {
      const std::string bytes = CountingBytes(size);
      const std::u16string file = tree.AddFile(u"file", bytes);
      for (const AlgoMask mask : masks) {
        for (const uint32_t chunkSize : {SmallChunk, 1000u, DefaultChunkSize}) {
          SCOPED_TRACE(std::to_string(size) + " bytes, mask " + std::to_string(mask) +
                       ", chunks of " + std::to_string(chunkSize));
          const HashOutcome outcome = hasher.HashFile(file, mask, {.chunkSize = chunkSize});
          ExpectDigestsOf(outcome, mask, bytes);
          EXPECT_EQ(outcome.bytesRead, size);
          EXPECT_FALSE(outcome.changed);
        }
      }
    }
  }
}

// A file of a single chunk that takes long enough to be shared with another thread.
TEST_F(FileHasherTest, SharesAFileOfOneChunk) {
  const std::string bytes = CountingBytes(300'000);
  const std::u16string file = tree.AddFile(u"file", bytes);
  for (const AlgoMask mask : {AllAlgosMask, DefaultAlgoMask, Sha256}) {
    std::vector<uint64_t> progress;
    const HashOutcome outcome = hasher.HashFile(
        file, mask, {.progress = [&](uint64_t count) { progress.push_back(count); }});
    ExpectDigestsOf(outcome, mask, bytes);
    EXPECT_EQ(progress, std::vector<uint64_t>{bytes.size()});
  }
}

TEST_F(FileHasherTest, UsesTheDefaultChunkSizeInsteadOfZero) {
  std::vector<uint64_t> progress;
  const HashOutcome outcome = hasher.HashFile(
      path, AllAlgosMask,
      {.progress = [&](uint64_t bytes) { progress.push_back(bytes); }, .chunkSize = 0});
  ExpectDigestsOf(outcome, AllAlgosMask, content);
  EXPECT_EQ(progress, std::vector<uint64_t>{content.size()});
}

TEST_F(FileHasherTest, WithALimitOfOneItHashesOnTheCallingThread) {
  DigestThreads none(1);
  FileHasher alone(none);
  const OwnResources before = CountOwnResources();
  const HashOutcome outcome = alone.HashFile(
      path, AllAlgosMask,
      {.progress = [&](uint64_t) { EXPECT_EQ(CountOwnResources().threads, before.threads); },
       .chunkSize = SmallChunk});
  ExpectDigestsOf(outcome, AllAlgosMask, content);
}

TEST_F(FileHasherTest, GetsNoHelpWhileAllCoresAreBusy) {
  const OwnResources before = CountOwnResources();
  DigestThreads two(2);
  const DigestThreads::CallerAtWork other(two);
  FileHasher alone(two);
  ExpectDigestsOf(alone.HashFile(path, AllAlgosMask, {.chunkSize = SmallChunk}), AllAlgosMask,
                  content);
  EXPECT_EQ(CountOwnResources().threads, before.threads);
}

// Another caller finishes in the middle of the file.
TEST_F(FileHasherTest, GetsHelpAsSoonAsACoreIsFree) {
  const OwnResources before = CountOwnResources();
  DigestThreads two(2);
  FileHasher helped(two);
  auto other = std::make_unique<DigestThreads::CallerAtWork>(two);
  const HashOutcome outcome = helped.HashFile(path, AllAlgosMask,
                                              {.progress =
                                                   [&](uint64_t bytes) {
                                                     if (bytes == 5 * SmallChunk) other.reset();
                                                   },
                                               .chunkSize = SmallChunk});
  ExpectDigestsOf(outcome, AllAlgosMask, content);
  EXPECT_EQ(CountOwnResources().threads, before.threads + 1);
}

// More callers start in the middle of the file.
TEST_F(FileHasherTest, ReturnsLentThreadsWhenOthersNeedThem) {
  std::unique_ptr<DigestThreads::CallerAtWork> others[4];
  const HashOutcome outcome =
      hasher.HashFile(path, AllAlgosMask,
                      {.progress =
                           [&](uint64_t bytes) {
                             if (bytes != 5 * SmallChunk) return;
                             for (auto& other : others) {
                               other = std::make_unique<DigestThreads::CallerAtWork>(threads);
                             }
                           },
                       .chunkSize = SmallChunk});
  ExpectDigestsOf(outcome, AllAlgosMask, content);
}

TEST_F(FileHasherTest, KeepsItsThreadsUntilTheyAreEnded) {
  const size_t before = CountOwnResources().threads;
  for (int i = 0; i < 20; ++i) {
    Hash();
    EXPECT_LE(CountOwnResources().threads, before + threads.Limit() - 1);
  }
  EXPECT_GT(CountOwnResources().threads, before);
  threads.EndIdleThreads();
  EXPECT_EQ(WaitForThreads(before), before);
  ExpectDigestsOf(Hash(), AllAlgosMask, content);
}

// --- A failure in one file does not affect the next ---------------------------------------------

TEST_F(FileHasherTest, ContinuesAfterACancel) {
  for (const uint32_t chunk : {1u, 2u, 7u, 20u}) {
    SCOPED_TRACE(chunk);
    std::atomic<bool> cancel = false;
    const HashOutcome outcome =
        hasher.HashFile(path, AllAlgosMask,
                        {.cancel = &cancel,
                         .progress = [&](uint64_t bytes) { cancel = bytes == chunk * SmallChunk; },
                         .chunkSize = SmallChunk});
    EXPECT_TRUE(outcome.cancelled);
    EXPECT_EQ(outcome.bytesRead, chunk * SmallChunk);
    ExpectNoDigests(outcome);
    ExpectDigestsOf(Hash(), AllAlgosMask, content);
  }
}

TEST_F(FileHasherTest, ContinuesAfterAFailedRead) {
  for (const uint32_t failing : {1u, 2u, 3u, 9u, 21u}) {
    SCOPED_TRACE(failing);
    {
      const InstalledFaults faults({{.call = SystemCall::ReadFile, .nth = failing, .code = 23}});
      const HashOutcome outcome = Hash();
      EXPECT_EQ(outcome.error, 23u);
      ExpectNoDigests(outcome);
    }
    ExpectDigestsOf(Hash(), AllAlgosMask, content);
  }
}

TEST_F(FileHasherTest, ContinuesAfterAFileThatDoesNotOpen) {
  ExpectDigestsOf(Hash(), AllAlgosMask, content);
  EXPECT_EQ(hasher.HashFile(tree.Path(u"absent"), AllAlgosMask, {}).error, ErrorFileNotFound);
  EXPECT_EQ(hasher.HashFile(tree.Root(), AllAlgosMask, {}).error, ErrorIsDirectory);
  ExpectDigestsOf(Hash(), AllAlgosMask, content);
}

// With hashes that can't be reused, so that the provider creates one for each file.
TEST_F(FileHasherTest, ContinuesAfterAProviderFailure) {
  const PlannedFault notReusable{.call = SystemCall::CreateReusableDigest, .nth = 0, .code = 87};
  for (const bool areHashersKept : {false, true}) {
    for (const uint32_t failing : {1u, 2u, 5u, 7u}) {
      SCOPED_TRACE(std::to_string(failing) + (areHashersKept ? ", kept" : ", new"));
      hasher.ReleaseMemory();
      if (areHashersKept) {
        const InstalledFaults faults({notReusable});
        EXPECT_EQ(Hash().error, 0u);
      }
      {
        const InstalledFaults faults(
            {notReusable, {.call = SystemCall::CreateDigest, .nth = failing, .code = 8}});
        const HashOutcome outcome = Hash();
        EXPECT_EQ(outcome.error, ErrorNotSupported);
        EXPECT_EQ(outcome.bytesRead, 0u);
        EXPECT_EQ(faults.Count(SystemCall::ReadFile), 0u);
        ExpectNoDigests(outcome);
      }
      for (int i = 0; i < 2; ++i) ExpectDigestsOf(Hash(), AllAlgosMask, content);
    }
  }
}

// With reusable hashes where the provider has them.
TEST_F(FileHasherTest, KeepsItsOtherHashersAfterAProviderFailure) {
  for (const uint32_t failing : {1u, 2u, 5u, 7u}) {
    SCOPED_TRACE(failing);
    hasher.ReleaseMemory();
    {
      const InstalledFaults faults({{.call = SystemCall::CreateDigest, .nth = failing, .code = 8}});
      EXPECT_EQ(Hash().error, ErrorNotSupported);
    }
    for (int i = 0; i < 2; ++i) ExpectDigestsOf(Hash(), AllAlgosMask, content);
  }
}

TEST_F(FileHasherTest, ContinuesAfterAnExceptionFromTheProgressCallback) {
  for (const uint64_t chunk : {1u, 2u, 6u, 20u}) {
    SCOPED_TRACE(chunk);
    EXPECT_THROW(hasher.HashFile(path, AllAlgosMask,
                                 {.progress =
                                      [&](uint64_t bytes) {
                                        if (bytes == chunk * SmallChunk) throw std::logic_error("");
                                      },
                                  .chunkSize = SmallChunk}),
                 std::logic_error);
    ExpectDigestsOf(Hash(), AllAlgosMask, content);
  }
}

TEST_F(FileHasherTest, ContinuesAfterItsMemoryIsReleased) {
  for (int i = 0; i < 3; ++i) {
    ExpectDigestsOf(Hash(), AllAlgosMask, content);
    hasher.ReleaseMemory();
    hasher.ReleaseMemory();
  }
}

// --- Several FileHashers ------------------------------------------------------------------------

TEST_F(FileHasherTest, SharesItsThreadsWithOthers) {
  std::vector<std::thread> callers;
  for (int i = 0; i < 4; ++i) {
    callers.emplace_back([&] {
      FileHasher own(threads);
      for (int round = 0; round < 10; ++round) {
        ExpectDigestsOf(own.HashFile(path, AllAlgosMask, {.chunkSize = SmallChunk}), AllAlgosMask,
                        content);
      }
    });
  }
  for (std::thread& caller : callers) caller.join();
}

// --- Streams ------------------------------------------------------------------------------------

TEST_F(FileHasherTest, HashesAStreamFromItsCurrentPosition) {
  for (const uint32_t chunkSize : {SmallChunk, DefaultChunkSize, 0u}) {
    File file;
    ASSERT_EQ(File::Open(path, FileSharing::Everything, file), 0u);
    char skipped[10];
    ASSERT_EQ(file.Read(skipped, sizeof skipped).bytes, sizeof skipped);
    const HashOutcome outcome = hasher.HashStream(file, AllAlgosMask, {.chunkSize = chunkSize});
    ExpectDigestsOf(outcome, AllAlgosMask, std::string_view(content).substr(sizeof skipped));
    EXPECT_EQ(outcome.bytesRead, content.size() - sizeof skipped);
    EXPECT_FALSE(outcome.changed);
  }
}

}  // namespace
}  // namespace swr::testing
