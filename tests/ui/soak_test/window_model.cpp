#include "tests/ui/soak_test/window_model.h"

#include <algorithm>
#include <cstdio>
#include <utility>

#include "swr/system/local_time.h"
#include "swr/text/encoding.h"
#include "tests/support/temp_tree.h"

namespace app::testing {
namespace {

std::u16string ModifiedText(const std::u16string& path) {
  const auto time = swr::ToLocalTime(swr::testing::ModifiedTime(path));
  if (!time) return {};
  char text[64];
  std::snprintf(text, sizeof text, "%04u-%02u-%02u %02u:%02u", time->year, time->month, time->day,
                time->hour, time->minute);
  return swr::Utf8ToWide(text);
}

}  // namespace

ModelRow WindowModel::MakeRow(size_t file) const {
  const WorldFile& source = world_.Files()[file];
  ModelRow row;
  row.file = file;
  row.firstState = source.states.size() - 1;
  if (!source.IsThere()) {
    row.error = source.Now().error;
  } else {
    row.size = source.Now().content->size;
    row.modified = ModifiedText(source.path);
  }
  return row;
}

void WindowModel::NoteRequested() {
  isIdle = false;
  for (ModelRow& row : rows) {
    row.requested.insert(selectedAlgos.begin(), selectedAlgos.end());
    if (row.listed) row.requested.insert(row.listed->algos.begin(), row.listed->algos.end());
    if (box.claim) row.requested.insert(box.claim->algos.begin(), box.claim->algos.end());
  }
}

size_t WindowModel::Add(const std::vector<size_t>& files) {
  const size_t before = rows.size();
  for (const size_t file : files) {
    if (!HasFile(file)) rows.push_back(MakeRow(file));
  }
  NoteRequested();
  return rows.size() - before;
}

void WindowModel::RemovePlainRow(size_t file) {
  const auto found = std::ranges::find_if(
      rows, [&](const ModelRow& row) { return row.file == file && !row.listed; });
  if (found != rows.end()) rows.erase(found);
  NoteRequested();
}

void WindowModel::LoadList(size_t list) {
  const WorldFile& source = world_.Files()[list];
  for (const ListedLine& line : *source.list) {
    std::erase_if(rows, [&](const ModelRow& row) { return row.file == line.file && !row.listed; });
    ModelRow row = MakeRow(line.file);
    row.listed = line.claim;
    row.checksumFile = source.name;
    row.checksumLine = line.number;
    rows.push_back(std::move(row));
  }
  // Queues every row for all digests that it needs.
  for (ModelRow& row : rows) row.mayLack = false;
  NoteRequested();
}

void WindowModel::Remove(const std::set<size_t>& indexes) {
  for (auto index = indexes.rbegin(); index != indexes.rend(); ++index) {
    rows.erase(rows.begin() + static_cast<std::ptrdiff_t>(*index));
  }
  NoteRequested();
}

void WindowModel::Clear() {
  rows.clear();
  isOrderKnown = true;
  NoteRequested();
}

void WindowModel::Cancel() {
  if (isIdle) return;
  for (ModelRow& row : rows) {
    const bool lacksAny = std::ranges::any_of(
        row.requested, [&](swr::AlgoId id) { return !row.digests.contains(id); });
    if (row.error != 0 || !lacksAny) continue;
    row.mayLack = true;
    row.mayBeCancelled = true;
    row.mayLackSearch = true;
  }
  NoteRequested();
}

void WindowModel::EditBox(ReferenceBox edited) {
  box = std::move(edited);
  // A new value is compared with every row, even with cancelled ones.
  for (ModelRow& row : rows) row.mayLackSearch = false;
  NoteRequested();
}

void WindowModel::SelectAlgos(AlgoSet chosen) {
  selectedAlgos = chosen.empty() ? AlgoSet{swr::AlgoId::Sha256} : std::move(chosen);
  sortColumn.reset();
  for (ModelRow& row : rows) row.mayLack = false;
  NoteRequested();
}

void WindowModel::Request(size_t row, swr::AlgoId algo) {
  rows[row].requested.insert(algo);
  isIdle = false;
}

bool WindowModel::HasFile(size_t file) const {
  return std::ranges::any_of(rows, [&](const ModelRow& row) { return row.file == file; });
}

bool WindowModel::HasRowsOf(size_t list) const {
  return std::ranges::any_of(rows, [&](const ModelRow& row) {
    return row.listed && row.checksumFile == world_.Files()[list].name;
  });
}

}  // namespace app::testing
