// Lets a test wait until something that it does not own is destroyed: whatever keeps a copy of the
// token, such as a function that an abandoned thread owns.
#pragma once

#include <future>
#include <memory>
#include <utility>

namespace swr::testing {

class EndOfLife {
 public:
  EndOfLife() {
    auto promise = std::make_shared<std::promise<void>>();
    end_ = promise->get_future();
    token_ = std::shared_ptr<void>(nullptr, [promise](void*) { promise->set_value(); });
  }

  // To be called once.
  std::shared_ptr<void> TakeToken() { return std::exchange(token_, nullptr); }
  // Waits until all copies are destroyed.
  void Wait() const { end_.wait(); }

 private:
  std::shared_ptr<void> token_;
  std::future<void> end_;
};

}  // namespace swr::testing
