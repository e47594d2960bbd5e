#include "swr/system/name_bytes.h"

#include "swr/system/path_bytes_posix.h"

namespace swr {

std::string NameBytes(std::u16string_view name) { return PathBytesFromText(name); }

std::u16string TextFromNameBytes(std::string_view bytes) { return PathTextFromBytes(bytes); }

}  // namespace swr
