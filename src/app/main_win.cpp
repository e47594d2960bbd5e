// The program's entry point.
#include "swr/system/windows_api_win.h"

#include <commctrl.h>
#include <objbase.h>
#include <shellapi.h>

#include <cstdlib>
#include <exception>
#include <string>
#include <vector>

#include "app/instance/instance_win.h"
#include "app/window/main_dialog_win.h"
#include "swr/system/handles_win.h"
#include "swr/system/system_library_win.h"
#include "swr/system/wide_text_win.h"

namespace {

// Every argument is a path; there are no options.
std::vector<std::u16string> CommandLinePaths() {
  int count = 0;
  const swr::LocalMemory<wchar_t*> arguments(CommandLineToArgvW(GetCommandLineW(), &count));
  std::vector<std::u16string> paths;
  if (!arguments) return paths;
  for (int i = 1; i < count; ++i) paths.push_back(swr::FromWide(arguments.Get()[i]));
  return paths;
}

// For an uncaught exception. The runtime's own handler shows a message box, whose message loop
// would keep dispatching to a window in an undefined state.
[[noreturn]] void EndAtOnce() {
  RaiseFailFastException(nullptr, nullptr, FAIL_FAST_GENERATE_EXCEPTION_ADDRESS);
  std::abort();
}

}  // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR, int showCommand) {
  std::set_terminate(EndAtOnce);
  swr::UseSystemLibrariesOnly();
  const std::vector<std::u16string> paths = CommandLinePaths();
  app::WindowsInstanceSystem instances;
  if (app::ForwardToFirstInstance(instances, paths)) return 0;
  // The results don't matter: code that needs COM or a control copes without it.
  static_cast<void>(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE));
  const INITCOMMONCONTROLSEX classes = {sizeof classes, ICC_LISTVIEW_CLASSES | ICC_PROGRESS_CLASS |
                                                            ICC_STANDARD_CLASSES | ICC_LINK_CLASS};
  InitCommonControlsEx(&classes);
  const int exitCode = app::RunMainDialog(instance, showCommand, paths);
  CoUninitialize();
  return exitCode;
}
