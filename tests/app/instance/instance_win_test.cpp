// The hand-over through the system's real named objects, to a window of this process.
#include "app/instance/instance_win.h"

#include <gtest/gtest.h>

#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <span>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/every_fault.h"

namespace app::testing {
namespace {

using swr::SystemCall;
using swr::testing::HasFailed;
using swr::testing::MaybeFailed;
using Paths = std::vector<std::u16string>;

// An invisible window on a separate thread, which records the paths that it receives.
class ReceivingWindow {
 public:
  ReceivingWindow() : thread_([this] { Run(); }) {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return isUp_; });
    EXPECT_NE(window_, nullptr);
  }
  ~ReceivingWindow() {
    PostMessageW(window_, WM_CLOSE, 0, 0);
    thread_.join();
  }
  ReceivingWindow(const ReceivingWindow&) = delete;
  ReceivingWindow& operator=(const ReceivingWindow&) = delete;

  HWND Handle() const { return window_; }
  std::vector<Paths> Received() {
    const std::lock_guard lock(mutex_);
    return received_;
  }

 private:
  void Run() {
    const WNDCLASSW windowClass = {.lpfnWndProc = OnMessage, .lpszClassName = ClassName};
    RegisterClassW(&windowClass);
    const HWND window =
        CreateWindowExW(0, ClassName, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    {
      const std::lock_guard lock(mutex_);
      window_ = window;
      isUp_ = true;
    }
    changed_.notify_all();
    MSG message;
    while (window != nullptr && GetMessageW(&message, nullptr, 0, 0) > 0) {
      DispatchMessageW(&message);
    }
    UnregisterClassW(ClassName, nullptr);
  }
  static LRESULT CALLBACK OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_COPYDATA) {
      auto* self = reinterpret_cast<ReceivingWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
      const auto& data = *reinterpret_cast<const COPYDATASTRUCT*>(lParam);
      const std::span bytes(static_cast<const std::byte*>(data.lpData), data.cbData);
      const std::lock_guard lock(self->mutex_);
      self->received_.push_back(ReadHandOver(data.dwData, bytes).value_or(Paths{u"(not ours)"}));
      return 1;
    }
    if (message == WM_DESTROY) PostQuitMessage(0);
    return DefWindowProcW(window, message, wParam, lParam);
  }

  static constexpr wchar_t ClassName[] = L"SumwrightTest.Receiver";
  std::mutex mutex_;
  std::condition_variable changed_;
  bool isUp_ = false;
  HWND window_ = nullptr;
  std::vector<Paths> received_;
  std::thread thread_;  // last: it uses all of the above
};

// This process both creates the mutex and looks for it.
class HandOverScenario {
 public:
  HandOverScenario() { instances_.AnotherInstanceExists(); }
  void Run() {
    PublishMainWindow(window_.Handle());
    handedOver_ = ForwardToFirstInstance(instances_, {u"C:\\a\\..\\b", u"C:/c"});
  }
  void Check(const MaybeFailed& failed) {
    const bool keeps = HasFailed(failed, SystemCall::InstanceMutex) ||
                       HasFailed(failed, SystemCall::DeliverMessage) || IsUnpublished(failed);
    EXPECT_EQ(handedOver_, !keeps);
    std::vector<Paths> received;
    if (!keeps) {
      received = {{HasFailed(failed, SystemCall::FullPath, 1) ? u"C:\\a\\..\\b" : u"C:\\b",
                   HasFailed(failed, SystemCall::FullPath, 2) ? u"C:/c" : u"C:\\c"}};
    }
    EXPECT_EQ(window_.Received(), received);
  }

 private:
  // The published window is that of the previous run, which no longer exists. So the paths stay
  // here, after waiting five seconds for a window.
  static bool IsUnpublished(const MaybeFailed& failed) {
    return HasFailed(failed, SystemCall::MapView, 1);
  }

  ReceivingWindow window_;
  // There will be no window, so the test does not wait for one.
  class Instances final : public InstanceSystem {
   public:
    bool AnotherInstanceExists() override { return system_.AnotherInstanceExists(); }
    uint64_t PublishedWindow() override { return system_.PublishedWindow(); }
    bool IsWindow(uint64_t window) override { return system_.IsWindow(window); }
    void WaitForWindow() override {}
    std::optional<std::u16string> FullPath(const std::u16string& path) override {
      return system_.FullPath(path);
    }
    bool Deliver(uint64_t window, const std::u16string& payload) override {
      return system_.Deliver(window, payload);
    }

   private:
    WindowsInstanceSystem system_;
  };
  Instances instances_;
  bool handedOver_ = false;
};

// First, because a process creates the mapping only once.
TEST(InstanceWinTest, AMappingThatCannotBeMadePublishesNothing) {
  ReceivingWindow window;
  WindowsInstanceSystem system;
  for (const auto& code : swr::testing::faultCodes) {
    const swr::testing::InstalledFaults faults(
        {{.call = SystemCall::CreateMapping, .nth = 0, .code = code.code}});
    PublishMainWindow(window.Handle());
    EXPECT_EQ(faults.Count(SystemCall::CreateMapping), 1u);
    EXPECT_EQ(system.PublishedWindow(), 0u);
  }
  PublishMainWindow(window.Handle());
  EXPECT_EQ(system.PublishedWindow(), reinterpret_cast<UINT_PTR>(window.Handle()));
}

TEST(InstanceWinTest, EachCallFailsWithEachCode) { swr::testing::FailEachCall<HandOverScenario>(); }

}  // namespace
}  // namespace app::testing
