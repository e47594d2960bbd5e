// Calls functions of the system inside another process. Menus and dialog units are known only to
// the process that owns the window.
#pragma once

#include "swr/system/windows_api_win.h"

#include <cstdint>
#include <initializer_list>
#include <map>

#include "tests/support/remote_list_win.h"

namespace app::testing {

class RemoteCaller {
 public:
  // Throws std::runtime_error if the window's process can't be opened; so do the calls when they
  // fail.
  explicit RemoteCaller(HWND window);
  ~RemoteCaller();
  RemoteCaller(const RemoteCaller&) = delete;
  RemoteCaller& operator=(const RemoteCaller&) = delete;

  // Runs a function of a system library on a new thread in the other process, with at most five
  // arguments, each a number, a handle or an address in that process.
  template <typename Function>
  uint64_t Call(Function* function, std::initializer_list<uint64_t> arguments) const {
    return CallAddress(reinterpret_cast<uint64_t>(function), arguments);
  }

  // Memory in the other process that calls can read or write.
  const swr::testing::RemoteMemory& Scratch() const { return scratch_; }
  uint64_t ScratchAddress() const { return reinterpret_cast<uint64_t>(scratch_.At(0)); }
  static constexpr size_t ScratchSize = 32768;  // for the longest text that is read

 private:
  uint64_t CallAddress(uint64_t function, std::initializer_list<uint64_t> arguments) const;

  HANDLE process_ = nullptr;
  mutable std::map<uint64_t, uint64_t> addresses_;  // of functions: here, and in the other process
  void* code_ = nullptr;
  swr::testing::RemoteMemory scratch_;
  swr::testing::RemoteMemory block_;
};

}  // namespace app::testing
