#include "tests/ui/soak_test/random_user_win.h"

#include <chrono>

#include "resources/resource_ids.h"
#include "tests/ui/soak_test/window_reader_win.h"

namespace app::testing {

RandomUser::RandomUser(Dice& dice, FileWorld& world, const RunningWindow& window)
    : dice_(dice),
      world_(world),
      window_(window),
      model_(world),
      slowFileInfo_(window.Handle(), "GetFileAttributesExW", std::chrono::milliseconds(5)) {}

const std::vector<RandomUser::Kind>& RandomUser::Kinds() {
  static const std::vector<Kind> kinds = {
      {"files dropped", 14, &RandomUser::DropFiles},
      {"folders dropped", 8, &RandomUser::DropFolder},
      {"crowds dropped", 1, &RandomUser::DropCrowd},
      {"folders on a slow share dropped", 3, &RandomUser::DropSlowFolder},
      {"checksum files dropped", 10, &RandomUser::DropList},
      {"files picked", 2, &RandomUser::PickFiles},
      {"checksum files picked", 2, &RandomUser::PickList},
      {"second starts", 4, &RandomUser::StartAgain},
      {"some rows removed", 8, &RandomUser::RemoveSome},
      {"all rows removed", 1, &RandomUser::RemoveAll},
      {"cancelled", 7, &RandomUser::Cancel},
      {"list cleared", 2, &RandomUser::Clear},
      {"sorted", 12, &RandomUser::Sort},
      {"algorithm boxes clicked", 7, &RandomUser::ClickAlgoBox},
      {"algorithms chosen from the menu", 4, &RandomUser::ChooseAlgo},
      {"expected hash edited", 12, &RandomUser::EditBox},
      {"expected hash pasted", 3, &RandomUser::Paste},
      {"options toggled", 4, &RandomUser::ToggleOption},
      {"two files compared", 3, &RandomUser::CompareTwo},
      {"rows copied", 4, &RandomUser::Copy},
      {"window moved or resized", 6, &RandomUser::ResizeWindow},
      {"maximized, minimized or restored", 4, &RandomUser::ChangeShowState},
      {"DPI changed", 3, &RandomUser::ChangeDpi},
      {"keys pressed", 6, &RandomUser::PressKeys},
      {"rows selected by keyboard", 2, &RandomUser::SelectWithKeyboard},
      {"Hash Text opened", 2, &RandomUser::OpenHashText},
      {"About opened", 1, &RandomUser::OpenAbout},
      {"menus opened", 3, &RandomUser::OpenMenu},
      {"checksums saved", 2, &RandomUser::Save},
      {"another window activated", 1, &RandomUser::ActivateAnotherWindow},
      {"scrolled", 5, &RandomUser::Scroll},
      {"banners dismissed", 2, &RandomUser::DismissBanner},
      {"files changed on the disk", 12, &RandomUser::ChangeFile},
      {"waited", 12, &RandomUser::Wait},
  };
  return kinds;
}

size_t RandomUser::KindCount() { return Kinds().size(); }

std::string RandomUser::Act() {
  size_t total = 0;
  for (const Kind& kind : Kinds()) total += kind.weight;
  size_t place = dice_.Pick(total);
  size_t number = 0;
  while (place >= Kinds()[number].weight) place -= Kinds()[number++].weight;
  return Act(number);
}

std::string RandomUser::Act(size_t number) {
  const Kind& kind = Kinds()[number];
  ++counts_[kind.name];
  doing_ = kind.name;
  return std::string(kind.name) + ": " + (this->*kind.act)();
}

size_t RandomUser::CompareAll() {
  doing_ = "comparing";
  WaitForStableIdle(window_);
  reference_ = Compare(model_, ReadWindow(window_));
  // From now on only the current states of the files can be read.
  world_.ForgetEarlierStates();
  for (ModelRow& row : model_.rows) row.firstState = 0;
  RestoreIfMinimized();
  CheckColours(window_, reference_);
  return model_.rows.size();
}

void RandomUser::ClearAll() {
  doing_ = "clearing";
  ShowNormal();
  constexpr int dpi = 96;
  constexpr Size size = {900, 700};
  window_.ChangeDpi(dpi, size);
  window_.Resize(size);
  window_.SetExpected(u"");
  model_.EditBox({});
  window_.Command(ID_CLEAR_LIST);
  model_.Clear();
  WaitForStableIdle(window_);
  ExpectRowCount("Clear List");
}

void RandomUser::FillList() {
  doing_ = "filling the list";
  const std::u16string& folder = world_.Folders()[0];
  window_.Drop({folder});
  model_.Add(world_.Walk(folder, model_.includeHidden));
  ExpectRowCount("a drop of all files");
}

bool RandomUser::LearnOrder() {
  if (!model_.isOrderKnown) AdoptOrder(model_, ReadOrder(window_));
  return !model_.rows.empty();
}

std::vector<int> RandomUser::SomeRows(size_t most) {
  std::set<int> chosen;
  for (size_t count = 1 + dice_.Pick(most); count > 0; --count) {
    chosen.insert(static_cast<int>(dice_.Pick(model_.rows.size())));
  }
  return {chosen.begin(), chosen.end()};
}

// Files that take long to look up come later.
void RandomUser::ExpectRowCount(const char* after) const {
  WaitFor([&] { return static_cast<size_t>(window_.RowCount()) == model_.rows.size(); });
  const auto seen = static_cast<size_t>(window_.RowCount());
  if (seen == model_.rows.size()) return;
  throw Disagreement(std::string("after ") + after + " there are " + std::to_string(seen) +
                     " rows instead of " + std::to_string(model_.rows.size()));
}

std::vector<std::u16string> RandomUser::PathsOf(const std::vector<size_t>& files) const {
  std::vector<std::u16string> paths;
  for (const size_t file : files) paths.push_back(world_.Files()[file].path);
  return paths;
}

}  // namespace app::testing
