#include "app/flows/saving.h"

#include <algorithm>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "app/rows/row_walk.h"
#include "swr/checksums/checksum_writer.h"
#include "swr/checksums/listed_path.h"
#include "swr/paths/path_forms.h"
#include "swr/system/file.h"
#include "swr/text/display_escape.h"
#include "swr/text/display_text.h"

namespace app {
namespace {

// One entry of the dialog's list of file types.
struct SaveChoice {
  FileFilter filter;
  swr::ExportFormat format = swr::ExportFormat::Sha256Sum;
  swr::AlgoId algo = {};  // of the sha256sum format
  bool hasAlgo = false;
};

using SavedRows = std::vector<const Row*>;

std::vector<SaveChoice> ChoicesFor(swr::AlgoMask common) {
  std::vector<SaveChoice> choices;
  for (const swr::AlgoId id : swr::IdsFromMask(common)) {
    const std::u16string pattern = u"*" + swr::ExtensionForAlgo(id);
    choices.push_back({.filter = {std::u16string(swr::GetAlgo(id).name) +
                                      u" checksums, sha256sum format (" + pattern + u")",
                                  pattern},
                       .format = swr::ExportFormat::Sha256Sum,
                       .algo = id,
                       .hasAlgo = true});
  }
  choices.push_back({{u"All algorithms, BSD tagged format (*.digests)", u"*.digests"},
                     swr::ExportFormat::Tagged});
  if ((common & swr::MaskOf(swr::AlgoId::Crc32)) != 0) {
    choices.push_back({{u"SFV (*.sfv)", u"*.sfv"}, swr::ExportFormat::Sfv});
  }
  choices.push_back({{u"CSV spreadsheet (*.csv)", u"*.csv"}, swr::ExportFormat::Csv});
  choices.push_back({{u"JSON (*.json)", u"*.json"}, swr::ExportFormat::Json});
  return choices;
}

SaveRequest RequestFor(const std::vector<SaveChoice>& choices, const Row& first, bool isOnly) {
  SaveRequest request;
  request.title = u"Save Checksums";
  for (const SaveChoice& choice : choices) request.filters.push_back(choice.filter);
  const auto preferred = std::ranges::find_if(choices, [](const SaveChoice& choice) {
    return choice.hasAlgo && choice.algo == swr::AlgoId::Sha256;
  });
  if (preferred != choices.end()) {
    request.filter = static_cast<size_t>(preferred - choices.begin());
  }
  constexpr size_t starAndDot = 2;
  request.defaultExtension = choices[request.filter].filter.pattern.substr(starAndDot);
  request.fileName = isOnly ? first.Name() : u"checksums";
  request.folder = first.Folder();
  return request;
}

// Writes the digests of `algos` to the file. Returns 0 or an error code.
uint32_t WriteChecksums(const std::u16string& path, const SavedRows& targets, swr::AlgoMask algos,
                        const swr::ExportOptions& options) {
  swr::OutputFile file;
  if (const uint32_t error = swr::OutputFile::Create(swr::ToLongPath(path), file)) return error;
  // A large file is never in memory as a whole.
  constexpr size_t pieceSize = 256 * 1024;
  std::string piece;
  uint32_t error = 0;
  const auto writeFrom = [&](size_t size) {
    if (error != 0 || piece.empty() || piece.size() < size) return;
    error = file.Write(piece);
    piece.clear();
  };
  const swr::RelativePaths relative(swr::SplitPath(path).folder);
  const std::vector<swr::AlgoId> ids = swr::IdsFromMask(algos);
  const swr::ChecksumWriter writer(options, algos);
  const std::string between = writer.Between();
  bool isFirst = true;
  piece = writer.Head();
  // Reused for every row, so that no memory is allocated for each.
  swr::ExportRow exported;
  for (const swr::AlgoId id : ids) exported.digests.push_back({id, {}});
  std::u16string fullPath;
  ForEachRow(targets, [&](const Row& row) {
    if (error != 0) return;
    fullPath.clear();
    row.path.AppendTo(fullPath);
    exported.name = relative.Of(fullPath);
    exported.name = swr::ToForwardSlashes(std::move(exported.name));
    exported.size = row.size;
    for (swr::ExportDigest& entry : exported.digests) {
      const std::span<const uint8_t> bytes = row.digests.View(swr::IndexOf(entry.algo));
      std::ranges::copy(bytes, entry.digest.bytes.begin());
      entry.digest.length = static_cast<uint8_t>(bytes.size());
    }
    if (!std::exchange(isFirst, false)) piece += between;
    writer.AppendRow(exported, piece);
    writeFrom(pieceSize);
  });
  piece += writer.Tail(!targets.empty());
  writeFrom(0);
  return error;
}

TaskDialogSpec NothingToSave() {
  return MessageDialog(TaskDialogIcon::Information, u"There's nothing to save yet.",
                       u"Add files and wait until their checksums are calculated.");
}

}  // namespace

void Saving::Save(const RowIds& selection) {
  // One selected row does not limit what is saved; several do.
  const SavedRows candidates = selection.size() > 1 ? FindRows(rows_, selection) : AllRows(rows_);
  RowIds targetIds;  // rows may be removed while the dialog is open
  targetIds.reserve(candidates.size());
  swr::AlgoMask common = options_.algorithms;
  ForEachRowState(candidates, [&](const Row& row) {
    if (row.status != RowStatus::Done) return;
    targetIds.push_back(row.id);
    common &= row.digests.PresentMask();
  });
  if (targetIds.empty() || common == 0) {
    messages_.ShowTaskDialog(NothingToSave());
    return;
  }

  const std::vector<SaveChoice> choices = ChoicesFor(common);
  const std::optional<SaveTarget> target = pickers_.PickSaveTarget(
      RequestFor(choices, *rows_.Find(targetIds.front()), targetIds.size() == 1));
  if (!target || target->filter >= choices.size()) return;
  const SavedRows targets = FindRows(rows_, targetIds);
  if (targets.empty()) {
    messages_.ShowTaskDialog(NothingToSave());
    return;
  }
  const SaveChoice& choice = choices[target->filter];
  const uint32_t error =
      WriteChecksums(target->path, targets, choice.hasAlgo ? swr::MaskOf(choice.algo) : common,
                     {.format = choice.format,
                      .crLf = options_.crLf,
                      .uppercase = options_.uppercase,
                      .algo = choice.algo,
                      .hasAlgo = choice.hasAlgo});
  if (error != 0) {
    messages_.ShowTaskDialog(MessageDialog(
        TaskDialogIcon::Error, u"The checksums couldn't be saved.",
        swr::EscapeForDisplay(target->path) + u"\n\n" + swr::FormatErrorText(error) + u"."));
  }
}

}  // namespace app
