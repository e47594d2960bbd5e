#include "app/verdicts/copied_text.h"

#include <string_view>
#include <vector>

#include "app/rows/row_walk.h"
#include "swr/checksums/name_escape.h"
#include "swr/hash/digest_text.h"
#include "swr/text/display_escape.h"

namespace app {
namespace {

void AppendHexOf(const Row& row, swr::AlgoId id, bool uppercase, std::u16string& text) {
  swr::AppendHex(row.digests.View(swr::IndexOf(id)), uppercase, text);
}

std::u16string HexOf(const Row& row, swr::AlgoId id, bool uppercase) {
  std::u16string text;
  AppendHexOf(row, id, uppercase, text);
  return text;
}

// A file's name for a line of a checksum file. It is escaped as in a saved file, so that a line end
// in the name can't forge another line.
class LineName {
 public:
  explicit LineName(std::u16string_view name) : text_(name) {
    if (!swr::NameNeedsEscape(name)) return;
    escaped_ = swr::EscapeName(name);
    text_ = escaped_;
    mark_ = u"\\";
  }
  LineName(const LineName&) = delete;
  LineName& operator=(const LineName&) = delete;

  std::u16string_view Mark() const { return mark_; }  // at the start of the line
  std::u16string_view Text() const { return text_; }

 private:
  std::u16string escaped_;
  std::u16string_view text_;
  std::u16string_view mark_;
};

// "SHA256 (name) = hex" for each digest of `mask` that the row has.
void AppendTaggedLines(const Row& row, swr::AlgoMask mask, bool uppercase, std::u16string& text) {
  const LineName name(row.Name());
  for (const swr::AlgoId id : PresentAlgos(row, mask)) {
    text += name.Mark();
    const std::string_view tag = swr::GetAlgo(id).upperTag;
    text.append(tag.begin(), tag.end());
    text += u" (";
    text += name.Text();
    text += u") = ";
    AppendHexOf(row, id, uppercase, text);
    text += u"\r\n";
  }
}

}  // namespace

std::u16string HashesText(const Row& row, swr::AlgoMask mask, bool uppercase) {
  const std::vector<swr::AlgoId> present = PresentAlgos(row, mask);
  if (present.size() == 1) return HexOf(row, present.front(), uppercase);
  std::u16string text;
  for (const swr::AlgoId id : present) {
    text += swr::GetAlgo(id).name;
    text += u": " + HexOf(row, id, uppercase) + u"\r\n";
  }
  return text;
}

std::optional<swr::AlgoId> CommonAlgo(CopiedRows rows, swr::AlgoMask mask) {
  if (rows.empty()) return std::nullopt;
  ForEachRowState(rows, [&](const Row& row) { mask &= row.digests.PresentMask(); });
  const std::vector<swr::AlgoId> common = swr::IdsFromMask(mask);
  return common.empty() ? std::nullopt : std::optional(common.front());
}

std::u16string ChecksumLines(CopiedRows rows, swr::AlgoId algo, bool uppercase) {
  std::u16string text;
  ForEachRow(rows, [&](const Row& row) {
    const LineName name(row.Name());
    text += name.Mark();
    AppendHexOf(row, algo, uppercase, text);
    text += u"  ";
    text += name.Text();
    text += u"\r\n";
  });
  return text;
}

std::u16string TaggedLines(CopiedRows rows, swr::AlgoMask mask, bool uppercase) {
  std::u16string text;
  ForEachRow(rows, [&](const Row& row) { AppendTaggedLines(row, mask, uppercase, text); });
  return text;
}

std::u16string PathLines(CopiedRows rows) {
  std::u16string text;
  ForEachRow(rows, [&](const Row& row) {
    // Windows can't open a path with a line end in it, but a checksum file can contain one.
    const size_t start = text.size();
    row.path.AppendTo(text);
    if (text.find_first_of(u"\r\n", start) != text.npos) {
      text.replace(start, text.npos, swr::EscapeForDisplay(row.Path()));
    }
    text += u"\r\n";
  });
  return text;
}

}  // namespace app
