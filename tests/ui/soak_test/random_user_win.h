// Uses the window at random, without waiting for it, and informs the model of each action.
#pragma once

#include <atomic>
#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tests/ui/running_window_win.h"
#include "tests/ui/slow_import_win.h"
#include "tests/ui/soak_test/comparison.h"
#include "tests/ui/soak_test/dice.h"
#include "tests/ui/soak_test/file_world_win.h"
#include "tests/ui/soak_test/window_model.h"

namespace app::testing {

class RandomUser {
 public:
  // All must outlive the object.
  RandomUser(Dice& dice, FileWorld& world, const RunningWindow& window);
  RandomUser(const RandomUser&) = delete;
  RandomUser& operator=(const RandomUser&) = delete;

  // Performs a random action and returns a description of it. Throws Disagreement when the window
  // is in a wrong state, and std::runtime_error when it does not answer.
  std::string Act();
  // Performs the action with this index.
  std::string Act(size_t kind);
  static size_t KindCount();
  // Waits until the window is idle and compares everything. Returns the number of rows.
  size_t CompareAll();
  // Drops all files but the crowd.
  void FillList();
  // Clears the list, waits until that is done, and gives the window a fixed size.
  void ClearAll();

  // How often each action was performed.
  const std::map<std::string, size_t>& Counts() const { return counts_; }
  // The current or last action. May be called on any thread.
  const char* Doing() const { return doing_; }

 private:
  struct Kind {
    const char* name;
    size_t weight;
    std::string (RandomUser::*act)();
  };
  static const std::vector<Kind>& Kinds();

  // user_list_win.cpp: adding and removing rows.
  std::string DropFiles();
  std::string DropFolder();
  std::string DropCrowd();
  std::string DropSlowFolder();
  std::string DropList();
  std::string PickFiles();
  std::string PickList();
  std::string StartAgain();
  std::string RemoveSome();
  std::string RemoveAll();
  std::string Cancel();
  std::string Clear();
  void StartWith(size_t processes);
  void ExpectRejectedList(size_t list);
  std::vector<size_t> SomeFiles(size_t most);
  std::optional<size_t> UnusedList();

  // user_choices_win.cpp: selecting algorithms, comparing, sorting.
  std::string Sort();
  std::string ClickAlgoBox();
  std::string ChooseAlgo();
  std::string EditBox();
  std::string Paste();
  std::string ToggleOption();
  std::string CompareTwo();
  std::string Copy();
  std::pair<std::u16string, ReferenceBox> RandomExpected();
  void SortRows(const std::u16string& heading);

  // user_desk_win.cpp: the window on the screen, its dialogs, and changes to the files.
  std::string ResizeWindow();
  std::string ChangeShowState();
  std::string ChangeDpi();
  std::string PressKeys();
  std::string SelectWithKeyboard();
  std::string OpenHashText();
  std::string OpenAbout();
  std::string OpenMenu();
  std::string Save();
  std::string ActivateAnotherWindow();
  std::string Scroll();
  std::string DismissBanner();
  std::string ChangeFile();
  std::string Wait();
  void RestoreIfMinimized() const;
  void ShowNormal() const;
  // Calls `open` to open a menu, and returns when the menu is open.
  void OpenPopup(const std::function<void()>& open) const;

  // Reads the order of the rows into the model. False for an empty list.
  bool LearnOrder();
  std::vector<int> SomeRows(size_t most);
  void ExpectRowCount(const char* after) const;
  void ExpectPickedRows(const char* after) const;
  std::vector<std::u16string> PathsOf(const std::vector<size_t>& files) const;

  Dice& dice_;
  FileWorld& world_;
  const RunningWindow& window_;
  WindowModel model_;
  const SlowImport slowFileInfo_;
  ReferenceWindow reference_;  // from the last comparison
  std::map<std::string, size_t> counts_;
  std::atomic<const char*> doing_ = "starting";
};

}  // namespace app::testing
