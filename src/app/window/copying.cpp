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

void MainWindow::CopyHashes(const RowIds& ids) {
  const std::vector<const ListRow*> chosen = RowsOf(ids);
  if (!chosen.empty()) desktop_.WriteClipboardText(HashesText(chosen));
}

std::u16string MainWindow::HashesText(const std::vector<const ListRow*>& chosen) const {
  std::u16string text;
  if (chosen.size() > 1) {
    for (const ListRow* row : chosen) text += TaggedLines(*row, algorithms, uppercase);
    return text;
  }
  const ListRow& row = *chosen.front();
  const std::vector<swr::AlgoId> present = PresentAlgos(row, algorithms);
  if (present.size() == 1) return HexOf(row, present.front(), uppercase);
  for (const swr::AlgoId id : present) {
    text += swr::GetAlgo(id).name;
    text += u": " + HexOf(row, id, uppercase) + u"\r\n";
  }
  return text;
}

// One algorithm for all lines, so that they make a checksum file together.
void MainWindow::CopyLines(const RowIds& ids) {
  const std::vector<const ListRow*> chosen = RowsOf(ids);
  swr::AlgoMask common = chosen.empty() ? 0 : algorithms;
  size_t nameUnits = 0;
  for (const ListRow* row : chosen) {
    common &= row->digests.PresentMask();
    nameUnits += row->name.size();
  }
  if (common == 0) return;
  const swr::AlgoId algo = swr::IdsFromMask(common).front();
  std::u16string text;
  // Of a million lines it would be moved often while it grows.
  text.reserve(nameUnits + chosen.size() * (2 * swr::GetAlgo(algo).digestSize + 4));
  for (const ListRow* row : chosen) {
    const LineName name(row->name);
    text += name.mark;
    text += HexOf(*row, algo, uppercase);
    text += u"  ";
    text += name.text;
    text += u"\r\n";
  }
  desktop_.WriteClipboardText(text);
}

void MainWindow::CopyAllHashes(const RowIds& ids) {
  const std::vector<const ListRow*> chosen = RowsOf(ids);
  if (chosen.empty()) return;
  std::u16string text;
  for (const ListRow* row : chosen) text += TaggedLines(*row, swr::AllAlgosMask, uppercase);
  desktop_.WriteClipboardText(text);
}

void MainWindow::CopyPaths(const RowIds& ids) {
  const std::vector<const ListRow*> chosen = RowsOf(ids);
  if (chosen.empty()) return;
  std::u16string text;
  for (const ListRow* row : chosen) {
    // A path that would look like two is none that Windows opens; it can come from a checksum file.
    const bool looksLikeTwo =
        chosen.size() > 1 && row->path.find_first_of(u"\r\n") != std::u16string::npos;
    text += looksLikeTwo ? swr::EscapeForDisplay(row->path) : row->path;
    if (chosen.size() > 1) text += u"\r\n";
  }
  desktop_.WriteClipboardText(text);
}

}  // namespace app
