#include "tests/kit/registry_copy_win.h"

#include <array>
#include <stdexcept>

#include "swr/system/unique_handle.h"
#include "tests/kit/wide_bytes_win.h"

namespace kit {
namespace {

struct KeyTraits {
  using Value = HKEY;
  static constexpr HKEY Invalid = nullptr;
  static void Close(HKEY key) noexcept { RegCloseKey(key); }
};
using Key = swr::UniqueHandle<KeyTraits>;

constexpr DWORD MaxName = 16384;  // units, with the final null

void Require(LSTATUS status, const char* action) {
  if (status == ERROR_SUCCESS) return;
  throw std::runtime_error(std::string("the registry can't be read: ") + action + ", error " +
                           std::to_string(status));
}

Key Open(HKEY parent, const std::wstring& path, REGSAM rights, LSTATUS& status) {
  HKEY key = nullptr;
  status = RegOpenKeyExW(parent, path.c_str(), 0, rights, &key);
  return Key(status == ERROR_SUCCESS ? key : nullptr);
}

bool Exists(const std::wstring& path) {
  LSTATUS status = 0;
  return static_cast<bool>(Open(HKEY_CURRENT_USER, path, KEY_READ, status));
}

RegistryContent ContentOf(HKEY key) {
  RegistryContent content;
  std::wstring name(MaxName, L'\0');
  for (DWORD i = 0;; ++i) {
    DWORD length = MaxName;
    DWORD type = 0;
    DWORD size = 0;
    LSTATUS status = RegEnumValueW(key, i, name.data(), &length, nullptr, &type, nullptr, &size);
    if (status == ERROR_NO_MORE_ITEMS) break;
    Require(status, "RegEnumValue");
    RegistryValue value = {.name = name.substr(0, length), .bytes = std::string(size, '\0')};
    status = RegQueryValueExW(key, value.name.c_str(), nullptr, &value.type,
                              reinterpret_cast<BYTE*>(value.bytes.data()), &size);
    Require(status, "RegQueryValueEx");
    value.bytes.resize(size);
    content.values.push_back(std::move(value));
  }
  for (DWORD i = 0;; ++i) {
    DWORD length = MaxName;
    const LSTATUS status =
        RegEnumKeyExW(key, i, name.data(), &length, nullptr, nullptr, nullptr, nullptr);
    if (status == ERROR_NO_MORE_ITEMS) break;
    Require(status, "RegEnumKeyEx");
    const std::wstring child = name.substr(0, length);
    LSTATUS opened = 0;
    const Key childKey = Open(key, child, KEY_READ, opened);
    Require(opened, "RegOpenKeyEx");
    content.keys.emplace_back(child, ContentOf(childKey.Get()));
  }
  return content;
}

bool WriteContent(const std::wstring& path, const RegistryContent& content) {
  HKEY made = nullptr;
  if (RegCreateKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, nullptr, 0, KEY_READ | KEY_WRITE, nullptr,
                      &made, nullptr) != ERROR_SUCCESS) {
    return false;
  }
  const Key key(made);
  bool isWritten = true;
  for (const RegistryValue& value : content.values) {
    isWritten &= RegSetValueExW(key.Get(), value.name.c_str(), 0, value.type,
                                reinterpret_cast<const BYTE*>(value.bytes.data()),
                                static_cast<DWORD>(value.bytes.size())) == ERROR_SUCCESS;
  }
  for (const auto& [name, child] : content.keys) {
    isWritten &= WriteContent(path + L"\\" + name, child);
  }
  return isWritten;
}

bool IsEmpty(const std::wstring& path) {
  LSTATUS status = 0;
  const Key key = Open(HKEY_CURRENT_USER, path, KEY_READ, status);
  DWORD keys = 0;
  DWORD values = 0;
  return key &&
         RegQueryInfoKeyW(key.Get(), nullptr, nullptr, nullptr, &keys, nullptr, nullptr, &values,
                          nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS &&
         keys == 0 && values == 0;
}

void Write(RecordWriter& record, const RegistryContent& content) {
  record.AddNumber(content.values.size());
  for (const RegistryValue& value : content.values) {
    record.Add(BytesOf(value.name));
    record.AddNumber(value.type);
    record.Add(value.bytes);
  }
  record.AddNumber(content.keys.size());
  for (const auto& [name, child] : content.keys) {
    record.Add(BytesOf(name));
    Write(record, child);
  }
}

RegistryContent ReadContent(RecordReader& record) {
  RegistryContent content;
  for (uint64_t count = record.NextNumber(); count > 0; --count) {
    RegistryValue value = {.name = WideOf(record.Next())};
    value.type = static_cast<DWORD>(record.NextNumber());
    value.bytes = record.Next();
    content.values.push_back(std::move(value));
  }
  for (uint64_t count = record.NextNumber(); count > 0; --count) {
    std::wstring name = WideOf(record.Next());
    content.keys.emplace_back(std::move(name), ReadContent(record));
  }
  return content;
}

}  // namespace

RegistryCopy CopyKey(const std::wstring& path) {
  RegistryCopy copy = {.path = path};
  LSTATUS status = 0;
  const Key key = Open(HKEY_CURRENT_USER, path, KEY_READ, status);
  if (status == ERROR_FILE_NOT_FOUND) {
    copy.existingLength = path.size();
    do {
      const size_t separator = path.rfind(L'\\', copy.existingLength - 1);
      copy.existingLength = separator == path.npos ? 0 : separator;
    } while (copy.existingLength > 0 && !Exists(path.substr(0, copy.existingLength)));
    return copy;
  }
  Require(status, "RegOpenKeyEx");
  copy.exists = true;
  copy.existingLength = path.size();
  copy.content = ContentOf(key.Get());
  return copy;
}

bool RestoreKey(const RegistryCopy& copy) {
  const LSTATUS deleted = RegDeleteTreeW(HKEY_CURRENT_USER, copy.path.c_str());
  if (deleted != ERROR_SUCCESS && deleted != ERROR_FILE_NOT_FOUND) return false;
  if (copy.exists) return WriteContent(copy.path, copy.content);
  for (size_t length = copy.path.rfind(L'\\');
       length != copy.path.npos && length > copy.existingLength;
       length = copy.path.rfind(L'\\', length - 1)) {
    const std::wstring parent = copy.path.substr(0, length);
    if (!IsEmpty(parent)) break;
    RegDeleteKeyW(HKEY_CURRENT_USER, parent.c_str());
  }
  return true;
}

void Write(RecordWriter& record, const RegistryCopy& copy) {
  record.Add(BytesOf(copy.path));
  record.AddNumber(copy.exists ? 1 : 0);
  record.AddNumber(copy.existingLength);
  Write(record, copy.content);
}

RegistryCopy ReadRegistryCopy(RecordReader& record) {
  RegistryCopy copy = {.path = WideOf(record.Next())};
  copy.exists = record.NextNumber() != 0;
  copy.existingLength = static_cast<size_t>(record.NextNumber());
  copy.content = ReadContent(record);
  return copy;
}

}  // namespace kit
