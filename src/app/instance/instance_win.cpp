#include "app/instance/instance_win.h"

#include <cstring>
#include <utility>

#include "swr/system/fault_injection.h"
#include "swr/system/full_path.h"
#include "swr/system/handles_win.h"
#include "swr/system/wide_text_win.h"

namespace app {
namespace {

constexpr wchar_t InstanceName[] = L"Local\\Zendrik.Sumwright.Instance";
constexpr wchar_t WindowName[] = L"Local\\Zendrik.Sumwright.Window";
constexpr DWORD TryInterval = 100;       // milliseconds
constexpr UINT DeliveryTimeout = 10000;  // milliseconds

// The published window's handle. 32-bit and 64-bit programs read the same value, so it has a fixed
// size.
using PublishedHandle = uint64_t;
static_assert(sizeof(PublishedHandle) == 8);

swr::MappedView MapView(HANDLE mapping, DWORD access) {
  if (swr::InjectedFault(swr::SystemCall::MapView)) return {};
  return swr::MappedView(MapViewOfFile(mapping, access, 0, 0, sizeof(PublishedHandle)));
}

HWND AsWindow(uint64_t window) { return reinterpret_cast<HWND>(static_cast<UINT_PTR>(window)); }

}  // namespace

bool WindowsInstanceSystem::AnotherInstanceExists() {
  // Stays open until the process ends: the mutex exists for as long as some process has it open.
  static swr::KernelHandle mutex;
  if (swr::InjectedFault(swr::SystemCall::InstanceMutex)) return false;
  swr::KernelHandle opened(CreateMutexW(nullptr, FALSE, InstanceName));
  const bool existed = opened && GetLastError() == ERROR_ALREADY_EXISTS;
  if (!mutex) mutex = std::move(opened);
  return existed;
}

uint64_t WindowsInstanceSystem::PublishedWindow() {
  if (swr::InjectedFault(swr::SystemCall::OpenMapping)) return 0;
  const swr::KernelHandle mapping(OpenFileMappingW(FILE_MAP_READ, FALSE, WindowName));
  if (!mapping) return 0;
  const auto view = MapView(mapping.Get(), FILE_MAP_READ);
  if (!view) return 0;
  PublishedHandle window = 0;
  std::memcpy(&window, view.Get(), sizeof window);
  return window;
}

bool WindowsInstanceSystem::IsWindow(uint64_t window) {
  return ::IsWindow(AsWindow(window)) != FALSE;
}

void WindowsInstanceSystem::WaitForWindow() { Sleep(TryInterval); }

std::optional<std::u16string> WindowsInstanceSystem::FullPath(const std::u16string& path) {
  return swr::SystemFullPath(path);
}

bool WindowsInstanceSystem::Deliver(uint64_t window, const std::u16string& payload) {
  COPYDATASTRUCT data = {};
  data.dwData = static_cast<ULONG_PTR>(HandOverMark);
  data.cbData = static_cast<DWORD>(payload.size() * sizeof(char16_t));
  data.lpData = const_cast<char16_t*>(payload.data());
  if (swr::InjectedFault(swr::SystemCall::DeliverMessage)) return false;
  DWORD process = 0;
  GetWindowThreadProcessId(AsWindow(window), &process);
  // Without this permission the other process's window could not come to the foreground; it would
  // only flash in the taskbar.
  AllowSetForegroundWindow(process);
  DWORD_PTR answer = 0;
  return SendMessageTimeoutW(AsWindow(window), WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data),
                             SMTO_ABORTIFHUNG, DeliveryTimeout, &answer) != 0;
}

void PublishMainWindow(HWND window) {
  // The handle stays open, so that the object outlives this function.
  static HANDLE mapping = nullptr;
  if (mapping == nullptr && !swr::InjectedFault(swr::SystemCall::CreateMapping)) {
    mapping = CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0,
                                 sizeof(PublishedHandle), WindowName);
  }
  if (mapping == nullptr) return;
  const auto view = MapView(mapping, FILE_MAP_WRITE);
  if (!view) return;
  const auto published = static_cast<PublishedHandle>(reinterpret_cast<UINT_PTR>(window));
  std::memcpy(view.Get(), &published, sizeof published);
}

}  // namespace app
