#include "app/desktop/signature_thread_win.h"

#include <memory>

#include "swr/system/detached_thread.h"

namespace app {

bool SignatureThreads::StartSignatureCheck(uint64_t rowId, const std::u16string& path) {
  return swr::StartDetachedThread([window = window_, message = message_, rowId, path] {
    auto record = std::make_unique<SignatureMessage>();
    record->rowId = rowId;
    record->result = swr::CheckSignature(path);
    const auto parameter = reinterpret_cast<LPARAM>(record.get());
    if (PostMessageW(window, message, 0, parameter)) static_cast<void>(record.release());
  });
}

}  // namespace app
