// What the Copy commands put on the clipboard.
#include <string_view>

#include "app/window/main_window.h"
#include "swr/checksums/name_escape.h"
#include "swr/hash/digest_text.h"
#include "swr/text/display_escape.h"

namespace app {
namespace {

std::u16string HexOf(const ListRow& row, swr::AlgoId id, bool uppercase) {
  return swr::DigestToWideHex(row.digests[swr::IndexOf(id)], uppercase);
}

// A file's name on a line of its own, as in a saved file: a line end within can't pass for another
// line.
struct LineName {
  explicit LineName(const std::u16string& name)
      : mark(swr::NameNeedsEscape(name) ? u"\\" : u""),
        text(swr::NameNeedsEscape(name) ? swr::EscapeName(name) : name) {}

  std::u16string_view mark;
  std::u16string text;
};

// "SHA256 (name) = hex" for each digest of `mask` that the row has.
std::u16string TaggedLines(const ListRow& row, swr::AlgoMask mask, bool uppercase) {
  std::u16string text;
  const LineName name(row.name);
  for (const swr::AlgoId id : PresentAlgos(row, mask)) {
    text += name.mark;
    const std::string_view tag = swr::GetAlgo(id).upperTag;
    text.append(tag.begin(), tag.end());
    text += u" (" + name.text + u") = " + HexOf(row, id, uppercase) + u"\r\n";
  }
  return text;
}

}  // namespace

void MainWindow::CopyHashes() {
  const std::vector<size_t> selected = SelectedIndexes();
  if (!selected.empty()) desktop_.WriteClipboardText(HashesText(selected));
}

std::u16string MainWindow::HashesText(const std::vector<size_t>& selected) const {
  std::u16string text;
  if (selected.size() > 1) {
    for (const size_t index : selected) text += TaggedLines(*rows[index], algorithms, uppercase);
    return text;
  }
  const ListRow& row = *rows[selected.front()];
  const std::vector<swr::AlgoId> present = PresentAlgos(row, algorithms);
  if (present.size() == 1) return HexOf(row, present.front(), uppercase);
  for (const swr::AlgoId id : present) {
    text += swr::GetAlgo(id).name;
    text += u": " + HexOf(row, id, uppercase) + u"\r\n";
  }
  return text;
}

// One algorithm for all lines, so that they make a checksum file together.
void MainWindow::CopyLines() {
  const std::vector<size_t> selected = SelectedIndexes();
  swr::AlgoMask common = selected.empty() ? 0 : algorithms;
  size_t nameUnits = 0;
  for (const size_t index : selected) {
    common &= rows[index]->digests.PresentMask();
    nameUnits += rows[index]->name.size();
  }
  if (common == 0) return;
  const swr::AlgoId algo = swr::IdsFromMask(common).front();
  std::u16string text;
  // Of a million lines it would be moved often while it grows.
  text.reserve(nameUnits + selected.size() * (2 * swr::GetAlgo(algo).digestSize + 4));
  for (const size_t index : selected) {
    const LineName name(rows[index]->name);
    text += name.mark;
    text += HexOf(*rows[index], algo, uppercase);
    text += u"  ";
    text += name.text;
    text += u"\r\n";
  }
  desktop_.WriteClipboardText(text);
}

void MainWindow::CopyAllHashes() {
  std::u16string text;
  for (const size_t index : SelectedIndexes()) {
    text += TaggedLines(*rows[index], swr::AllAlgosMask, uppercase);
  }
  desktop_.WriteClipboardText(text);
}

void MainWindow::CopyPaths() {
  const std::vector<size_t> selected = SelectedIndexes();
  std::u16string text;
  for (const size_t index : selected) {
    const std::u16string& path = rows[index]->path;
    // A path that would look like two is none that Windows opens; it can come from a checksum file.
    const bool looksLikeTwo = selected.size() > 1 && path.find_first_of(u"\r\n") != path.npos;
    text += looksLikeTwo ? swr::EscapeForDisplay(path) : path;
    if (selected.size() > 1) text += u"\r\n";
  }
  desktop_.WriteClipboardText(text);
}

}  // namespace app
