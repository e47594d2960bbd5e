// Planted libraries: files in the program's folder that have the names of Windows' libraries.
#include "swr/system/windows_api_win.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "resources/resource_ids.h"
#include "swr/system/wide_text_win.h"
#include "swr/text/encoding.h"
#include "tests/kit/kit_environment.h"
#include "tests/support/system_command_win.h"
#include "tests/support/temp_tree.h"
#include "tests/support/wine_win.h"
#include "tests/ui/program_dialog_win.h"
#include "tests/ui/running_window_win.h"

namespace app::testing {
namespace {

using swr::AsWide;
using swr::testing::TempTree;
using Names = std::vector<std::u16string>;

// Libraries that the program calls, and libraries that Windows loads when they are first called.
Names PlantedNames() {
  Names names = {u"apphelp",  u"bcrypt",    u"bcryptprimitives", u"comdlg32",
                 u"crypt32",  u"cryptbase", u"dwmapi",           u"edputil",
                 u"linkinfo", u"msasn1",    u"ntmarta",          u"ntshrui",
                 u"profapi",  u"propsys",   u"secur32",          u"textshaping",
                 u"userenv",  u"winmm",     u"wintrust"};
  // Wine's common controls load these two from anywhere, before the program can prevent it.
  if (!swr::testing::IsWine()) names.insert(names.end(), {u"uxtheme", u"version"});
  return names;
}

class PlantedLibrariesTest : public ::testing::Test {
 protected:
  PlantedLibrariesTest() {
    folder_ = tree_.AddFolder(u"Downloads");
    for (const std::u16string& name : PlantedNames()) {
      Copy(BesideTheTests(u"planted_library.dll"), name + u".dll");
    }
  }

  std::u16string Copy(const std::u16string& from, const std::u16string& name) {
    const std::u16string to = folder_ + u"\\" + name;
    EXPECT_TRUE(CopyFileW(AsWide(from), AsWide(to), FALSE)) << swr::WideToUtf8(from);
    return to;
  }
  // The planted libraries that a process has loaded; each creates a marker file.
  Names LoadedOnes() const {
    Names loaded;
    for (const std::u16string& name : PlantedNames()) {
      const std::u16string mark = folder_ + u"\\" + name + u".dll.loaded";
      if (DeleteFileW(AsWide(mark))) loaded.push_back(name);
    }
    return loaded;
  }

  TempTree tree_;
  std::u16string folder_;
};

TEST_F(PlantedLibrariesTest, TheProgramLoadsNoneOfThem) {
  // The test finds the libraries in a program without protection.
  const std::u16string unprotected =
      Copy(BesideTheTests(u"unprotected_program.exe"), u"unprotected_program.exe");
  std::wstring line = L"\"" + std::wstring(AsWide(unprotected)) + L"\"";
  for (const std::u16string& name : PlantedNames()) {
    line += std::wstring(L" ") + AsWide(name) + L".dll";
  }
  swr::testing::RunSystemCommand(line);
  const Names found = LoadedOnes();
  ASSERT_FALSE(found.empty()) << "an unprotected program loads planted libraries";

  const std::u16string program = Copy(ProgramUnderTest(), u"Sumwright.exe");
  const std::u16string file = tree_.AddFile(u"files/some.exe", "content");
  {
    RunningWindow window({.program = program});
    window.Drop({file, program});
    window.WaitUntilIdle();
    for (const int row : {0, 1}) {
      window.SelectOnly({row});
      EXPECT_TRUE(WaitFor(
          [&] { return window.Text(IDC_DETAILS).find(u"Checking...") == std::u16string::npos; }));
    }
    window.PostCommand(ID_HASH_TEXT);
    ProgramDialog(window, u"Hash Text").Press(IDCANCEL);
    window.PostCommand(ID_ABOUT);
    ProgramDialog(window, u"About Sumwright").Press(IDOK);
    window.PostCommand(ID_SAVE_CHECKSUMS);
    ProgramDialog(window, u"Save Checksums").Press(IDCANCEL);
    EXPECT_EQ(window.Close(), 0);
  }
  EXPECT_EQ(LoadedOnes(), Names{});
}

}  // namespace
}  // namespace app::testing
