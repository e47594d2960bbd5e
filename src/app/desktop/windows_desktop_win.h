// The desktop services of Windows, for one window.
#pragma once

#include "swr/system/windows_api_win.h"

#include "app/desktop/clipboard_win.h"
#include "app/desktop/desktop.h"
#include "app/desktop/file_pickers_win.h"
#include "app/desktop/origin_threads.h"
#include "app/desktop/registry_settings_win.h"
#include "app/desktop/shell_win.h"
#include "app/desktop/signature_thread_win.h"
#include "app/desktop/task_dialog_win.h"
#include "swr/provenance/zone_record.h"

namespace app {

class WindowsDesktop {
 public:
  // `window` becomes the owner of dialogs. Finished signature checks post `signatureMessage` to it,
  // late download origins `originMessage`.
  void Attach(HWND window, UINT signatureMessage, UINT originMessage) {
    window_ = window;
    originMessage_ = originMessage;
    pickers_.Attach(window);
    messages_.Attach(window);
    clipboard_.Attach(window);
    shell_.Attach(window);
    signatures_.Attach(window, signatureMessage);
  }
  Desktop Services() {
    return {.pickers = pickers_,
            .messages = messages_,
            .clipboard = clipboard_,
            .shell = shell_,
            .settings = settings_,
            .signatures = signatures_,
            .origins = origins_};
  }

 private:
  HWND window_ = nullptr;
  UINT originMessage_ = 0;
  FilePickers pickers_;
  TaskDialogs messages_;
  WindowsClipboard clipboard_;
  WindowsShell shell_;
  RegistrySettings settings_;
  SignatureThreads signatures_;
  OriginThreads origins_{swr::ReadZoneRecord,
                         [this] { PostMessageW(window_, originMessage_, 0, 0); }};
};

}  // namespace app
