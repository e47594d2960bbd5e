#include "swr/text/display_text.h"

#include <gtest/gtest.h>

#include <clocale>
#include <string>
#include <string_view>

#include "swr/system/text_services.h"
#include "swr/text/encoding.h"

namespace swr::testing {
namespace {

// --- FormatSize ---------------------------------------------------------------------------------

constexpr uint64_t KiB = 1024;
constexpr uint64_t MiB = 1024 * KiB;
constexpr uint64_t GiB = 1024 * MiB;
constexpr uint64_t TiB = 1024 * GiB;
constexpr uint64_t PiB = 1024 * TiB;

struct SizeCase {
  uint64_t bytes;
  std::u16string_view text;
};

const SizeCase sizeCases[] = {
    // Bytes.
    {0, u"0 bytes"},
    {1, u"1 byte"},
    {2, u"2 bytes"},
    {1023, u"1023 bytes"},
    // One decimal below 10.
    {1024, u"1.0 KB"},
    {1075, u"1.0 KB"},
    {1076, u"1.1 KB"},
    {1536, u"1.5 KB"},
    {10188, u"9.9 KB"},
    {10239, u"10.0 KB"},
    // No decimal from 10 on.
    {10240, u"10 KB"},
    {10241, u"10 KB"},
    {100 * KiB, u"100 KB"},
    {1023 * KiB, u"1023 KB"},
    // Rounding never changes the unit.
    {MiB - 1, u"1024 KB"},
    {1023 * KiB + 922, u"1024 KB"},
    {MiB, u"1.0 MB"},
    {MiB + MiB / 2, u"1.5 MB"},
    {10444865, u"10.0 MB"},
    {10 * MiB, u"10 MB"},
    // The larger units.
    {GiB - 1, u"1024 MB"},
    {GiB, u"1.0 GB"},
    {4 * GiB + GiB / 4, u"4.2 GB"},
    {TiB - 1, u"1024 GB"},
    {TiB, u"1.0 TB"},
    {PiB - 1, u"1024 TB"},
    {PiB, u"1.0 PB"},
    {1000 * PiB, u"1000 PB"},
    // Beyond the last unit the number grows.
    {1024 * PiB, u"1024 PB"},
    {UINT64_MAX, u"16384 PB"},
};

TEST(FormatSizeTest, WritesBinaryUnits) {
  for (const SizeCase& row : sizeCases) {
    EXPECT_EQ(FormatSize(row.bytes), row.text) << row.bytes;
  }
}

TEST(FormatSizeTest, WritesAFullStopWhateverTheLocale) {
  const std::string before = std::setlocale(LC_ALL, nullptr);
  std::setlocale(LC_ALL, "");
  EXPECT_EQ(FormatSize(1536), u"1.5 KB");
  std::setlocale(LC_ALL, before.c_str());
}

// --- FormatErrorText ----------------------------------------------------------------------------

struct UnknownCase {
  uint32_t error;
  std::u16string_view text;
};

// Codes for which no system has a message.
const UnknownCase unknownCases[] = {
    {3735928559, u"Error 3735928559"},
    {UINT32_MAX, u"Error 4294967295"},
    {0x20001234, u"Error 536875572"},
};

TEST(FormatErrorTextTest, ShowsTheNumberOfAnUnknownError) {
  for (const UnknownCase& row : unknownCases) EXPECT_EQ(FormatErrorText(row.error), row.text);
}

// Messages differ between systems, and between Wine and Windows.
TEST(FormatErrorTextTest, TrimsTheSystemsMessage) {
  for (const uint32_t error : {2u, 3u, 5u, 32u, 50u, 267u}) {
    SCOPED_TRACE(error);
    const std::u16string text = FormatErrorText(error);
    ASSERT_FALSE(text.empty());
    EXPECT_EQ(std::u16string_view(u"\n\r .").find(text.back()), std::u16string_view::npos)
        << WideToUtf8(text);
    const std::u16string words = SystemErrorText(error);
    ASSERT_TRUE(words.starts_with(text)) << WideToUtf8(words);
    EXPECT_EQ(words.find_first_not_of(u"\n\r .", text.size()), words.npos) << WideToUtf8(words);
  }
}

}  // namespace
}  // namespace swr::testing
