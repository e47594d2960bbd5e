// Owners of the handles and memory that Windows calls return, each with the function that frees it.
#pragma once

#include "swr/system/windows_api_win.h"

#include <objbase.h>

#include "swr/system/unique_handle.h"

namespace swr {

// For calls that fail with a null handle: mutexes, file mappings, threads, processes.
struct KernelHandleTraits {
  using Value = HANDLE;
  static constexpr HANDLE Invalid = nullptr;
  static void Close(HANDLE value) noexcept { CloseHandle(value); }
};
using KernelHandle = UniqueHandle<KernelHandleTraits>;

// For calls that fail with INVALID_HANDLE_VALUE: CreateFileW and CreateToolhelp32Snapshot.
// INVALID_HANDLE_VALUE is a cast and can't be a constant expression.
struct OpenFileTraits {
  using Value = HANDLE;
  static inline const HANDLE Invalid = INVALID_HANDLE_VALUE;
  static void Close(HANDLE value) noexcept { CloseHandle(value); }
};
using FileHandle = UniqueHandle<OpenFileTraits>;

struct FindHandleTraits {
  using Value = HANDLE;
  static inline const HANDLE Invalid = INVALID_HANDLE_VALUE;
  static void Close(HANDLE value) noexcept { FindClose(value); }
};
using FindHandle = UniqueHandle<FindHandleTraits>;

struct MappedViewTraits {
  using Value = void*;
  static constexpr void* Invalid = nullptr;
  static void Close(void* value) noexcept { UnmapViewOfFile(value); }
};
using MappedView = UniqueHandle<MappedViewTraits>;

struct RegistryKeyTraits {
  using Value = HKEY;
  static constexpr HKEY Invalid = nullptr;
  static void Close(HKEY value) noexcept { RegCloseKey(value); }
};
using RegistryKey = UniqueHandle<RegistryKeyTraits>;

// Memory that the system allocated for an array of Element.
template <typename Element>
struct LocalMemoryTraits {
  using Value = Element*;
  static constexpr Element* Invalid = nullptr;
  static void Close(Element* value) noexcept { LocalFree(value); }
};
template <typename Element>
using LocalMemory = UniqueHandle<LocalMemoryTraits<Element>>;

// Text that COM or the shell allocated.
struct TaskTextTraits {
  using Value = wchar_t*;
  static constexpr wchar_t* Invalid = nullptr;
  static void Close(wchar_t* value) noexcept { CoTaskMemFree(value); }
};
using TaskText = UniqueHandle<TaskTextTraits>;

struct GlobalMemoryTraits {
  using Value = HGLOBAL;
  static constexpr HGLOBAL Invalid = nullptr;
  static void Close(HGLOBAL value) noexcept { GlobalFree(value); }
};
using GlobalMemory = UniqueHandle<GlobalMemoryTraits>;

}  // namespace swr
