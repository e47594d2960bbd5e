#include "swr/text/progress_text.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

TEST(ProgressTextTest, AFractionIsRoundedDownAndNeverOverflows) {
  EXPECT_EQ(swr::FractionOf(0, 7, 100), 0u);
  EXPECT_EQ(swr::FractionOf(1, 3, 100), 33u);
  EXPECT_EQ(swr::FractionOf(7, 7, 10000), 10000u);
  constexpr uint64_t most = std::numeric_limits<uint64_t>::max();
  EXPECT_EQ(swr::FractionOf(most, most, 100), 100u);
  EXPECT_EQ(swr::FractionOf(most / 2 + 2, most, 100), 50u);
}

TEST(ProgressTextTest, MinutesDoNotBecomeHours) {
  EXPECT_EQ(swr::FormatTimeLeft(0), u"0:00");
  EXPECT_EQ(swr::FormatTimeLeft(7.9), u"0:07");
  EXPECT_EQ(swr::FormatTimeLeft(3661), u"61:01");
  EXPECT_EQ(swr::FormatTimeLeft(std::numeric_limits<double>::infinity()), u"35791394:07");
}

}  // namespace
