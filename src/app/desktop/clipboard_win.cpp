#include "app/desktop/clipboard_win.h"

#include <algorithm>

#include "swr/system/handles_win.h"
#include "swr/system/wide_text_win.h"

namespace app {
namespace {

// Keeps the clipboard open for its own lifetime, if it could be opened.
class OpenedClipboard {
 public:
  explicit OpenedClipboard(HWND owner) : isOpen_(OpenClipboard(owner) != FALSE) {}
  ~OpenedClipboard() {
    if (isOpen_) CloseClipboard();
  }
  OpenedClipboard(const OpenedClipboard&) = delete;
  OpenedClipboard& operator=(const OpenedClipboard&) = delete;
  explicit operator bool() const { return isOpen_; }

 private:
  bool isOpen_;
};

}  // namespace

std::optional<std::u16string> ReadClipboardText(HWND owner) {
  if (!IsClipboardFormatAvailable(CF_UNICODETEXT)) return std::nullopt;
  const OpenedClipboard clipboard(owner);
  if (!clipboard) return std::nullopt;
  const HANDLE memory = GetClipboardData(CF_UNICODETEXT);
  if (memory == nullptr) return std::nullopt;
  const auto* data = static_cast<const wchar_t*>(GlobalLock(memory));
  if (data == nullptr) return std::nullopt;
  // Some programs omit the terminating null.
  const size_t capacity = GlobalSize(memory) / sizeof(wchar_t);
  std::u16string text = swr::FromWide({data, std::find(data, data + capacity, L'\0')});
  GlobalUnlock(memory);
  return text;
}

void WriteClipboardText(HWND owner, const std::u16string& text) {
  swr::GlobalMemory memory(GlobalAlloc(GMEM_MOVEABLE, (text.size() + 1) * sizeof(wchar_t)));
  if (!memory) return;
  auto* data = static_cast<wchar_t*>(GlobalLock(memory.Get()));
  if (data == nullptr) return;
  *std::ranges::copy(text, data).out = L'\0';
  GlobalUnlock(memory.Get());
  const OpenedClipboard clipboard(owner);
  if (!clipboard) return;
  EmptyClipboard();
  // On success the clipboard owns the memory.
  if (SetClipboardData(CF_UNICODETEXT, memory.Get()) != nullptr) {
    static_cast<void>(memory.Release());
  }
}

uint32_t WindowsClipboard::ClipboardSequence() { return GetClipboardSequenceNumber(); }

std::optional<std::u16string> WindowsClipboard::ReadClipboardText() {
  return app::ReadClipboardText(owner_);
}

void WindowsClipboard::WriteClipboardText(const std::u16string& text) {
  app::WriteClipboardText(owner_, text);
}

}  // namespace app
