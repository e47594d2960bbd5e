#include "swr/hash/hash_file.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "swr/text/encoding.h"
#include "tests/support/fault_plan.h"
#include "tests/support/temp_tree.h"
#include "tests/swr/hash/hash_outcome_checks.h"

namespace swr::testing {
namespace {

constexpr uint32_t SmallChunk = 64;
constexpr uint32_t DefaultChunk = 1048576;

// --- One pass over a file of any length ---------------------------------------------------------

struct LengthCase {
  size_t size;
  uint32_t chunkSize;
  uint32_t reads;  // system calls
  std::vector<uint64_t> progress;
};

// A full chunk does not show that the file ends after it, so an exact multiple is followed by an
// empty chunk.
const LengthCase lengthCases[] = {
    // Inside one chunk: hashed on the calling thread.
    {.size = 0, .chunkSize = SmallChunk, .reads = 1, .progress = {0}},
    {.size = 1, .chunkSize = SmallChunk, .reads = 2, .progress = {1}},
    {.size = 63, .chunkSize = SmallChunk, .reads = 2, .progress = {63}},
    {.size = 1048575, .chunkSize = DefaultChunk, .reads = 2, .progress = {1048575}},
    // One full chunk and more: the ring.
    {.size = 64, .chunkSize = SmallChunk, .reads = 2, .progress = {64, 64}},
    {.size = 65, .chunkSize = SmallChunk, .reads = 3, .progress = {64, 65}},
    {.size = 1048576, .chunkSize = DefaultChunk, .reads = 2, .progress = {1048576, 1048576}},
    {.size = 1048577, .chunkSize = DefaultChunk, .reads = 3, .progress = {1048576, 1048577}},
    // As many chunks as the ring has, one fewer and one more.
    {.size = 192, .chunkSize = SmallChunk, .reads = 4, .progress = {64, 128, 192, 192}},
    {.size = 255, .chunkSize = SmallChunk, .reads = 5, .progress = {64, 128, 192, 255}},
    {.size = 256, .chunkSize = SmallChunk, .reads = 5, .progress = {64, 128, 192, 256, 256}},
    {.size = 257, .chunkSize = SmallChunk, .reads = 6, .progress = {64, 128, 192, 256, 257}},
    {.size = 321, .chunkSize = SmallChunk, .reads = 7, .progress = {64, 128, 192, 256, 320, 321}},
    {.size = 4194305,
     .chunkSize = DefaultChunk,
     .reads = 6,
     .progress = {1048576, 2097152, 3145728, 4194304, 4194305}},
    // The smallest chunk.
    {.size = 5, .chunkSize = 1, .reads = 6, .progress = {1, 2, 3, 4, 5, 5}},
};

TEST(HashFileTest, GivesAllDigestsInOnePass) {
  TempTree tree;
  for (const LengthCase& row : lengthCases) {
    SCOPED_TRACE(std::to_string(row.size) + " bytes in chunks of " + std::to_string(row.chunkSize));
    const std::string content = CountingBytes(row.size);
    const std::u16string path = tree.AddFile(u"file", content);
    const InstalledFaults calls;
    std::vector<uint64_t> progress;
    const HashOutcome outcome =
        HashFile(path, AllAlgosMask,
                 {.progress = [&](uint64_t bytes) { progress.push_back(bytes); },
                  .chunkSize = row.chunkSize});
    ExpectDigestsOf(outcome, AllAlgosMask, content);
    EXPECT_EQ(outcome.bytesRead, row.size);
    EXPECT_FALSE(outcome.changed);
    EXPECT_EQ(progress, row.progress);
    EXPECT_EQ(calls.Count(SystemCall::OpenFile), 1u);
    EXPECT_EQ(calls.Count(SystemCall::ReadFile), row.reads);
  }
}

TEST(HashFileTest, FillsTheRingManyTimes) {
  TempTree tree;
  const std::string content = CountingBytes(300 * SmallChunk + 7);
  const HashOutcome outcome =
      HashFile(tree.AddFile(u"file", content), AllAlgosMask, {.chunkSize = SmallChunk});
  ExpectDigestsOf(outcome, AllAlgosMask, content);
}

TEST(HashFileTest, GivesEachAlgorithmAloneWithAndWithoutTheRing) {
  TempTree tree;
  const std::string content = CountingBytes(500);
  const std::u16string path = tree.AddFile(u"file", content);
  for (const AlgoInfo& info : AllAlgos()) {
    SCOPED_TRACE(info.tag);
    ExpectDigestsOf(HashFile(path, MaskOf(info.id), {}), MaskOf(info.id), content);
    ExpectDigestsOf(HashFile(path, MaskOf(info.id), {.chunkSize = SmallChunk}), MaskOf(info.id),
                    content);
  }
}

TEST(HashFileTest, GivesOnlyTheDigestsOfTheMask) {
  TempTree tree;
  const std::string content = CountingBytes(500);
  const std::u16string path = tree.AddFile(u"file", content);
  for (const AlgoMask mask : {DefaultAlgoMask, FallbackAlgoMask, LegacyAlgoMask, 0x5555u, 0x2AAAu,
                              MaskOf(AlgoId::Crc32) | MaskOf(AlgoId::Md4)}) {
    SCOPED_TRACE(mask);
    ExpectDigestsOf(HashFile(path, mask, {.chunkSize = SmallChunk}), mask, content);
  }
}

TEST(HashFileTest, ReadsTheFirstChunkForAnEmptyMask) {
  TempTree tree;
  for (const size_t size : {size_t{0}, size_t{10}, size_t{64}, size_t{500}}) {
    SCOPED_TRACE(size);
    std::vector<uint64_t> progress;
    const HashOutcome outcome = HashFile(
        tree.AddFile(u"file", CountingBytes(size)), 0,
        {.progress = [&](uint64_t bytes) { progress.push_back(bytes); }, .chunkSize = SmallChunk});
    const uint64_t firstChunk = std::min<uint64_t>(size, SmallChunk);
    ExpectNoDigests(outcome);
    EXPECT_EQ(outcome.error, 0u);
    EXPECT_FALSE(outcome.cancelled);
    EXPECT_EQ(outcome.bytesRead, firstChunk);
    EXPECT_EQ(progress, std::vector{firstChunk});
  }
}

TEST(HashFileTest, ReportsProgressOnTheCallingThread) {
  TempTree tree;
  size_t calls = 0;
  HashFile(tree.AddFile(u"file", CountingBytes(500)), AllAlgosMask,
           {.progress =
                [&, caller = std::this_thread::get_id()](uint64_t) {
                  ++calls;
                  EXPECT_EQ(std::this_thread::get_id(), caller);
                },
            .chunkSize = SmallChunk});
  EXPECT_EQ(calls, 8u);
}

TEST(HashFileTest, RunsSeveralTimesAtOnce) {
  TempTree tree;
  const std::string content = CountingBytes(3000);
  const std::u16string path = tree.AddFile(u"file", content);
  std::vector<HashOutcome> outcomes(4);
  std::vector<std::thread> threads;
  for (HashOutcome& outcome : outcomes) {
    threads.emplace_back(
        [&] { outcome = HashFile(path, AllAlgosMask, {.chunkSize = SmallChunk}); });
  }
  for (std::thread& thread : threads) thread.join();
  for (const HashOutcome& outcome : outcomes) ExpectDigestsOf(outcome, AllAlgosMask, content);
}

// A failed read without a code ends its chunk as if it were full, so the chunk is shorter than the
// others. The next one continues where it ended.
TEST(HashFileTest, ContinuesAfterAFailureWithoutACode) {
  TempTree tree;
  const std::string content = CountingBytes(500);
  const std::u16string path = tree.AddFile(u"file", content);
  for (const uint32_t failing : {1u, 2u, 3u, 8u}) {
    SCOPED_TRACE(failing);
    const InstalledFaults faults({{.call = SystemCall::ReadFile, .nth = failing, .code = 0}});
    std::vector<uint64_t> progress;
    const HashOutcome outcome = HashFile(
        path, AllAlgosMask,
        {.progress = [&](uint64_t bytes) { progress.push_back(bytes); }, .chunkSize = SmallChunk});
    ExpectDigestsOf(outcome, AllAlgosMask, content);
    EXPECT_EQ(outcome.bytesRead, 500u);
    EXPECT_FALSE(outcome.changed);
    // The failed read adds an empty chunk.
    std::vector<uint64_t> expected = {64, 128, 192, 256, 320, 384, 448, 500};
    expected.insert(expected.begin() + (failing - 1), (failing - 1) * 64);
    EXPECT_EQ(progress, expected);
  }
}

// --- Names and places ---------------------------------------------------------------------------

struct NameCase {
  std::string_view description;
  std::u16string_view name;
};

const NameCase nameCases[] = {
    {"blanks inside and in front", u" two words"},
    {"percent, ampersand, quote, hash", u"%&'#"},
    {"accent as one character", u"\u00E9t\u00E9"},
    {"accent as a combining mark", u"e\u0301te\u0301"},
    {"Cyrillic", u"\u0444\u0430\u0439\u043B"},
    {"Chinese", u"\u6587\u4EF6"},
    {"emoji", u"\U0001F600\U0001F469\u200D\U0001F52C"},
    {"zero-width space", u"a\u200Bb"},
    {"right-to-left override", u"\u202Etxt.exe"},
};

TEST(HashFileTest, UsesNamesUnchanged) {
  TempTree tree;
  for (const NameCase& row : nameCases) {
    SCOPED_TRACE(row.description);
    const std::string content = WideToUtf8(row.name);
    const std::u16string path = tree.AddFile(row.name, content);
    ExpectDigestsOf(HashFile(path, DefaultAlgoMask, {}), DefaultAlgoMask, content);
  }
}

TEST(HashFileTest, AcceptsLongPaths) {
  for (const size_t units : {100u, 259u, 260u, 261u, 1001u, 2000u}) {
    SCOPED_TRACE(units);
    TempTree tree;
    const std::u16string path = AddFileWithLongPath(tree, units, "far below");
    ASSERT_GE(path.size(), units);
    ExpectDigestsOf(HashFile(path, DefaultAlgoMask, {}), DefaultAlgoMask, "far below");
  }
}

TEST(HashFileTest, ReadsAFileThatIsHeldOpenForWriting) {
  TempTree tree;
  const std::u16string path = tree.AddFile(u"download", "so far");
  const WritingHandle writer(path);
  ExpectDigestsOf(HashFile(path, DefaultAlgoMask, {}), DefaultAlgoMask, "so far");
}

}  // namespace
}  // namespace swr::testing
