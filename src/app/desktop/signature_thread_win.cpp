#include "app/desktop/signature_thread_win.h"

#include <memory>
#include <thread>

namespace app {

void SignatureThreads::StartSignatureCheck(uint64_t rowId, const std::u16string& path) {
  std::thread([window = window_, message = message_, rowId, path] {
    auto record = std::make_unique<SignatureMessage>();
    record->rowId = rowId;
    record->result = swr::CheckSignature(path);
    const auto parameter = reinterpret_cast<LPARAM>(record.get());
    if (PostMessageW(window, message, 0, parameter)) static_cast<void>(record.release());
  }).detach();
}

}  // namespace app
