#include "swr/system/name_bytes.h"

#include "swr/system/text_services.h"

namespace swr {

std::string NameBytes(std::u16string_view name) { return SystemEncodeUtf8(name); }

std::u16string TextFromNameBytes(std::string_view bytes) {
  return SystemIsValidUtf8(bytes) ? SystemDecodeUtf8(bytes) : SystemDecodeAnsi(bytes);
}

}  // namespace swr
