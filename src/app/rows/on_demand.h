// A value that most objects never need. Without one, this takes only the memory of a pointer.
#pragma once

#include <memory>
#include <utility>

namespace app {

template <typename Value>
class OnDemand {
 public:
  OnDemand() = default;
  OnDemand(const OnDemand& other)
      : value_(other.value_ ? std::make_unique<Value>(*other.value_) : nullptr) {}
  OnDemand(OnDemand&&) noexcept = default;
  OnDemand& operator=(OnDemand other) noexcept {
    value_ = std::move(other.value_);
    return *this;
  }
  ~OnDemand() = default;

  // An empty value before the first Make.
  const Value& operator*() const {
    static const Value empty;
    return value_ ? *value_ : empty;
  }
  const Value* operator->() const { return &**this; }
  // The value for writing.
  Value& Make() {
    if (!value_) value_ = std::make_unique<Value>();
    return *value_;
  }

 private:
  std::unique_ptr<Value> value_;
};

}  // namespace app
