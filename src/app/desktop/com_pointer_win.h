// Sole ownership of a COM interface.
#pragma once

#include "swr/system/unique_handle.h"

namespace app {

template <typename Interface>
struct ComTraits {
  using Value = Interface*;
  static constexpr Interface* Invalid = nullptr;
  static void Close(Interface* value) noexcept { value->Release(); }
};

template <typename Interface>
using ComPointer = swr::UniqueHandle<ComTraits<Interface>>;

}  // namespace app
