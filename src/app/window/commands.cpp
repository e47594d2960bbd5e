// What menus, buttons and keys do.
#include <algorithm>
#include <iterator>

#include "app/desktop/addresses.h"
#include "app/window/algo_boxes.h"
#include "app/window/main_window.h"
#include "resources/resource_ids.h"
#include "swr/text/decimal_text.h"

namespace app {
namespace {

// "&More...", and how many of the selected algorithms have no box of their own.
std::u16string MoreText(swr::AlgoMask mask) {
  swr::AlgoMask boxed = 0;
  for (const AlgoBox& box : AlgoBoxes) boxed |= swr::MaskOf(box.algo);
  const uint32_t hidden = swr::CountAlgos(mask & ~boxed);
  return hidden == 0 ? u"&More..." : u"&More (+" + swr::DecimalText(hidden) + u")...";
}

const std::vector<FileFilter>& ChecksumFileFilters() {
  static const std::vector<FileFilter> filters = {
      {u"Checksum files",
       u"*.sha256;*.sha1;*.md5;*.sha512;*.sha384;*.sfv;*.b3;*.blake3;*.xxh64;*.xxh3;*.xxh128;"
       u"*.sha3-256;*.sha3-384;*.sha3-512;*.digests;*SUMS;*SUMS.txt;*sums.txt;*.txt;*.asc"},
      {u"All files", u"*.*"}};
  return filters;
}

}  // namespace

MainWindow::MainWindow(View& view, Desktop& desktop, HashQueue& queue, Installation& installation)
    : view_(view), desktop_(desktop), queue_(queue), installation_(installation) {}

void MainWindow::Start() {
  PrepareMenus();
  SetAlgoMask(algorithms);
  OfferStaleEntryRepair();
}

bool MainWindow::OnCommand(uint32_t id) {
  switch (id) {
    case ID_ADD_FILES:
      AddChosen(desktop_.PickFiles(u"Add Files", {}));
      return true;
    case ID_ADD_FOLDER:
      AddChosen(desktop_.PickFolder(u"Add Folder"));
      return true;
    case ID_VERIFY_FILE:
      for (const std::u16string& path :
           desktop_.PickFiles(u"Verify Checksum File", ChecksumFileFilters())) {
        VerifyChecksumFile(path);
      }
      return true;
    case ID_SAVE_CHECKSUMS:
      SaveChecksums();
      return true;
    case ID_EXIT:
      desktop_.CloseWindow();
      return true;
    case ID_PASTE_EXPECTED:
      if (!view_.PasteIntoFocusedEdit()) PasteExpected();
      return true;
    case IDC_PASTE:
      PasteExpected();
      return true;
    case ID_SELECT_ALL:
      view_.SelectAll();
      return true;
    case ID_CLEAR_LIST:
      ClearList();
      return true;
    case ID_UPPERCASE:
      uppercase = !uppercase;
      view_.RedrawRows();
      RefreshDetails();
      ShowOptions();
      return true;
    case ID_SHOW_LEGACY:
      showLegacy = !showLegacy;
      if (!showLegacy && (algorithms & swr::LegacyAlgoMask) != 0) {
        SetAlgoMask(algorithms & ~swr::LegacyAlgoMask);
      }
      ShowOptions();
      return true;
    case ID_INCLUDE_HIDDEN:
      includeHidden = !includeHidden;
      ShowOptions();
      return true;
    case ID_CRLF:
      crLf = !crLf;
      ShowOptions();
      return true;
    case ID_COPY_HASHES:
      if (!view_.CopyFromFocusedEdit()) CopyHashes(SelectedIds());
      return true;
    case ID_HASH_TEXT:
      desktop_.ShowHashText(algorithms, uppercase);
      return true;
    case ID_EXPLORER_MENU:
    case ID_SEND_TO:
      ToggleShellEntry(id == ID_EXPLORER_MENU);
      return true;
    case ID_HELP_ONLINE:
      desktop_.OpenAddress(std::u16string(ProductPage));
      return true;
    case ID_WEBSITE:
      desktop_.OpenAddress(std::u16string(MakerPage));
      return true;
    case ID_CLI_TOOL:
      ShowCommandLineTool();
      return true;
    case ID_PROGRAM_FOLDER:
      OpenProgramFolder();
      return true;
    case ID_ABOUT:
      ShowAbout();
      return true;
    case IDC_ALGO_MORE: {
      // What the choice means is what the menu has shown.
      const swr::AlgoMask shown = algorithms;
      if (const auto algo = view_.ChooseAlgo(shown, showLegacy)) {
        SelectAlgo(*algo, (shown & swr::MaskOf(*algo)) == 0);
      }
      return true;
    }
    case IDC_CANCEL:
      CancelAll();
      return true;
    default:
      break;
  }
  const auto box = std::ranges::find(AlgoBoxes, id, &AlgoBox::control);
  if (box == std::end(AlgoBoxes)) return OnRowCommand(id, SelectedIds());
  SelectAlgo(box->algo, view_.IsAlgoChecked(box->algo));
  return true;
}

bool MainWindow::OnRowCommand(uint32_t id, const RowIds& ids) {
  switch (id) {
    case ID_REMOVE:
    case ID_CTX_REMOVE:
      RemoveRows(ids);
      return true;
    case IDC_COPY:
      CopyHashes(ids);
      return true;
    case ID_CTX_COPY_LINE:
      CopyLines(ids);
      return true;
    case ID_CTX_COPY_ALL:
      CopyAllHashes(ids);
      return true;
    case ID_CTX_COPY_PATH:
      CopyPaths(ids);
      return true;
    case IDC_VIRUSTOTAL:
    case ID_CTX_VIRUSTOTAL:
      LookUpOnVirusTotal(ids);
      return true;
    case IDC_OPEN_FOLDER:
    case ID_CTX_OPEN_FOLDER:
      OpenContainingFolder(ids);
      return true;
    case ID_CTX_COMPARE:
      CompareTwoFiles(ids);
      return true;
    default:
      return false;
  }
}

void MainWindow::AddChosen(const std::vector<std::u16string>& paths) {
  if (!paths.empty()) AddPaths(paths);
}

void MainWindow::SelectAlgo(swr::AlgoId id, bool isSelected) {
  const swr::AlgoMask others = algorithms & ~swr::MaskOf(id);
  SetAlgoMask(isSelected ? others | swr::MaskOf(id) : others);
}

void MainWindow::SetAlgoMask(swr::AlgoMask mask) {
  algorithms = mask == 0 ? swr::FallbackAlgoMask : mask;
  view_.ShowAlgoSelection(algorithms, MoreText(algorithms));
  RebuildColumns();
  QueueAllRows();
  view_.SetRowCount(rows.size());
  RefreshVerdicts();
}

}  // namespace app
