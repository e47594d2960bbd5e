// The desktop services of Windows, for one window.
#pragma once

#include "swr/system/windows_api_win.h"

#include "app/desktop/clipboard_win.h"
#include "app/desktop/desktop.h"
#include "app/desktop/file_pickers_win.h"
#include "app/desktop/registry_settings_win.h"
#include "app/desktop/shell_win.h"
#include "app/desktop/signature_thread_win.h"
#include "app/desktop/task_dialog_win.h"

namespace app {

class WindowsDesktop {
 public:
  // `window` becomes the owner of dialogs. Finished signature checks post `signatureMessage` to it.
  void Attach(HWND window, UINT signatureMessage) {
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
            .signatures = signatures_};
  }

 private:
  FilePickers pickers_;
  TaskDialogs messages_;
  WindowsClipboard clipboard_;
  WindowsShell shell_;
  RegistrySettings settings_;
  SignatureThreads signatures_;
};

}  // namespace app
