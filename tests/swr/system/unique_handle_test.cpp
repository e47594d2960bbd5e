#include "swr/system/unique_handle.h"

#include <gtest/gtest.h>

#include <type_traits>
#include <utility>
#include <vector>

namespace swr::testing {
namespace {

std::vector<int> closed;

struct FakeTraits {
  using Value = int;
  static constexpr int Invalid = -1;
  static void Close(int value) noexcept { closed.push_back(value); }
};
using Handle = UniqueHandle<FakeTraits>;

static_assert(!std::is_copy_constructible_v<Handle> && !std::is_copy_assignable_v<Handle>);
static_assert(std::is_nothrow_move_constructible_v<Handle>);
static_assert(std::is_nothrow_move_assignable_v<Handle>);
static_assert(!std::is_convertible_v<int, Handle>, "taking ownership is explicit");

class UniqueHandleTest : public ::testing::Test {
 protected:
  void SetUp() override { closed.clear(); }
};

using Values = std::vector<int>;

TEST_F(UniqueHandleTest, IsEmptyByDefault) {
  {
    const Handle handle;
    EXPECT_FALSE(handle);
    EXPECT_EQ(handle.Get(), -1);
  }
  EXPECT_EQ(closed, Values{});
}

TEST_F(UniqueHandleTest, ClosesItsHandle) {
  {
    const Handle handle(3);
    EXPECT_TRUE(handle);
    EXPECT_EQ(handle.Get(), 3);
    EXPECT_EQ(closed, Values{});
  }
  EXPECT_EQ(closed, Values{3});
}

TEST_F(UniqueHandleTest, ZeroIsAValidHandle) {
  { EXPECT_TRUE(Handle(0)); }
  EXPECT_EQ(closed, Values{0});
}

TEST_F(UniqueHandleTest, NeverClosesTheInvalidValue) {
  {
    Handle handle(-1);
    EXPECT_FALSE(handle);
    handle.Reset();
    handle.Reset(-1);
    Handle moved(std::move(handle));
    handle = std::move(moved);
  }
  EXPECT_EQ(closed, Values{});
}

TEST_F(UniqueHandleTest, ReleasesItsHandle) {
  {
    Handle handle(3);
    EXPECT_EQ(handle.Release(), 3);
    EXPECT_FALSE(handle);
    EXPECT_EQ(handle.Release(), -1);
  }
  EXPECT_EQ(closed, Values{});
}

TEST_F(UniqueHandleTest, CanBeMoveConstructed) {
  {
    Handle first(3);
    const Handle second(std::move(first));
    EXPECT_FALSE(first);
    EXPECT_EQ(second.Get(), 3);
  }
  EXPECT_EQ(closed, Values{3});
}

TEST_F(UniqueHandleTest, MoveAssignmentClosesTheOldHandle) {
  {
    Handle first(3);
    Handle second(4);
    second = std::move(first);
    EXPECT_EQ(closed, Values{4});
    EXPECT_FALSE(first);
    EXPECT_EQ(second.Get(), 3);
  }
  EXPECT_EQ(closed, (Values{4, 3}));
}

TEST_F(UniqueHandleTest, AssigningAnEmptyOneClosesTheOldHandle) {
  Handle handle(3);
  handle = Handle();
  EXPECT_EQ(closed, Values{3});
  EXPECT_FALSE(handle);
}

TEST_F(UniqueHandleTest, SurvivesSelfMove) {
  {
    Handle handle(3);
    Handle& same = handle;
    handle = std::move(same);
    EXPECT_EQ(handle.Get(), 3);
    EXPECT_EQ(closed, Values{});
  }
  EXPECT_EQ(closed, Values{3});
}

TEST_F(UniqueHandleTest, CanBeReset) {
  {
    Handle handle(3);
    handle.Reset(4);
    EXPECT_EQ(closed, Values{3});
    EXPECT_EQ(handle.Get(), 4);
    handle.Reset(4);
    EXPECT_EQ(closed, Values{3}) << "the same value again is no change";
    EXPECT_EQ(handle.Get(), 4);
    handle.Reset();
    EXPECT_EQ(closed, (Values{3, 4}));
    EXPECT_FALSE(handle);
  }
  EXPECT_EQ(closed, (Values{3, 4}));
}

}  // namespace
}  // namespace swr::testing
