#include "tests/kit/plan.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace kit {
namespace {

int WithBits(const std::vector<PlannedProgram>& plan, int bits) {
  return static_cast<int>(std::ranges::count(plan, bits, &PlannedProgram::bits));
}

TEST(PlanTest, A32BitSystemRunsOnlyItsOwnPrograms) {
  const std::vector<PlannedProgram> plan = MakePlan({.is64Bit = false});
  EXPECT_EQ(WithBits(plan, 64), 0);
  EXPECT_GT(WithBits(plan, 32), 0);
}

TEST(PlanTest, A64BitSystemRunsBothAndIts64BitProgramsFirstAndInFull) {
  const std::vector<PlannedProgram> plan = MakePlan({.is64Bit = true});
  EXPECT_EQ(WithBits(plan, 64), WithBits(plan, 32));
  EXPECT_TRUE(std::ranges::is_sorted(plan, std::ranges::greater(), &PlannedProgram::bits));
  const auto filterOf = [&](int bits, const std::string& file) {
    return std::ranges::find_if(plan,
                                [&](const PlannedProgram& program) {
                                  return program.bits == bits && program.file == file;
                                })
        ->filter;
  };
  EXPECT_NE(filterOf(64, "window_tests.exe"), filterOf(32, "window_tests.exe"));
  EXPECT_EQ(filterOf(64, "swr_tests.exe"), filterOf(32, "swr_tests.exe"));
  EXPECT_EQ(MakePlan({.is64Bit = false}).back().filter, filterOf(64, "window_tests.exe"))
      << "in full for the system's native word size";
}

TEST(PlanTest, TheSoakTestRunsOnlyOnRequestAndLast) {
  EXPECT_TRUE(std::ranges::none_of(MakePlan({}), [](const PlannedProgram& program) {
    return program.kind == ProgramKind::Soak;
  }));
  const std::vector<PlannedProgram> plan = MakePlan({.soakMinutes = 60});
  EXPECT_EQ(plan.back().kind, ProgramKind::Soak);
  EXPECT_GT(plan.back().limitSeconds, 3600);
}

TEST(PlanTest, ProgramsCanBeChosenByTitle) {
  const std::vector<PlannedProgram> plan = MakePlan({.only = "Core"});
  ASSERT_EQ(plan.size(), 2u);
  EXPECT_EQ(plan[0].title, "Core (64-bit)");
  EXPECT_EQ(plan[1].title, "Core (32-bit)");
  EXPECT_TRUE(MakePlan({.only = "no such program"}).empty());
}

TEST(PlanTest, AQuickRunHasSomeTestsOfEachProgram) {
  const std::vector<PlannedProgram> quick = MakePlan({.quick = true});
  EXPECT_EQ(quick.size(), MakePlan({}).size());
  for (const PlannedProgram& program : quick) EXPECT_FALSE(program.filter.empty()) << program.title;
}

TEST(PlanTest, EveryProgramHasATimeLimit) {
  for (const PlannedProgram& program : MakePlan({})) EXPECT_GT(program.limitSeconds, 0);
}

}  // namespace
}  // namespace kit
