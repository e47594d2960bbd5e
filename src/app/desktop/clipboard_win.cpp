#include "app/desktop/clipboard_win.h"

#include <algorithm>
#include <string_view>
#include <utility>

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

// A text that grows in memory of the kind that the clipboard accepts.
class ClipboardMemory {
 public:
  explicit ClipboardMemory(size_t likelySize)
      : memory_(GlobalAlloc(GMEM_MOVEABLE, BytesFor(likelySize))), capacity_(likelySize) {}

  // Does nothing any more once there was too little memory.
  void Append(std::u16string_view text) {
    if (size_ + text.size() > capacity_) Resize(std::max(size_ + text.size(), 2 * capacity_));
    CopyToEnd(text);
    size_ += text.size();
  }

  // The text with a terminating null; nothing if there was too little memory.
  swr::GlobalMemory Take() {
    if (size_ < capacity_) Resize(size_);
    CopyToEnd({u"", 1});
    return std::move(memory_);
  }

 private:
  static size_t BytesFor(size_t units) { return (units + 1) * sizeof(char16_t); }

  void CopyToEnd(std::u16string_view text) {
    if (!memory_) return;
    auto* data = static_cast<char16_t*>(GlobalLock(memory_.Get()));
    if (data == nullptr) return memory_.Reset();
    std::ranges::copy(text, data + size_);
    GlobalUnlock(memory_.Get());
  }

  void Resize(size_t capacity) {
    if (!memory_) return;
    const HGLOBAL resized = GlobalReAlloc(memory_.Get(), BytesFor(capacity), GMEM_MOVEABLE);
    if (resized == nullptr) return memory_.Reset();
    static_cast<void>(memory_.Release());
    memory_.Reset(resized);
    capacity_ = capacity;
  }

  swr::GlobalMemory memory_;
  size_t capacity_;  // in units, without the terminating null
  size_t size_ = 0;
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

void WriteClipboardText(HWND owner, const TextInParts& text) {
  ClipboardMemory written(text.likelySize);
  text.write([&](std::u16string_view part) { written.Append(part); });
  swr::GlobalMemory memory = written.Take();
  if (!memory) return;
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

void WindowsClipboard::WriteClipboardText(const TextInParts& text) {
  app::WriteClipboardText(owner_, text);
}

}  // namespace app
