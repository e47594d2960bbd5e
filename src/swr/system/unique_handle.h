// Sole ownership of a platform handle, described by a traits type:
//   Value    the type of the handle
//   Invalid  the value that means no handle
//   Close    static function that closes a valid handle; must not throw
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
  // The handle, for the argument of a call; ownership stays here.
  Value Get() const noexcept { return value_; }
  // Passes ownership to the caller.
  [[nodiscard]] Value Release() noexcept { return std::exchange(value_, Traits::Invalid); }
  // Closes the handle, if any, and takes ownership of `value`. No effect if both are the same.
  void Reset(Value value = Traits::Invalid) noexcept {
    if (value == value_) return;
    const Value old = std::exchange(value_, value);
    if (old != Traits::Invalid) Traits::Close(old);
  }

 private:
  Value value_ = Traits::Invalid;
};

}  // namespace swr
