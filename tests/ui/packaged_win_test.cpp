// A copy of the program that runs from a package of the system's store. The package itself
// registers the shell entries, so the program neither offers nor repairs any.
#include "swr/system/windows_api_win.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "resources/resource_ids.h"
#include "tests/ui/running_window_win.h"
#include "tests/ui/shell_state_win.h"

namespace app::testing {
namespace {

constexpr int OptionsMenu = 2;
constexpr char16_t FileEntry[] = u"Software\\Classes\\*\\shell\\ZendrikSumwright";

using Items = std::vector<std::pair<uint32_t, std::u16string>>;

Items ItemsOf(const RunningWindow& window, int menu) {
  Items items;
  for (const MenuItem& item : window.Menu(menu)) items.emplace_back(item.id, item.text);
  return items;
}

const Items PackagedOptions = {{ID_UPPERCASE, u"&Uppercase Hashes"},
                               {ID_SHOW_LEGACY, u"Show &Legacy Algorithms (MD2, MD4)"},
                               {ID_INCLUDE_HIDDEN, u"Include &Hidden and System Files"},
                               {ID_CRLF, u"&Windows Line Ends in Saved Files"}};

TEST(PackagedTest, TheOptionsMenuHasNoShellEntries) {
  const RunningWindow window({.fromPackage = true});
  EXPECT_EQ(ItemsOf(window, OptionsMenu), PackagedOptions) << "and with no separator";
  window.Command(ID_CRLF);
  EXPECT_TRUE(window.Menu(OptionsMenu).back().isChecked);
  window.Command(ID_UPPERCASE);
  EXPECT_TRUE(window.Menu(OptionsMenu).front().isChecked);
  EXPECT_EQ(ItemsOf(window, OptionsMenu), PackagedOptions);
}

TEST(PackagedTest, TheOtherMenusAreTheUsualOnes) {
  std::vector<Items> menus;
  {
    const RunningWindow window;
    for (const int menu : {0, 1, 3}) menus.push_back(ItemsOf(window, menu));
  }
  const RunningWindow window({.fromPackage = true});
  size_t i = 0;
  for (const int menu : {0, 1, 3}) EXPECT_EQ(ItemsOf(window, menu), menus[i++]);
}

TEST(PackagedTest, AStaleEntryIsLeftAlone) {
  SetRegistryText(HKEY_CURRENT_USER, std::u16string(FileEntry) + u"\\command", u"",
                  u"\"C:\\gone\\Sumwright.exe\" \"%1\"");
  {
    const RunningWindow window;
    EXPECT_TRUE(window.IsShown(IDC_BANNER)) << "any other copy shows the banner";
  }
  {
    const RunningWindow window({.fromPackage = true});
    EXPECT_FALSE(window.IsShown(IDC_BANNER));
    EXPECT_EQ(ItemsOf(window, OptionsMenu), PackagedOptions);
  }
  DeleteRegistryKey(HKEY_CURRENT_USER, FileEntry);
}

}  // namespace
}  // namespace app::testing
