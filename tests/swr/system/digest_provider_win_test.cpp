// Reusing the provider's hashes. Wine supports it, Windows 7 does not.
#include <gtest/gtest.h>

#include <array>
#include <cstdint>

#include "swr/system/digest_provider.h"
#include "tests/support/fault_plan.h"

namespace swr::testing {
namespace {

constexpr uint32_t files = 5;

void HashSomeFiles() {
  ProviderHash hash(ProviderAlgorithm::Sha256);
  for (uint32_t i = 0; i < files; ++i) {
    if (i > 0) hash.Restart();
    hash.Update("abc", 3);
    std::array<uint8_t, 64> bytes;
    EXPECT_EQ(hash.Finish(bytes), 32);
  }
}

TEST(DigestProviderWinTest, CreatesOneHashForManyFiles) {
  const InstalledFaults calls;
  HashSomeFiles();
  EXPECT_EQ(calls.Count(SystemCall::CreateDigest), 1u);
}

TEST(DigestProviderWinTest, CreatesAHashForEachFileIfNoneCanBeReused) {
  const InstalledFaults calls({{.call = SystemCall::CreateReusableDigest, .nth = 0, .code = 87}});
  HashSomeFiles();
  EXPECT_EQ(calls.Count(SystemCall::CreateDigest), files);
  EXPECT_EQ(calls.Count(SystemCall::CreateReusableDigest), 1u) << "tried again after a refusal";
}

}  // namespace
}  // namespace swr::testing
