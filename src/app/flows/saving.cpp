#include "app/flows/saving.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

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

// The algorithms of `mask` whose digests all these rows have.
swr::AlgoMask CommonAlgos(const SavedRows& targets, swr::AlgoMask mask) {
  if (targets.empty()) return 0;
  for (const Row* row : targets) mask &= row->digests.PresentMask();
  return mask;
}

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

SaveRequest RequestFor(const std::vector<SaveChoice>& choices, const SavedRows& targets) {
  SaveRequest request;
  request.title = u"Save Checksums";
  for (const SaveChoice& choice : choices) request.filters.push_back(choice.filter);
  const auto preferred = std::ranges::find_if(choices, [](const SaveChoice& choice) {
    return choice.hasAlgo && choice.algo == swr::AlgoId::Sha256;
  });
  if (preferred != choices.end()) {
    request.filter = static_cast<size_t>(preferred - choices.begin());
  }
  constexpr size_t starAndStop = 2;
  request.defaultExtension = choices[request.filter].filter.pattern.substr(starAndStop);
  request.fileName = targets.size() == 1 ? targets.front()->name : u"checksums";
  request.folder = targets.front()->folder;
  return request;
}

std::vector<swr::ExportRow> ExportRowsOf(const SavedRows& targets, swr::AlgoMask algos,
                                         std::u16string_view folder) {
  std::vector<swr::ExportRow> exported;
  exported.reserve(targets.size());
  for (const Row* row : targets) {
    swr::ExportRow& added = exported.emplace_back();
    added.name = swr::ToForwardSlashes(swr::MakeRelativePath(folder, row->path));
    added.size = row->size;
    for (const swr::AlgoId id : swr::IdsFromMask(algos)) {
      added.digests.push_back({id, row->digests[swr::IndexOf(id)]});
    }
  }
  return exported;
}

TaskDialogSpec NothingToSave() {
  return MessageDialog(TaskDialogIcon::Information, u"There's nothing to save yet.",
                       u"Add files and wait until their checksums are calculated.");
}

}  // namespace

void Saving::Save(const RowIds& selection) {
  // One selected row does not limit what is saved; several do.
  SavedRows targets;
  const auto take = [&](const Row& row) {
    if (row.status == RowStatus::Done) targets.push_back(&row);
  };
  if (selection.size() > 1) {
    for (const Row* row : FindRows(rows_, selection)) take(*row);
  } else {
    for (const Row& row : rows_) take(row);
  }
  const swr::AlgoMask common = CommonAlgos(targets, options_.algorithms);
  if (common == 0) {
    messages_.ShowTaskDialog(NothingToSave());
    return;
  }

  const std::vector<SaveChoice> choices = ChoicesFor(common);
  // While the dialog is open, rows may go.
  RowIds targetIds;
  for (const Row* row : targets) targetIds.push_back(row->id);
  const std::optional<SaveTarget> target = pickers_.PickSaveTarget(RequestFor(choices, targets));
  if (!target || target->filter >= choices.size()) return;
  targets = FindRows(rows_, targetIds);
  if (targets.empty()) {
    messages_.ShowTaskDialog(NothingToSave());
    return;
  }
  const SaveChoice& choice = choices[target->filter];
  const std::string bytes =
      swr::RenderChecksums(ExportRowsOf(targets, choice.hasAlgo ? swr::MaskOf(choice.algo) : common,
                                        swr::SplitPath(target->path).folder),
                           {.format = choice.format,
                            .crLf = options_.crLf,
                            .uppercase = options_.uppercase,
                            .algo = choice.algo,
                            .hasAlgo = choice.hasAlgo});
  const uint32_t error = swr::WriteWholeFile(swr::ToLongPath(target->path), bytes);
  if (error != 0) {
    messages_.ShowTaskDialog(MessageDialog(
        TaskDialogIcon::Error, u"The checksums couldn't be saved.",
        swr::EscapeForDisplay(target->path) + u"\n\n" + swr::FormatErrorText(error) + u"."));
  }
}

}  // namespace app
