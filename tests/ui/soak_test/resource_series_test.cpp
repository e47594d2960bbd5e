#include "tests/ui/soak_test/resource_series.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>

namespace app::testing {
namespace {

constexpr size_t ShortRun = 16;
constexpr size_t AnHour = 200;
constexpr uint64_t MiB = uint64_t{1} << 20;

// A series of `count` samples from `sampleAt`.
template <typename SampleAt>
bool Grows(size_t count, SampleAt sampleAt) {
  ResourceSeries series;
  for (size_t i = 0; i < count; ++i) series.Add(sampleAt(i));
  return series.Evaluate().hasGrown;
}

TEST(ResourceSeriesTest, ConstantUseIsNotGrowth) {
  for (const size_t count : {ShortRun, AnHour}) {
    EXPECT_FALSE(Grows(count, [](size_t i) {
      return ResourceSample{.handles = 53 + i % 2, .privateBytes = 30 * MiB};
    }));
  }
}

TEST(ResourceSeriesTest, ALeakEveryTimeIsGrowth) {
  for (const size_t count : {ShortRun, AnHour}) {
    EXPECT_TRUE(Grows(count, [](size_t i) { return ResourceSample{.handles = i}; }));
    EXPECT_TRUE(Grows(count, [](size_t i) { return ResourceSample{.gdiObjects = i}; }));
    EXPECT_TRUE(Grows(count, [](size_t i) { return ResourceSample{.userObjects = i}; }));
    EXPECT_TRUE(Grows(count, [](size_t i) { return ResourceSample{.privateBytes = i * MiB / 4}; }));
  }
}

TEST(ResourceSeriesTest, AnOccasionalLeakIsGrowthWithinAnHour) {
  EXPECT_TRUE(Grows(AnHour, [](size_t i) { return ResourceSample{.handles = i / 10}; }));
  EXPECT_TRUE(Grows(AnHour, [](size_t i) { return ResourceSample{.privateBytes = i * MiB / 20}; }));
}

TEST(ResourceSeriesTest, StepsOfTheHeapAreNotGrowthWhileItSettles) {
  EXPECT_FALSE(Grows(ShortRun, [](size_t i) {
    return ResourceSample{.privateBytes = (i < 6 ? 18 : i < 10 ? 24 : 30) * MiB};
  }));
  EXPECT_FALSE(Grows(ShortRun, [](size_t i) {
    return ResourceSample{.privateBytes = (i < ShortRun - 2 ? 24 : 30) * MiB};
  }));
  EXPECT_FALSE(Grows(
      AnHour, [](size_t i) { return ResourceSample{.privateBytes = (i < 30 ? 24 : 30) * MiB}; }));
}

TEST(ResourceSeriesTest, ALastingStepIsGrowthOnceTheHeapHasSettled) {
  EXPECT_TRUE(Grows(
      AnHour, [](size_t i) { return ResourceSample{.privateBytes = (i < 100 ? 24 : 30) * MiB}; }));
}

TEST(ResourceSeriesTest, TemporaryUseIsNotGrowth) {
  EXPECT_FALSE(Grows(AnHour, [](size_t i) {
    const uint64_t peak = i < AnHour / 2 ? 30 : 60;
    return ResourceSample{.privateBytes = (i % 3 == 0 ? 24 : peak) * MiB};
  }));
}

}  // namespace
}  // namespace app::testing
