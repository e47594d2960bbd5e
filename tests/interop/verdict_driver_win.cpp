// Drives the real window for scripts that compare it with other tools:
//   verdict_driver.exe SUMWRIGHT.EXE verify LIST...
//       drops each checksum file alone on the window, follows the offer to verify it, and prints
//       a line "list TAB path", one "result TAB sentence", and "row TAB status TAB path" for each
//       row
//   verdict_driver.exe SUMWRIGHT.EXE save ALGORITHMS FORMAT TARGET PATH...
//       adds the paths with this selection of algorithms (a mask) and saves their checksums through
//       the dialog, in the format with this label
// What is printed is UTF-8. Exits with 1 and a message when the window behaves differently.
#include "swr/system/windows_api_win.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <stdexcept>
#include <string>
#include <vector>

#include "resources/resource_ids.h"
#include "swr/paths/path_forms.h"
#include "swr/system/wide_text_win.h"
#include "swr/text/encoding.h"
#include "tests/ui/desktop_state_win.h"
#include "tests/ui/program_dialog_win.h"
#include "tests/ui/running_window_win.h"

namespace app::testing {
namespace {

void Print(const std::vector<std::u16string>& fields) {
  std::u16string line;
  for (const std::u16string& field : fields) line += (line.empty() ? u"" : u"\t") + field;
  std::printf("%s\n", swr::WideToUtf8(line).c_str());
}

void Verify(const std::vector<std::u16string>& lists) {
  const RunningWindow window;
  for (const std::u16string& list : lists) {
    window.Command(ID_CLEAR_LIST);
    window.Drop({list});
    if (!window.IsShown(IDC_BANNER))
      throw std::runtime_error(swr::WideToUtf8(list) + ": not offered");
    window.FollowBannerLink(AcceptLink);
    // The row of the list is replaced by the rows of its files.
    const bool isLoaded = WaitFor([&] {
      const std::u16string name(swr::SplitPath(list).name);
      return window.RowCount() > 0 && window.Row(0)[0] != name;
    });
    if (!isLoaded) throw std::runtime_error(swr::WideToUtf8(list) + ": not loaded");
    window.WaitUntilIdle();
    if (!WaitFor([&] { return !window.Text(IDC_RESULT).starts_with(u"Verifying"); })) {
      throw std::runtime_error("the verification did not end");
    }
    Print({u"list", list});
    Print({u"result", window.Text(IDC_RESULT)});
    const auto names = window.Column(u"Name");
    const auto folders = window.Column(u"Folder");
    const auto statuses = window.Column(u"Status");
    for (size_t i = 0; i < names.size(); ++i) {
      Print({u"row", statuses[i], swr::JoinPath(folders[i], names[i])});
    }
  }
}

void Save(uint32_t algorithms, const std::u16string& format, const std::u16string& target,
          const std::vector<std::u16string>& paths) {
  DeleteSettings();
  WriteSetting(u"Algorithms", algorithms);
  const RunningWindow window({.keepSettings = true});
  window.Drop(paths);
  window.WaitUntilIdle();
  window.PostCommand(ID_SAVE_CHECKSUMS);
  const ProgramDialog dialog(window, u"Save Checksums");
  const std::vector<std::u16string> formats = dialog.FileTypes();
  const auto found = std::ranges::find(formats, format);
  if (found == formats.end()) throw std::runtime_error("the format is not offered");
  dialog.ChooseFileType(static_cast<int>(found - formats.begin()));
  dialog.SetFileName(target);
  dialog.Press(IDOK);
}

int Run(const std::vector<std::u16string>& arguments) {
  if (arguments.size() < 4)
    throw std::runtime_error("usage: verdict_driver SUMWRIGHT.EXE COMMAND FILE...");
  SetProgramPath(swr::WideToUtf8(arguments[1]));
  const std::u16string& command = arguments[2];
  if (command == u"verify") {
    Verify({arguments.begin() + 3, arguments.end()});
  } else if (command == u"save" && arguments.size() >= 7) {
    const std::string mask = swr::WideToUtf8(arguments[3]);
    Save(static_cast<uint32_t>(std::stoul(mask)), arguments[4], arguments[5],
         {arguments.begin() + 6, arguments.end()});
  } else {
    throw std::runtime_error("unknown command");
  }
  return 0;
}

}  // namespace
}  // namespace app::testing

int wmain(int count, wchar_t** values) {
  std::vector<std::u16string> arguments;
  for (int i = 0; i < count; ++i) arguments.push_back(swr::FromWide(values[i]));
  try {
    return app::testing::Run(arguments);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "verdict_driver: %s\n", error.what());
    return 1;
  }
}
