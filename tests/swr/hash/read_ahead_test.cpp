// How far HashFile reads ahead of the slowest algorithm: the ring has four chunks.
#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

#include "swr/hash/hash_file.h"
#include "tests/support/fault_plan.h"
#include "tests/support/temp_tree.h"

namespace swr::testing {
namespace {

using Clock = std::chrono::steady_clock;

constexpr uint32_t chunkSize = 1048576;
constexpr size_t chunkCount = 10;

// The time just before each read. MD2 is by far the slowest algorithm: digesting a chunk takes many
// times as long as reading it.
std::vector<Clock::time_point> ReadTimes(const std::u16string& path) {
  std::vector<Clock::time_point> times;
  const InstalledFaults calls(
      {{.call = SystemCall::ReadFile, .nth = 0, .before = [&] { times.push_back(Clock::now()); }}});
  const HashOutcome outcome =
      HashFile(path, MaskOf(AlgoId::Md2) | MaskOf(AlgoId::Crc32), {.chunkSize = chunkSize});
  EXPECT_EQ(outcome.error, 0u);
  return times;
}

// Whether the first four chunks were read without waiting, and the fifth after the slowest
// algorithm had finished the first.
bool ReadsFourChunksAhead(const std::vector<Clock::time_point>& times) {
  const auto chunkTime = (times[chunkCount - 1] - times[4]) / (chunkCount - 5);
  return times[3] - times[0] < chunkTime / 2 && times[4] - times[3] > chunkTime / 2;
}

TEST(ReadAheadTest, IsFourChunksDeep) {
  TempTree tree;
  const std::u16string path = tree.AddFile(u"file", CountingBytes(size_t{chunkSize} * chunkCount));
  // A busy machine can delay a read, but a ring of another depth fails every time.
  constexpr int tries = 5;
  for (int i = 0; i < tries; ++i) {
    const std::vector<Clock::time_point> times = ReadTimes(path);
    ASSERT_EQ(times.size(), chunkCount + 1);  // the last one finds the end
    if (ReadsFourChunksAhead(times)) return;
  }
  ADD_FAILURE() << "the reader does not wait after four chunks";
}

}  // namespace
}  // namespace swr::testing
