#include "tests/support/temp_tree.h"

#include <cstdio>
#include <exception>
#include <stdexcept>

#include "swr/paths/path_forms.h"
#include "swr/text/encoding.h"
#include "tests/support/temp_tree_system.h"

namespace swr::testing {

TempTree::TempTree() : root_(MakeUniqueFolder()) {}

TempTree::~TempTree() {
  try {
    RemoveTree(root_);
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "%s\n", failure.what());
  }
}

std::u16string TempTree::Path(std::u16string_view relative) const {
  std::u16string path = root_;
  while (!relative.empty()) {
    const size_t end = relative.find(u'/');
    path = JoinPath(path, relative.substr(0, end));
    relative.remove_prefix(end == relative.npos ? relative.size() : end + 1);
  }
  return path;
}

std::u16string TempTree::AddFolder(std::u16string_view relative) {
  for (size_t end = 0; end != relative.npos;) {
    end = relative.find(u'/', end + 1);
    MakeFolder(Path(relative.substr(0, end)));
  }
  return Path(relative);
}

std::u16string TempTree::AddFile(std::u16string_view relative, std::string_view bytes) {
  const size_t separator = relative.rfind(u'/');
  if (separator != relative.npos) AddFolder(relative.substr(0, separator));
  std::u16string path = Path(relative);
  WriteBytes(path, bytes);
  return path;
}

FileTime ModifiedTime(const std::u16string& path) {
  uint32_t error = 0;
  const auto info = QueryFileInfo(ToLongPath(path), error);
  if (!info) ThrowFailure("QueryFileInfo", path, static_cast<long>(error));
  return info->modified;
}

std::string CountingBytes(size_t size) {
  std::string bytes(size, '\0');
  for (size_t i = 0; i < size; ++i) bytes[i] = static_cast<char>(i % 251);
  return bytes;
}

std::u16string AddFileWithLongPath(TempTree& tree, size_t units, std::string_view bytes) {
  std::u16string relative = u"long";
  while (tree.Root().size() + relative.size() < units) {
    relative += u'/';
    relative += std::u16string(120, u'n');
  }
  return tree.AddFile(relative + u"/file", bytes);
}

void ThrowFailure(std::string_view action, const std::u16string& path, long code) {
  throw std::runtime_error(std::string(action) + " failed with " + std::to_string(code) + " on " +
                           WideToUtf8(path));
}

}  // namespace swr::testing
