#include "app/verdicts/copied_text.h"

#include <string_view>

#include "swr/checksums/name_escape.h"
#include "swr/hash/digest_text.h"
#include "swr/text/display_escape.h"

namespace app {
namespace {

std::u16string HexOf(const Row& row, swr::AlgoId id, bool uppercase) {
  return swr::DigestToWideHex(row.digests[swr::IndexOf(id)], uppercase);
}

// A file's name on a line of a checksum file. It is escaped as in a saved file, so that a line end
// within the name can't pass for another line.
struct LineName {
  explicit LineName(const std::u16string& name)
      : mark(swr::NameNeedsEscape(name) ? u"\\" : u""),
        text(swr::NameNeedsEscape(name) ? swr::EscapeName(name) : name) {}

  std::u16string_view mark;
  std::u16string text;
};

// "SHA256 (name) = hex" for each digest of `mask` that the row has.
std::u16string TaggedLines(const Row& row, swr::AlgoMask mask, bool uppercase) {
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

std::u16string HashesText(const CopiedRows& rows, swr::AlgoMask mask, bool uppercase) {
  if (rows.size() > 1) return TaggedText(rows, mask, uppercase);
  const Row& row = *rows.front();
  const std::vector<swr::AlgoId> present = PresentAlgos(row, mask);
  if (present.size() == 1) return HexOf(row, present.front(), uppercase);
  std::u16string text;
  for (const swr::AlgoId id : present) {
    text += swr::GetAlgo(id).name;
    text += u": " + HexOf(row, id, uppercase) + u"\r\n";
  }
  return text;
}

// One algorithm for all lines, so that together they make a checksum file.
std::u16string LinesText(const CopiedRows& rows, swr::AlgoMask mask, bool uppercase) {
  swr::AlgoMask common = rows.empty() ? 0 : mask;
  size_t nameUnits = 0;
  for (const Row* row : rows) {
    common &= row->digests.PresentMask();
    nameUnits += row->name.size();
  }
  if (common == 0) return {};
  const swr::AlgoId algo = swr::IdsFromMask(common).front();
  std::u16string text;
  // Without this, a text of a million lines would be moved often while it grows.
  text.reserve(nameUnits + rows.size() * (2 * swr::GetAlgo(algo).digestSize + 4));
  for (const Row* row : rows) {
    const LineName name(row->name);
    text += name.mark;
    text += HexOf(*row, algo, uppercase);
    text += u"  ";
    text += name.text;
    text += u"\r\n";
  }
  return text;
}

std::u16string TaggedText(const CopiedRows& rows, swr::AlgoMask mask, bool uppercase) {
  std::u16string text;
  for (const Row* row : rows) text += TaggedLines(*row, mask, uppercase);
  return text;
}

std::u16string PathsText(const CopiedRows& rows) {
  std::u16string text;
  for (const Row* row : rows) {
    // Windows opens no path with a line end in it, but a checksum file can name one.
    const bool looksLikeTwo =
        rows.size() > 1 && row->path.find_first_of(u"\r\n") != std::u16string::npos;
    text += looksLikeTwo ? swr::EscapeForDisplay(row->path) : row->path;
    if (rows.size() > 1) text += u"\r\n";
  }
  return text;
}

}  // namespace app
