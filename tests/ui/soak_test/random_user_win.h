// Somebody who uses the window at random, without waiting for it, and tells the model what was
// done.
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

  // Does something; the result says what. Throws Disagreement when the window is not as it must
  // be, and std::runtime_error when it does not answer.
  std::string Act();
  // The same with one of the kinds of things that there are, from 0 on.
  std::string Act(size_t kind);
  static size_t KindCount();
  // Waits until the window is at rest and compares all of it. The number of rows.
  size_t CompareAll();
  // Drops all files but the crowd.
  void FillList();
  // Clears the list and waits until that is done. The window then has always the same size.
  void ClearAll();

  // How often each kind of thing was done.
  const std::map<std::string, size_t>& Counts() const { return counts_; }
  // What it is at, or was at last. On any thread.
  const char* Doing() const { return doing_; }

 private:
  struct Kind {
    const char* name;
    size_t weight;
    std::string (RandomUser::*act)();
  };
  static const std::vector<Kind>& Kinds();

  // user_list_win.cpp: what goes into the list and out of it.
  std::string DropFiles();
  std::string DropFolder();
  std::string DropCrowd();
  std::string DropList();
  std::string PickFiles();
  std::string PickList();
  std::string StartAgain();
  std::string RemoveSome();
  std::string RemoveAll();
  std::string Cancel();
  std::string Clear();
  void StartWith(size_t processes);
  void RefuseList(size_t list);
  std::vector<size_t> SomeFiles(size_t most);
  std::optional<size_t> FreshList();

  // user_choices_win.cpp: what is wanted of the rows and how they are shown.
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

  // user_desk_win.cpp: the window on the screen, its dialogs, and the files behind its back.
  std::string ResizeWindow();
  std::string ChangeShowState();
  std::string ChangeDpi();
  std::string PressKeys();
  std::string SelectWithKeyboard();
  std::string OpenHashText();
  std::string OpenAbout();
  std::string OpenMenu();
  std::string Save();
  std::string LookElsewhere();
  std::string Scroll();
  std::string DismissBanner();
  std::string ChangeFile();
  std::string Wait();
  void ShowUp() const;
  void ShowNormal() const;
  // Returns when the menu that this asks for has popped up.
  void PopUp(const std::function<void()>& ask) const;

  // Makes the model's order known. False for an empty list.
  bool KnowOrder();
  std::vector<int> SomeRows(size_t most);
  void ExpectRowCount(const char* after) const;
  void ExpectPickedRows(const char* after) const;
  std::vector<std::u16string> PathsOf(const std::vector<size_t>& files) const;

  Dice& dice_;
  FileWorld& world_;
  const RunningWindow& window_;
  WindowModel model_;
  ReferenceWindow reference_;  // of the last comparison
  std::map<std::string, size_t> counts_;
  std::atomic<const char*> doing_ = "starting";
};

}  // namespace app::testing
