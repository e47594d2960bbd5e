// Saves and restores a key of the user's registry with everything below it.
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
  // The length of the part of `path` that names existing keys, in units; shorter than `path` when
  // the key did not exist.
  size_t existingLength = 0;
};

// Throws std::runtime_error when the key exists and can't be read.
RegistryCopy CopyKey(const std::wstring& path);
// Restores the key to its saved state. If it did not exist, deletes it, and those parents that did
// not exist and are now empty. False when the registry refuses.
bool RestoreKey(const RegistryCopy& copy);

void Write(RecordWriter& record, const RegistryCopy& copy);
RegistryCopy ReadRegistryCopy(RecordReader& record);

}  // namespace kit
