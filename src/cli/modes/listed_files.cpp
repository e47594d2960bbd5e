#include "cli/modes/listed_files.h"

#include "swr/checksums/name_escape.h"
#include "swr/system/full_path.h"
#include "swr/system/name_bytes.h"
#include "swr/text/encoding.h"
#include "swr/text/text.h"

namespace cli {

std::string ListedName(const Console& console, std::u16string_view name) {
  const std::u16string shown = console.NameForOut(name);
  const bool isEscaped = swr::NameNeedsEscape(shown);
  const std::u16string text = isEscaped ? u"\\" + swr::EscapeName(shown) : shown;
  return console.OutIsTerminal() ? swr::WideToUtf8(text) : swr::NameBytes(text);
}

std::u16string PathIdentity(const std::u16string& path) {
  std::u16string full = swr::SystemFullPath(path).value_or(path);
  return swr::NativePathStyle == swr::PathStyle::Windows ? swr::ToLowerText(full) : full;
}

}  // namespace cli
