// Fault injection: each system call fails in turn while a start hands its paths to the open window.
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "app/instance/hand_over.h"
#include "tests/support/every_fault.h"
#include "tests/support/fake_instances.h"

namespace app::testing {
namespace {

using swr::SystemCall;
using swr::testing::HasFailed;
using swr::testing::MaybeFailed;
using namespace std::string_literals;

// No path is ever lost: either the other window receives all of them, or this process keeps them
// for its own window.
class HandOverScenario {
 public:
  HandOverScenario() { instances_.fullPaths = {{u"a", u"C:\\a"}, {u"b", u"C:\\b"}}; }
  void Run() { handedOver_ = ForwardToFirstInstance(instances_, {u"a", u"b"}); }
  void Check(const MaybeFailed& failed) {
    const bool keeps = HasFailed(failed, SystemCall::InstanceMutex) ||
                       HasFailed(failed, SystemCall::DeliverMessage);
    EXPECT_EQ(handedOver_, !keeps);
    std::vector<std::pair<uint64_t, std::u16string>> delivered;
    if (!keeps) {
      // A path that can't be made full is handed over as it was given.
      std::u16string payload = HasFailed(failed, SystemCall::FullPath, 1) ? u"a\0"s : u"C:\\a\0"s;
      payload += HasFailed(failed, SystemCall::FullPath, 2) ? u"b\0"s : u"C:\\b\0"s;
      delivered = {{instances_.window, payload}};
    }
    EXPECT_EQ(instances_.deliveries, delivered);
    const bool looksAgain =
        HasFailed(failed, SystemCall::OpenMapping) || HasFailed(failed, SystemCall::MapView);
    EXPECT_EQ(instances_.waits, looksAgain ? 1 : 0);
  }

 private:
  FakeInstances instances_;
  bool handedOver_ = false;
};

TEST(HandOverFaultsTest, EachCallFailsWithEachCode) {
  swr::testing::FailEachCall<HandOverScenario>();
}

}  // namespace
}  // namespace app::testing
