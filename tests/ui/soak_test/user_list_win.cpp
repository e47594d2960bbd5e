// The random user adds and removes rows.
#include <algorithm>
#include <chrono>
#include <stdexcept>

#include "resources/resource_ids.h"
#include "swr/text/encoding.h"
#include "tests/ui/program_dialog_win.h"
#include "tests/ui/replaced_import_win.h"
#include "tests/ui/soak_test/random_user_win.h"

namespace app::testing {
namespace {

// With more rows than this, the list is cleared instead of extended.
constexpr size_t LongList = 150;

}  // namespace

std::vector<size_t> RandomUser::SomeFiles(size_t most) {
  std::vector<size_t> files;
  for (size_t count = 1 + dice_.Pick(most); count > 0; --count) {
    const size_t file =
        dice_.OneIn(8) ? dice_.Of(world_.LongFiles()) : dice_.Of(world_.PlainFiles());
    files.push_back(file);
  }
  return files;
}

std::string RandomUser::DropFiles() {
  std::vector<size_t> files = SomeFiles(6);
  // A checksum file added alone shows the offer to verify it.
  if (files.size() > 1 && dice_.OneIn(5)) files.push_back(dice_.Of(world_.Lists()));
  window_.Drop(PathsOf(files));
  const size_t added = model_.Add(files);
  ExpectRowCount("a drop of files");
  return std::to_string(added) + " new";
}

std::string RandomUser::DropFolder() {
  const std::u16string& folder = dice_.Of(world_.Folders());
  std::vector<std::u16string> paths = {folder};
  std::vector<size_t> files = world_.Walk(folder, model_.includeHidden);
  if (dice_.OneIn(3)) {
    const std::vector<size_t> more = SomeFiles(3);
    for (const std::u16string& path : PathsOf(more)) paths.push_back(path);
    files.insert(files.end(), more.begin(), more.end());
  }
  window_.Drop(paths);
  const size_t added = model_.Add(files);
  ExpectRowCount("a drop of a folder");
  return std::to_string(added) + " new";
}

std::string RandomUser::DropCrowd() {
  if (model_.rows.size() > LongList) return Clear();
  window_.Drop({world_.Crowd()});
  const size_t added = model_.Add(world_.Walk(world_.Crowd(), model_.includeHidden));
  ExpectRowCount("a drop of many files");
  return std::to_string(added) + " new";
}

// The files are looked up slowly, and the window is used meanwhile. Now and then the list is
// cleared before all of them have arrived.
std::string RandomUser::DropSlowFolder() {
  const std::u16string& folder = dice_.Of(world_.Folders());
  const ReplacedImport slow(window_.Handle(), "GetFileAttributesExW", slowFileInfo_.Replacement());
  window_.Drop({folder});
  const size_t added = model_.Add(world_.Walk(folder, model_.includeHidden));
  for (size_t count = dice_.Pick(4); count > 0; --count) {
    dice_.OneIn(2) ? EditBox() : dice_.OneIn(2) ? Scroll() : ResizeWindow();
  }
  if (dice_.OneIn(5)) return "and the list cleared" + Clear();
  ExpectRowCount("a drop of a slow folder");
  return std::to_string(added) + " new";
}

// A random checksum file, or nothing if the window has rows from it: two rows with the same file
// and line could not be told apart.
std::optional<size_t> RandomUser::UnusedList() {
  const size_t list = dice_.Of(world_.Lists());
  return model_.HasRowsOf(list) ? std::nullopt : std::optional(list);
}

// An unusable checksum file shows a message and adds no rows.
void RandomUser::ExpectRejectedList(size_t list) {
  const std::u16string expected = world_.Files()[list].Now().error != 0
                                      ? u"The checksum file can't be read."
                                      : u"No checksums were found in this file.";
  const ProgramDialog message(window_, u"Sumwright");
  const std::u16string seen = message.Instruction();
  message.Press(IDOK);
  if (seen != expected) {
    throw Disagreement("a checksum file was rejected with: " + swr::WideToUtf8(seen));
  }
}

std::string RandomUser::DropList() {
  const auto list = UnusedList();
  if (!list || model_.HasFile(*list)) return "no checksum file left";
  const WorldFile& file = world_.Files()[*list];
  const std::string name = swr::WideToUtf8(file.name);
  RestoreIfMinimized();
  window_.Drop({file.path});
  model_.Add({*list});
  ExpectRowCount("a drop of a checksum file");
  if (!WaitFor([&] {
        return window_.IsShown(IDC_BANNER) &&
               window_.Text(IDC_BANNER).starts_with(u"This looks like a checksum file.");
      })) {
    throw Disagreement("a dropped checksum file is not offered");
  }
  if (dice_.OneIn(8)) return name + ", offer ignored";
  const bool isWanted = !dice_.OneIn(8);
  window_.FollowBannerLink(isWanted ? AcceptLink : DismissLink);
  window_.WaitForPostedMessages();
  if (!isWanted) return name + " dismissed";
  model_.RemovePlainRow(*list);
  if (file.Now().error != 0 || file.list->empty()) {
    ExpectRejectedList(*list);
    ExpectRowCount("a rejected checksum file");
    return name + " rejected";
  }
  model_.LoadList(*list);
  ExpectRowCount("a checksum file");
  return name + " loaded";
}

std::string RandomUser::PickFiles() {
  const size_t file = dice_.Of(world_.PlainFiles());
  RestoreIfMinimized();
  window_.PostCommand(ID_ADD_FILES);
  const ProgramDialog dialog(window_, u"Add Files");
  // The dialog itself rejects names of missing files.
  if (dice_.OneIn(3) || !world_.Files()[file].IsThere()) {
    dialog.Press(IDCANCEL);
    return "cancelled";
  }
  dialog.SetFileName(world_.Files()[file].path);
  dialog.Press(IDOK);
  const size_t added = model_.Add({file});
  ExpectPickedRows("a picked file");
  return std::to_string(added) + " new";
}

std::string RandomUser::PickList() {
  const auto list = UnusedList();
  if (!list) return "no checksum file left";
  const WorldFile& file = world_.Files()[*list];
  if (file.Now().error != 0 || file.list->empty()) return "no usable one";
  RestoreIfMinimized();
  window_.PostCommand(ID_VERIFY_FILE);
  const ProgramDialog dialog(window_, u"Verify Checksum File");
  if (dice_.OneIn(4)) {
    dialog.Press(IDCANCEL);
    return "cancelled";
  }
  dialog.SetFileName(file.path);
  dialog.Press(IDOK);
  model_.LoadList(*list);
  ExpectPickedRows("a picked checksum file");
  return swr::WideToUtf8(file.name);
}

// The picked files are added after the dialog has closed.
void RandomUser::ExpectPickedRows(const char* after) const {
  WaitFor([&] { return static_cast<size_t>(window_.RowCount()) == model_.rows.size(); });
  ExpectRowCount(after);
}

// Starts several instances at once; each hands its paths to the window.
void RandomUser::StartWith(size_t processes) {
  std::vector<ProgramProcess> started;
  if (processes > 1) model_.isOrderKnown = false;
  for (size_t i = 0; i < processes; ++i) {
    StartOptions options{.keepSettings = true};
    std::vector<size_t> files;
    if (dice_.OneIn(4)) {
      const std::u16string& folder = dice_.Of(world_.Folders());
      files = world_.Walk(folder, model_.includeHidden);
      options.arguments = {folder};
    } else if (dice_.OneIn(3)) {
      files = {SomeFiles(1).front()};
      options.folder = world_.Files()[files[0]].folder;
      options.arguments = {u".\\" + world_.Files()[files[0]].name};
    } else {
      files = SomeFiles(4);
      options.arguments = PathsOf(files);
    }
    started.emplace_back(options);
    model_.Add(files);
  }
  for (const ProgramProcess& process : started) {
    if (process.WaitForEnd() != 0) throw Disagreement("a second start ended with an error");
  }
  ExpectRowCount("second starts");
}

std::string RandomUser::StartAgain() {
  const size_t processes = 1 + dice_.Pick(3);
  StartWith(processes);
  return std::to_string(processes);
}

std::string RandomUser::RemoveSome() {
  if (!LearnOrder()) return "no rows";
  const std::vector<int> chosen = SomeRows(6);
  window_.SelectOnly(chosen);
  model_.Remove({chosen.begin(), chosen.end()});
  constexpr int deleteKey = 0x2E;
  switch (dice_.Pick(3)) {
    case 0:
      window_.Command(ID_REMOVE);
      break;
    case 1:
      window_.PressKey(IDC_LIST, deleteKey);
      window_.WaitForPostedMessages();
      break;
    default:
      window_.Command(ID_CTX_REMOVE);
      break;
  }
  ExpectRowCount("a removal");
  return std::to_string(chosen.size());
}

std::string RandomUser::RemoveAll() {
  window_.FocusOn(IDC_LIST);  // otherwise a focused edit box would select its text instead
  window_.Command(ID_SELECT_ALL);
  window_.Command(ID_REMOVE);
  model_.rows.clear();
  model_.Remove({});
  ExpectRowCount("a removal of all");
  return {};
}

std::string RandomUser::Cancel() {
  if (window_.IsShown(IDC_CANCEL) && dice_.OneIn(2)) {
    window_.Click(IDC_CANCEL);
  } else {
    window_.Command(IDC_CANCEL);
  }
  model_.Cancel();
  return {};
}

std::string RandomUser::Clear() {
  window_.Command(ID_CLEAR_LIST);
  model_.Clear();
  ExpectRowCount("Clear List");
  return {};
}

}  // namespace app::testing
