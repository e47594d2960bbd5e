#include "swr/system/local_time.h"

#include <gtest/gtest.h>

#include <ctime>
#include <optional>

namespace swr::testing {
namespace {

constexpr FileTime Second = 10'000'000;
constexpr FileTime Epoch1970 = 116444736000000000;  // 1970-01-01 UTC

TEST(LocalTimeTest, DoesNotConvertAnUnknownTime) { EXPECT_EQ(ToLocalTime(0), std::nullopt); }

// Compared with the C library, which uses the same time zone.
TEST(LocalTimeTest, IsInTheLocalTimeZone) {
  for (const std::time_t moment :
       {std::time_t{1}, std::time_t{951782399}, std::time_t{1767225599}, std::time_t{1767225600}}) {
    const std::tm* parts = std::localtime(&moment);
    const CalendarTime expected = {
        static_cast<uint32_t>(parts->tm_year + 1900), static_cast<uint32_t>(parts->tm_mon + 1),
        static_cast<uint32_t>(parts->tm_mday), static_cast<uint32_t>(parts->tm_hour),
        static_cast<uint32_t>(parts->tm_min)};
    const FileTime time = Epoch1970 + static_cast<FileTime>(moment) * Second;
    EXPECT_EQ(ToLocalTime(time), expected) << moment;
    EXPECT_EQ(ToLocalTime(time + Second - 1), expected) << moment;
  }
}

}  // namespace
}  // namespace swr::testing
