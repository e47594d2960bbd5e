// Resolves names in checksum files. The input is the path of the checksum file, a line feed and the
// listed name.
#include "fuzz/fuzz_input.h"
#include "fuzz/require.h"
#include "swr/checksums/listed_path.h"
#include "swr/paths/path_forms.h"
#include "swr/text/text.h"

namespace {

void RequireSound(std::u16string_view file, std::u16string_view name, swr::PathStyle style) {
  using fuzz::Require;
  const bool isWindows = style == swr::PathStyle::Windows;
  const std::u16string path = swr::ResolveListedPath(file, name, style);
  Require(path.ends_with(isWindows ? path.substr(path.size() - name.size()) : std::u16string(name)),
          "the path ends with the name");
  const bool isRooted = name.starts_with(u'/') || (isWindows && name.starts_with(u'\\'));
  const bool hasDrive = isWindows && name.size() >= 2 && name[1] == u':';
  if (isRooted || hasDrive) return;
  const size_t separator = file.find_last_of(u"\\/");
  const std::u16string_view folder = file.substr(0, separator == file.npos ? 0 : separator + 1);
  Require(path.starts_with(folder), "a relative name is in the folder of its checksum file");
  Require(path.size() == folder.size() + name.size(), "nothing is added to the name");
}

// A name that was saved relative to a folder resolves to the same path.
void RequireRoundTrip(std::u16string_view file, std::u16string_view name) {
  const std::u16string_view folder = swr::SplitPath(file).folder;
  if (folder.empty() || folder.find(u'/') != folder.npos || folder.ends_with(u'\\')) return;
  std::u16string path(folder);
  path += u'\\';
  path += name;
  const std::u16string listed = swr::ToForwardSlashes(
      swr::MakeRelativePath(folder, path, swr::PathStyle::Windows), swr::PathStyle::Windows);
  std::u16string list(folder);
  list += u"\\list.md5";
  fuzz::Require(swr::ResolveListedPath(list, listed, swr::PathStyle::Windows) == path,
                "a saved name resolves to its file");
}

// Whether this can be the name of a file below a folder on Windows.
bool IsPlainName(std::u16string_view name) {
  return !name.empty() && name.find_first_of(u"/:") == name.npos && !name.starts_with(u'\\');
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::u16string text = fuzz::TextOf(data, size);
  const size_t end = text.find(u'\n');
  const std::u16string_view file = std::u16string_view(text).substr(0, end);
  const std::u16string_view name =
      end == text.npos ? std::u16string_view() : std::u16string_view(text).substr(end + 1);
  for (const swr::PathStyle style : {swr::PathStyle::Windows, swr::PathStyle::Posix}) {
    RequireSound(file, name, style);
  }
  if (IsPlainName(name)) RequireRoundTrip(file, name);
  return 0;
}
