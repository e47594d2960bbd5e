// A key of the user's registry with all that is below it, kept aside and put back.
#pragma once

#include "swr/system/windows_api_win.h"

#include <string>
#include <utility>
#include <vector>

#include "tests/kit/record_bytes.h"

namespace kit {

struct RegistryValue {
  std::wstring name;
  DWORD type = REG_NONE;
  std::string bytes;
};

struct RegistryContent {
  std::vector<RegistryValue> values;
  std::vector<std::pair<std::wstring, RegistryContent>> keys;
};

// All paths are below HKEY_CURRENT_USER.
struct RegistryCopy {
  std::wstring path;
  bool exists = false;
  RegistryContent content;
  // How many units of `path` name keys that existed; less than all when the key did not.
  size_t existingLength = 0;
};

// Throws std::runtime_error when the key exists and can't be read.
RegistryCopy CopyKey(const std::wstring& path);
// Makes the key what it was when it was copied. A key that did not exist is deleted, and so are
// those above it that did not exist, when nothing else is in them. False when the registry refuses.
bool PutKeyBack(const RegistryCopy& copy);

void Write(RecordWriter& record, const RegistryCopy& copy);
RegistryCopy ReadRegistryCopy(RecordReader& record);

}  // namespace kit
