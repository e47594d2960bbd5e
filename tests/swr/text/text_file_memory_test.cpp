// A checksum file is read and decoded as a whole; this tests the limit on the memory used for that.
#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "swr/text/text_file.h"
#include "tests/support/allocation_peak.h"
#include "tests/support/temp_tree.h"

namespace swr::testing {
namespace {

constexpr size_t FileSize = size_t{4} << 20;
constexpr size_t Slack = size_t{64} << 10;  // paths, handles, a converter

std::string Repeated(std::string_view piece) {
  std::string bytes;
  while (bytes.size() + piece.size() <= FileSize) bytes += piece;
  return bytes;
}

TEST(TextFileMemoryTest, IsAtMostThreeTimesTheSizeOfTheFile) {
  struct Case {
    const char* description;
    std::string bytes;
  };
  const Case cases[] = {
      {"ASCII", Repeated("0123456789abcdef  name\n")},
      {"UTF-8", Repeated("0123456789abcdef  \xC3\xA9\n")},
      {"UTF-8 with a mark", "\xEF\xBB\xBF" + Repeated("0123456789abcdef  \xC3\xA9\n")},
      {"a code page", Repeated("0123456789abcdef  \xE9\n")},
      {"UTF-16", "\xFF\xFE" + Repeated(std::string_view("a\0b\0", 4))},
  };
  TempTree tree;
  for (const Case& test : cases) {
    SCOPED_TRACE(test.description);
    const std::u16string path = tree.AddFile(u"list", test.bytes);
    const AllocationPeak peak;
    const auto text = ReadTextFile(path, nullptr);
    const size_t taken = peak.Bytes();
    ASSERT_TRUE(text);
    EXPECT_GE(taken, 2 * test.bytes.size()) << "the allocations must be counted";
    EXPECT_LE(taken, 3 * test.bytes.size() + Slack);
  }
}

}  // namespace
}  // namespace swr::testing
