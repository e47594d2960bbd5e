#include "app/desktop/signature_thread_win.h"

#include <memory>
#include <thread>

namespace app {

void StartSignatureThread(HWND window, UINT message, uint64_t rowId, const std::u16string& path) {
  std::thread([=] {
    auto record = std::make_unique<SignatureMessage>();
    record->rowId = rowId;
    record->result = swr::CheckSignature(path);
    const auto parameter = reinterpret_cast<LPARAM>(record.get());
    if (PostMessageW(window, message, 0, parameter)) static_cast<void>(record.release());
  }).detach();
}

}  // namespace app
