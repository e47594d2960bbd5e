#include "swr/system/standard_stream.h"

#include "swr/system/windows_api_win.h"

#include <algorithm>
#include <string>

#include "swr/system/error_codes.h"
#include "swr/system/fault_injection.h"
#include "swr/system/text_services.h"
#include "swr/system/wide_text_win.h"

namespace swr {
namespace {

HANDLE HandleOf(StandardStream stream) {
  return GetStdHandle(stream == StandardStream::Output ? STD_OUTPUT_HANDLE : STD_ERROR_HANDLE);
}

bool IsConsole(HANDLE handle) {
  DWORD mode = 0;
  return GetConsoleMode(handle, &mode) != FALSE;
}

// The console accepts a limited number of characters per call.
constexpr size_t LongestConsoleWrite = 8192;

uint32_t WriteConsoleText(HANDLE console, const std::u16string& text) {
  for (size_t done = 0; done < text.size();) {
    size_t size = std::min(text.size() - done, LongestConsoleWrite);
    const bool splitsPair = done + size < text.size() && text[done + size - 1] >= 0xD800 &&
                            text[done + size - 1] < 0xDC00;
    if (splitsPair) --size;
    DWORD written = 0;
    if (!WriteConsoleW(console, AsWide(std::u16string_view(text).substr(done)),
                       static_cast<DWORD>(size), &written, nullptr)) {
      return GetLastError();
    }
    if (written == 0) return ErrorIoDevice;
    done += written;
  }
  return 0;
}

}  // namespace

bool IsTerminal(StandardStream stream) { return IsConsole(HandleOf(stream)); }

bool IsInputTerminal() { return IsConsole(GetStdHandle(STD_INPUT_HANDLE)); }

uint32_t TerminalWidth(StandardStream stream) {
  CONSOLE_SCREEN_BUFFER_INFO info = {};
  constexpr uint32_t defaultWidth = 80;
  if (!GetConsoleScreenBufferInfo(HandleOf(stream), &info)) return defaultWidth;
  const int width = info.srWindow.Right - info.srWindow.Left + 1;
  return width > 0 ? static_cast<uint32_t>(width) : defaultWidth;
}

bool EnableColors(StandardStream stream) {
  const HANDLE console = HandleOf(stream);
  DWORD mode = 0;
  // Fails on consoles before Windows 10.
  return GetConsoleMode(console, &mode) &&
         SetConsoleMode(console, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
}

uint32_t WriteStandard(StandardStream stream, std::string_view text) {
  const HANDLE handle = HandleOf(stream);
  if (const auto fault = InjectedFault(SystemCall::WriteStream)) return *fault;
  if (handle == nullptr || handle == INVALID_HANDLE_VALUE) return ErrorInvalidHandle;
  if (IsConsole(handle)) return WriteConsoleText(handle, SystemDecodeUtf8(text));
  constexpr size_t longestPiece = 0x40000000;
  while (!text.empty()) {
    DWORD written = 0;
    const auto size = static_cast<DWORD>(std::min(text.size(), longestPiece));
    if (!WriteFile(handle, text.data(), size, &written, nullptr)) {
      const DWORD error = GetLastError();
      // When the reader has closed the pipe, the writer gets 232 (no data).
      return error == ERROR_NO_DATA ? ErrorBrokenPipe : error;
    }
    if (written == 0) return ErrorDiskFull;
    text.remove_prefix(written);
  }
  return 0;
}

}  // namespace swr
