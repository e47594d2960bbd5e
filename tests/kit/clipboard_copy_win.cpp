#include "tests/kit/clipboard_copy_win.h"

#include <wincrypt.h>

#include <array>
#include <cstring>
#include <stdexcept>

#include "tests/kit/wide_bytes_win.h"

namespace kit {
namespace {

// A format with more data than this is skipped, so that nobody waits for a gigabyte.
constexpr size_t MaxForm = size_t{64} << 20;
constexpr UINT FirstRegistered = 0xC000;

class OpenedClipboard {
 public:
  // The window becomes the clipboard owner; some programs expect one.
  explicit OpenedClipboard(HWND owner) {
    constexpr int attempts = 100;
    for (int i = 0; i < attempts && !isOpen_; ++i) {
      isOpen_ = OpenClipboard(owner) != FALSE;
      if (!isOpen_) Sleep(50);
    }
  }
  ~OpenedClipboard() {
    if (isOpen_) CloseClipboard();
  }
  OpenedClipboard(const OpenedClipboard&) = delete;
  OpenedClipboard& operator=(const OpenedClipboard&) = delete;

  bool IsOpen() const { return isOpen_; }

 private:
  bool isOpen_ = false;
};

bool IsPlainMemory(UINT format) {
  switch (format) {
    case CF_BITMAP:
    case CF_METAFILEPICT:
    case CF_PALETTE:
    case CF_ENHMETAFILE:
    case CF_OWNERDISPLAY:
    case CF_DSPTEXT:
    case CF_DSPBITMAP:
    case CF_DSPMETAFILEPICT:
    case CF_DSPENHMETAFILE:
      return false;
    default:
      // The formats in between are handles that only one program can use.
      return format < CF_PRIVATEFIRST || format >= FirstRegistered;
  }
}

std::wstring NameOf(UINT format) {
  if (format < FirstRegistered) return {};
  std::array<wchar_t, 256> name;
  const int length = GetClipboardFormatNameW(format, name.data(), name.size());
  return {name.data(), static_cast<size_t>(length)};
}

bool PutForm(const ClipboardForm& form) {
  const UINT format = form.name.empty() ? form.format : RegisterClipboardFormatW(form.name.c_str());
  const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, form.bytes.size());
  if (memory == nullptr) return false;
  std::memcpy(GlobalLock(memory), form.bytes.data(), form.bytes.size());
  GlobalUnlock(memory);
  if (SetClipboardData(format, memory) != nullptr) return true;  // the system owns the memory now
  GlobalFree(memory);
  return false;
}

std::string Crypted(std::string bytes, bool protects) {
  DATA_BLOB from = {static_cast<DWORD>(bytes.size()), reinterpret_cast<BYTE*>(bytes.data())};
  DATA_BLOB to = {};
  const BOOL done = protects ? CryptProtectData(&from, L"Sumwright test kit", nullptr, nullptr,
                                                nullptr, CRYPTPROTECT_UI_FORBIDDEN, &to)
                             : CryptUnprotectData(&from, nullptr, nullptr, nullptr, nullptr,
                                                  CRYPTPROTECT_UI_FORBIDDEN, &to);
  if (!done) throw std::runtime_error("the clipboard's content can't be encrypted or decrypted");
  std::string result(reinterpret_cast<char*>(to.pbData), to.cbData);
  LocalFree(to.pbData);
  return result;
}

}  // namespace

ClipboardCopy CopyClipboard() {
  ClipboardCopy copy;
  const OpenedClipboard clipboard(nullptr);
  if (!clipboard.IsOpen()) throw std::runtime_error("the clipboard is held by another program");
  for (UINT format = 0; (format = EnumClipboardFormats(format)) != 0;) {
    if (!IsPlainMemory(format)) continue;
    const HANDLE memory = GetClipboardData(format);
    const size_t size = memory == nullptr ? 0 : GlobalSize(memory);
    if (size == 0 || size > MaxForm) continue;
    const auto* const bytes = static_cast<const char*>(GlobalLock(memory));
    if (bytes == nullptr) continue;
    copy.forms.push_back({format, NameOf(format), std::string(bytes, size)});
    GlobalUnlock(memory);
  }
  return copy;
}

bool RestoreClipboard(const ClipboardCopy& copy) {
  const HWND owner =
      CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
  bool isBack = false;
  {
    const OpenedClipboard clipboard(owner);
    isBack = clipboard.IsOpen() && EmptyClipboard();
    for (const ClipboardForm& form : copy.forms) isBack = isBack && PutForm(form);
  }
  if (owner != nullptr) DestroyWindow(owner);
  return isBack;
}

void Write(RecordWriter& record, const ClipboardCopy& copy) {
  RecordWriter content;
  content.AddNumber(copy.forms.size());
  for (const ClipboardForm& form : copy.forms) {
    content.AddNumber(form.format);
    content.Add(BytesOf(form.name));
    content.Add(form.bytes);
  }
  record.Add(Crypted(content.Bytes(), true));
}

ClipboardCopy ReadClipboardCopy(RecordReader& record) {
  const std::string bytes = Crypted(record.Next(), false);
  RecordReader content(bytes);
  ClipboardCopy copy;
  for (uint64_t count = content.NextNumber(); count > 0; --count) {
    ClipboardForm form = {.format = static_cast<UINT>(content.NextNumber())};
    form.name = WideOf(content.Next());
    form.bytes = content.Next();
    copy.forms.push_back(std::move(form));
  }
  return copy;
}

}  // namespace kit
