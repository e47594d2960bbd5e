// Adds files to a list, and removes the lines of files that no longer exist. All other lines are
// kept byte for byte.
#include <memory>
#include <optional>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include "cli/modes/listed_files.h"
#include "cli/modes/run.h"
#include "cli/select/line_source.h"
#include "swr/checksums/checksum_file.h"
#include "swr/checksums/checksum_writer.h"
#include "swr/checksums/listed_path.h"
#include "swr/paths/path_forms.h"
#include "swr/system/error_codes.h"
#include "swr/system/file.h"
#include "swr/system/file_replacement.h"
#include "swr/system/full_path.h"
#include "swr/text/decimal_text.h"
#include "swr/text/encoding.h"
#include "swr/text/text.h"

namespace cli {
namespace {

using Encoding = LineSource::Encoding;

// What was found in the existing list.
struct ListState {
  bool exists = false;
  bool isSigned = false;
  Encoding encoding = Encoding::Bytes;
  bool hasCrLf = false;
  bool endsInLine = true;                     // the last line has a line end
  std::unordered_set<std::u16string> listed;  // by PathIdentity
  std::unordered_set<uint32_t> gone;          // numbers of lines whose file does not exist
  // The format of the last checksum line.
  std::optional<swr::ExportFormat> format;
  // The algorithms of the last file's lines.
  std::u16string lastName;
  swr::AlgoMask algorithms = 0;
};

bool IsGone(const std::u16string& path) {
  uint32_t error = 0;
  return !swr::QueryFileInfo(swr::ToLongPath(path), error) && swr::IsMissingError(error);
}

// The format of a checksum line.
swr::ExportFormat FormatOf(std::u16string_view line) {
  swr::ChecksumLine parsed;
  const size_t first = line.find_first_not_of(u" \t");
  line.remove_prefix(first == line.npos ? 0 : first);
  if (swr::ParseTaggedLine(line, parsed)) return swr::ExportFormat::Tagged;
  if (swr::ParsePlainLine(line, std::nullopt, parsed)) return swr::ExportFormat::Sha256Sum;
  return swr::ParseSfvLine(line, parsed) ? swr::ExportFormat::Sfv : swr::ExportFormat::Sha256Sum;
}

class Updater {
 public:
  explicit Updater(Run& run) : run_(run), list_(run.options.updatedList) {}

  void Update() {
    if (!ReadList()) return;
    if (state_.isSigned) {
      Fail(u"the list is signed, and a change would break its signature");
      return;
    }
    if (!ChooseFormat()) return;
    HashNewFiles();
    const bool mustPrune = run_.options.prune && !state_.gone.empty();
    if (run_.console.OutError() == 0 && (added_ > 0 || mustPrune || !state_.exists)) WriteList();
    if (!run_.options.quiet && !hasFailed_) Summarize();
  }

 private:
  class UpdateJob;

  void Fail(const std::u16string& message) {
    run_.console.WriteMessage(run_.console.NameForErr(list_) + u": " + message);
    run_.status.Note(ExitStatus::Trouble);
    hasFailed_ = true;
  }

  bool ReadList() {
    state_.listed.insert(PathIdentity(list_));
    LineSource lines;
    const uint32_t error = lines.Open(list_);
    if (swr::IsMissingError(error)) return true;
    if (error != 0) {
      Fail(ErrorMessage(error));
      return false;
    }
    state_.exists = true;
    state_.encoding = lines.TextEncoding();
    swr::ChecksumLineReader reader(list_, swr::ListForms::Extended);
    std::u16string text;
    std::string bytes;
    while (lines.Next(text, bytes)) {
      swr::ChecksumLine line;
      state_.endsInLine = EndsInLine(bytes);
      if (state_.endsInLine) state_.hasCrLf = text.ends_with(u'\r');
      if (reader.Read(text, line) == swr::LineKind::Checksum) Note(text, line);
    }
    state_.isSigned = reader.IsSigned();
    if (lines.Error() != 0) Fail(ErrorMessage(lines.Error()));
    return lines.Error() == 0;
  }

  bool EndsInLine(const std::string& bytes) const {
    switch (state_.encoding) {
      case Encoding::Bytes:
        return bytes.ends_with('\n');
      case Encoding::Utf16LowFirst:
        return bytes.ends_with(std::string_view("\n\0", 2));
      case Encoding::Utf16HighFirst:
        return bytes.ends_with(std::string_view("\0\n", 2));
    }
    return true;
  }

  void Note(std::u16string_view text, const swr::ChecksumLine& line) {
    const std::u16string path = swr::ResolveListedPath(list_, line.name);
    if (run_.options.prune && IsGone(path)) {
      state_.gone.insert(line.lineNumber);
    } else {
      state_.listed.insert(PathIdentity(path));
    }
    if (line.name != state_.lastName) state_.algorithms = 0;
    state_.lastName = line.name;
    state_.algorithms |= swr::MaskOf(line.candidates.front());
    if (text.ends_with(u'\r')) text.remove_suffix(1);
    state_.format = FormatOf(text);
  }

  // The user's choice takes precedence over what the list contains, and that over what its name
  // implies.
  bool ChooseFormat() {
    algorithms_ = run_.options.algorithms;
    if (algorithms_ == 0) algorithms_ = state_.algorithms;
    const std::optional<swr::AlgoId> named = swr::AlgoFromChecksumFileName(list_);
    if (algorithms_ == 0) algorithms_ = swr::MaskOf(named.value_or(swr::AlgoId::Sha256));
    const bool isSeveral = swr::CountAlgos(algorithms_) > 1;
    const bool isSfvName = swr::EndsWithNoCase(list_, u".sfv");
    format_ = run_.options.format.value_or(
        state_.format.value_or(isSfvName ? swr::ExportFormat::Sfv : swr::ExportFormat::Sha256Sum));
    const bool isLine = format_ == swr::ExportFormat::Sha256Sum ||
                        format_ == swr::ExportFormat::Tagged || format_ == swr::ExportFormat::Sfv;
    if (!isLine) {
      Fail(u"only lists in the formats sum, bsd and sfv can be updated");
      return false;
    }
    const bool isCrc32 = algorithms_ == swr::MaskOf(swr::AlgoId::Crc32);
    const bool takesAny = format_ == swr::ExportFormat::Tagged;
    const bool fits = takesAny || (format_ == swr::ExportFormat::Sfv ? isCrc32 : !isSeveral);
    if (fits) return true;
    if (run_.options.format) {
      Fail(u"this format does not support these algorithms");
      return false;
    }
    format_ = swr::ExportFormat::Tagged;
    return true;
  }

  void HashNewFiles();

  // The new lines in the list's encoding.
  std::string Encoded(const std::string& text) const {
    if (state_.encoding == Encoding::Bytes) return text;
    std::string bytes;
    for (const char16_t unit : swr::Utf8ToWide(text)) {
      const char low = static_cast<char>(unit & 0xFF);
      const char high = static_cast<char>(unit >> 8);
      bytes += state_.encoding == Encoding::Utf16LowFirst ? low : high;
      bytes += state_.encoding == Encoding::Utf16LowFirst ? high : low;
    }
    return bytes;
  }

  void WriteList() {
    swr::FileReplacement file;
    uint32_t error = file.Begin(swr::ToLongPath(list_));
    if (error == 0 && state_.exists) error = CopyList(file);
    if (error == 0) error = file.Write(Encoded(newLines_));
    if (error == 0) error = file.Commit();
    if (error != 0) Fail(ErrorMessage(error));
  }

  uint32_t CopyList(swr::FileReplacement& file) {
    LineSource lines;
    if (const uint32_t error = lines.Open(list_)) return error;
    if (const uint32_t error = file.Write(lines.Mark())) return error;
    std::string gathered;
    std::u16string text;
    std::string bytes;
    constexpr size_t piece = 65536;
    for (uint32_t number = 1; lines.Next(text, bytes); ++number) {
      if (run_.options.prune && state_.gone.contains(number)) continue;
      gathered += bytes;
      if (gathered.size() < piece) continue;
      if (const uint32_t error = file.Write(gathered)) return error;
      gathered.clear();
    }
    if (lines.Error() != 0) return lines.Error();
    const bool lacksLineEnd = !state_.endsInLine && !newLines_.empty();
    if (lacksLineEnd) gathered += Encoded(state_.hasCrLf ? "\r\n" : "\n");
    return file.Write(gathered);
  }

  void Summarize() {
    std::u16string text =
        swr::DecimalText(added_) + (added_ == 1 ? u" file added" : u" files added");
    if (run_.options.prune) {
      const size_t gone = state_.gone.size();
      text += u", " + swr::DecimalText(gone) + (gone == 1 ? u" line" : u" lines") + u" dropped";
    }
    run_.console.Err(swr::WideToUtf8(text) + ".\n");
  }

  Run& run_;
  const std::u16string list_;
  ListState state_;
  swr::AlgoMask algorithms_ = 0;
  swr::ExportFormat format_ = swr::ExportFormat::Sha256Sum;
  std::optional<swr::ChecksumWriter> writer_;
  std::string newLines_;
  size_t added_ = 0;
  bool hasFailed_ = false;
};

class Updater::UpdateJob final : public Job {
 public:
  UpdateJob(Updater& updater, SelectedFile file, std::u16string name)
      : updater_(updater), file_(std::move(file)), name_(std::move(name)) {}

  void Run(WorkTools& tools) override {
    const swr::HashOutcome outcome =
        HashSelected(updater_.run_, tools, file_, updater_.algorithms_);
    error_ = outcome.error;
    if (error_ != 0 || outcome.cancelled) return;
    swr::ExportRow row{.name = std::move(name_), .size = outcome.bytesRead};
    for (const swr::AlgoId id : swr::IdsFromMask(updater_.algorithms_)) {
      row.digests.push_back({id, outcome.digests[swr::IndexOf(id)]});
    }
    text_ = updater_.writer_->Row(row);
  }

  void Report() override {
    if (error_ != 0) {
      ReportError(updater_.run_, file_.path, error_);
      updater_.run_.status.NoteError(error_);
      return;
    }
    updater_.newLines_ += text_;
    ++updater_.added_;
  }

 private:
  Updater& updater_;
  SelectedFile file_;
  std::u16string name_;
  std::string text_;
  uint32_t error_ = 0;
};

void Updater::HashNewFiles() {
  writer_.emplace(swr::ExportOptions{.format = format_,
                                     .crLf = state_.hasCrLf,
                                     .exactNames = state_.encoding == Encoding::Bytes},
                  algorithms_);
  if (!state_.exists) newLines_ = writer_->Head();
  const std::u16string fullList = swr::SystemFullPath(list_).value_or(list_);
  const std::u16string folder(swr::SplitPath(fullList).folder);
  RunOverFiles(run_, [&](SelectedFile file) -> std::unique_ptr<Job> {
    if (file.isStandardInput) {
      return MakeReport(
          [this] { Fail(u"standard input has no name and can't be added to a list"); });
    }
    // A file that is selected twice is added once.
    if (!state_.listed.insert(PathIdentity(file.path)).second) return MakeReport([] {});
    const std::u16string full = swr::SystemFullPath(file.path).value_or(file.path);
    std::u16string name = swr::ToForwardSlashes(swr::MakeRelativePath(folder, full));
    return std::make_unique<UpdateJob>(*this, std::move(file), std::move(name));
  });
}

}  // namespace

void RunUpdate(Run& run) { Updater(run).Update(); }

}  // namespace cli
