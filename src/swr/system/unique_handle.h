// Sole ownership of a handle of the platform, described by a traits type:
//   Value    the handle's type
//   Invalid  the value that stands for no handle
//   Close    static function that gives a valid handle back; must not throw
#pragma once

#include <utility>

namespace swr {

template <typename Traits>
class UniqueHandle {
 public:
  using Value = typename Traits::Value;

  UniqueHandle() noexcept = default;
  explicit UniqueHandle(Value value) noexcept : value_(value) {}
  UniqueHandle(UniqueHandle&& other) noexcept : value_(other.Release()) {}
  UniqueHandle& operator=(UniqueHandle&& other) noexcept {
    if (this != &other) Reset(other.Release());
    return *this;
  }
  UniqueHandle(const UniqueHandle&) = delete;
  UniqueHandle& operator=(const UniqueHandle&) = delete;
  ~UniqueHandle() { Reset(); }

  explicit operator bool() const noexcept { return value_ != Traits::Invalid; }
  // The handle itself, for the argument of a call; ownership stays here.
  Value Get() const noexcept { return value_; }
  // Gives ownership to the caller.
  [[nodiscard]] Value Release() noexcept { return std::exchange(value_, Traits::Invalid); }
  // Closes what is held, if anything, and takes `value` over. The same value again is no change.
  void Reset(Value value = Traits::Invalid) noexcept {
    if (value == value_) return;
    const Value old = std::exchange(value_, value);
    if (old != Traits::Invalid) Traits::Close(old);
  }

 private:
  Value value_ = Traits::Invalid;
};

}  // namespace swr
