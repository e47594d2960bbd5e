#include "swr/system/digest_provider.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "swr/hash/digest_text.h"
#include "swr/hash/hash_file.h"
#include "swr/hash/hasher.h"
#include "swr/system/error_codes.h"
#include "tests/support/fault_plan.h"
#include "tests/support/temp_tree.h"

namespace swr::testing {
namespace {

struct ProviderCase {
  ProviderAlgorithm algorithm;
  std::string_view name;
  std::string_view ofAbc;
};

// RFC 1319, 1320 and 1321, FIPS 180.
const ProviderCase providerCases[] = {
    {ProviderAlgorithm::Md2, "MD2", "da853b0d3f88d99b30283a69e6ded6bb"},
    {ProviderAlgorithm::Md4, "MD4", "a448017aaf21d8525fc10ae87aa6729d"},
    {ProviderAlgorithm::Md5, "MD5", "900150983cd24fb0d6963f7d28e17f72"},
    {ProviderAlgorithm::Sha1, "SHA-1", "a9993e364706816aba3e25717850c26c9cd0d89d"},
    {ProviderAlgorithm::Sha256, "SHA-256",
     "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad"},
    {ProviderAlgorithm::Sha384, "SHA-384",
     "cb00753f45a35e8bb5a03d699ac65007272c32ab0eded1631a8b605a43ff5bed8086072ba1e7cc2358baeca134c8"
     "25a7"},
    {ProviderAlgorithm::Sha512, "SHA-512",
     "ddaf35a193617abacc417349ae20413112e6fa4e89a97ea20a9eeee64b55d39a2192992a274fc1a836ba3c23a3fe"
     "ebbd454d4423643ce80e2a9ac94fa54ca49f"},
};

std::string FinishedHex(ProviderHash& hash) {
  std::array<uint8_t, 64> bytes = {};
  const uint8_t length = hash.Finish(bytes);
  return BytesToHex(std::span(bytes).first(length), false);
}

TEST(DigestProviderTest, ServesItsSevenAlgorithms) {
  ASSERT_EQ(std::size(providerCases), ProviderAlgorithmCount);
  for (const ProviderCase& row : providerCases) {
    SCOPED_TRACE(row.name);
    ProviderHash hash(row.algorithm);
    hash.Update("a", 1);
    hash.Update(nullptr, 0);
    hash.Update("bc", 2);
    EXPECT_EQ(FinishedHex(hash), row.ofAbc);
  }
}

TEST(DigestProviderTest, RunsManyHashesOfOneProvider) {
  for (const ProviderCase& row : providerCases) {
    SCOPED_TRACE(row.name);
    std::vector<std::string> digests(8);
    std::vector<std::thread> threads;
    for (std::string& digest : digests) {
      threads.emplace_back([&] {
        ProviderHash hash(row.algorithm);
        hash.Update("abc", 3);
        digest = FinishedHex(hash);
      });
    }
    for (std::thread& thread : threads) thread.join();
    for (const std::string& digest : digests) EXPECT_EQ(digest, row.ofAbc);
  }
}

TEST(DigestProviderTest, MayBeLeftUnfinished) {
  for (const ProviderCase& row : providerCases) {
    ProviderHash hash(row.algorithm);
    hash.Update("abc", 3);
  }
}

const PlannedFault notReusable{.call = SystemCall::CreateReusableDigest, .nth = 0, .code = 87};

TEST(DigestProviderTest, RestartsFinishedOrNot) {
  for (const bool isReusable : {true, false}) {
    for (const ProviderCase& row : providerCases) {
      SCOPED_TRACE(std::string(row.name) + (isReusable ? ", reusable" : ", not reusable"));
      std::optional<InstalledFaults> faults;
      if (!isReusable) faults.emplace(std::vector{notReusable});
      ProviderHash hash(row.algorithm);
      for (int round = 0; round < 3; ++round) {
        hash.Restart();
        hash.Update("unfinished", 10);
        hash.Restart();
        hash.Update("abc", 3);
        EXPECT_EQ(FinishedHex(hash), row.ofAbc);
      }
    }
  }
}

// With a hash that is not reusable: a reusable one restarts without the provider.
TEST(DigestProviderTest, ReportsAFailureToRestart) {
  for (const ProviderCase& row : providerCases) {
    SCOPED_TRACE(row.name);
    std::optional<InstalledFaults> faults(std::in_place, std::vector{notReusable});
    ProviderHash hash(row.algorithm);
    hash.Update("unfinished", 10);
    faults.reset();
    faults.emplace(
        std::vector<PlannedFault>{{.call = SystemCall::CreateDigest, .nth = 0, .code = 8}});
    try {
      hash.Restart();
      ADD_FAILURE() << "restarted";
    } catch (const std::runtime_error& failure) {
      EXPECT_STREQ(failure.what(), "BCryptCreateHash failed");
    }
  }
}

TEST(DigestProviderTest, CreatesTheNextHashAfterAFailure) {
  for (const ProviderCase& row : providerCases) {
    SCOPED_TRACE(row.name);
    const InstalledFaults faults({{.call = SystemCall::CreateDigest, .nth = 1, .code = 8}});
    try {
      ProviderHash failing(row.algorithm);
      ADD_FAILURE() << "created although the call failed";
    } catch (const std::runtime_error& failure) {
      EXPECT_STREQ(failure.what(), "BCryptCreateHash failed");
    }
    ProviderHash next(row.algorithm);
    next.Update("abc", 3);
    EXPECT_EQ(FinishedHex(next), row.ofAbc);
  }
}

// --- A provider that can't be opened ------------------------------------------------------------

// Providers are opened once per process, so each of these tests runs in a process of its own.
class UnavailableProviderTest : public ::testing::Test {
 protected:
  void SetUp() override { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

constexpr int succeeded = 17;  // an exit code without any other cause

void Require(bool condition, const char* description) {
  if (condition) return;
  std::fprintf(stderr, "violated requirement: %s\n", description);
  std::exit(1);
}

std::string FailureOf(ProviderAlgorithm algorithm) {
  try {
    ProviderHash hash(algorithm);
    return "";
  } catch (const std::runtime_error& failure) {
    return failure.what();
  }
}

constexpr const char* unavailable = "Windows cryptography provider unavailable";

[[noreturn]] void CheckThatAFailureIsPermanent() {
  for (const ProviderCase& row : providerCases) {
    {
      const InstalledFaults faults({{.call = SystemCall::OpenDigestProvider, .nth = 0, .code = 5}});
      Require(FailureOf(row.algorithm) == unavailable, "fails when it can't be opened");
      Require(FailureOf(row.algorithm) == unavailable, "fails the second time too");
      Require(faults.Count(SystemCall::OpenDigestProvider) == 1, "is opened only once");
    }
    Require(FailureOf(row.algorithm) == unavailable, "still fails when it could be opened");
  }
  std::exit(succeeded);
}

TEST_F(UnavailableProviderTest, StaysUnavailable) {
  EXPECT_EXIT(CheckThatAFailureIsPermanent(), ::testing::ExitedWithCode(succeeded), "");
}

[[noreturn]] void CheckThatTheOthersWork() {
  const InstalledFaults faults({{.call = SystemCall::OpenDigestProvider, .nth = 1, .code = 5}});
  Require(FailureOf(ProviderAlgorithm::Sha1) == unavailable, "fails when it can't be opened");
  for (const ProviderCase& row : providerCases) {
    if (row.algorithm != ProviderAlgorithm::Sha1) {
      Require(FailureOf(row.algorithm).empty(), "another provider opens");
    }
  }
  std::exit(succeeded);
}

TEST_F(UnavailableProviderTest, DoesNotAffectTheOthers) {
  EXPECT_EXIT(CheckThatTheOthersWork(), ::testing::ExitedWithCode(succeeded), "");
}

[[noreturn]] void CheckThatFilesFailCompletely() {
  int code = succeeded;
  {
    TempTree tree;
    const std::u16string path = tree.AddFile(u"file", "content");
    const InstalledFaults faults({{.call = SystemCall::OpenDigestProvider, .nth = 1, .code = 5}});
    const AlgoMask mask = MaskOf(AlgoId::Crc32) | MaskOf(AlgoId::Md5) | MaskOf(AlgoId::Blake3);
    for (int round = 0; round < 2; ++round) {
      const HashOutcome outcome = HashFile(path, mask, {});
      if (outcome.error != ErrorNotSupported || outcome.bytesRead != 0) code = 1;
      for (size_t i = 0; i < AlgoCount; ++i) {
        if (outcome.digests[i].present) code = 2;
      }
    }
    if (faults.Count(SystemCall::ReadFile) != 0) code = 3;
    if (HashFile(path, MaskOf(AlgoId::Crc32), {}).error != 0) code = 4;
  }
  std::exit(code);
}

TEST_F(UnavailableProviderTest, MakesFilesFailCompletely) {
  EXPECT_EXIT(CheckThatFilesFailCompletely(), ::testing::ExitedWithCode(succeeded), "");
}

[[noreturn]] void CheckThatTheFirstUseIsSafe() {
  const InstalledFaults calls;
  std::vector<std::thread> threads;
  std::array<bool, 16> results = {};
  for (bool& result : results) {
    threads.emplace_back([&result] {
      result = true;
      for (const ProviderCase& row : providerCases) {
        ProviderHash hash(row.algorithm);
        hash.Update("abc", 3);
        result = result && FinishedHex(hash) == row.ofAbc;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  for (const bool result : results) Require(result, "the digest is correct");
  Require(calls.Count(SystemCall::OpenDigestProvider) == ProviderAlgorithmCount,
          "each provider is opened once");
  std::exit(succeeded);
}

TEST_F(UnavailableProviderTest, IsOpenedOnceByManyThreads) {
  EXPECT_EXIT(CheckThatTheFirstUseIsSafe(), ::testing::ExitedWithCode(succeeded), "");
}

}  // namespace
}  // namespace swr::testing
