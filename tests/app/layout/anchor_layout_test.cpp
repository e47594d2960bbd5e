#include "app/layout/anchor_layout.h"

#include <gtest/gtest.h>

#include <vector>

namespace app {
namespace {

TEST(AnchorLayoutTest, EachEdgeFollowsByItself) {
  const AnchoredControl controls[] = {
      {1, Follow::Nothing, Follow::Nothing, Follow::Nothing, Follow::Nothing},
      {2, Follow::All, Follow::Nothing, Follow::Nothing, Follow::Nothing},
      {3, Follow::Nothing, Follow::All, Follow::Nothing, Follow::Nothing},
      {4, Follow::Nothing, Follow::Nothing, Follow::All, Follow::Nothing},
      {5, Follow::Nothing, Follow::Nothing, Follow::Nothing, Follow::All}};
  const std::vector<LayoutRect> base(5, {10, 20, 30, 40});
  EXPECT_EQ(AnchorLayout(controls, base, 5, 3), (std::vector<LayoutRect>{{10, 20, 30, 40},
                                                                         {15, 20, 30, 40},
                                                                         {10, 23, 30, 40},
                                                                         {10, 20, 35, 40},
                                                                         {10, 20, 30, 43}}));
}

TEST(AnchorLayoutTest, HalfFollowsHalfOfTheChange) {
  const AnchoredControl controls[] = {
      {1, Follow::Half, Follow::Nothing, Follow::All, Follow::Half}};
  const LayoutRect base[] = {{10, 20, 30, 40}};
  EXPECT_EQ(AnchorLayout(controls, base, 7, 9), (std::vector<LayoutRect>{{13, 20, 37, 44}}));
  EXPECT_EQ(AnchorLayout(controls, base, -7, -9), (std::vector<LayoutRect>{{7, 20, 23, 36}}));
}

}  // namespace
}  // namespace app
