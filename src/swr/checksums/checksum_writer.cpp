#include "swr/checksums/checksum_writer.h"

#include <algorithm>
#include <string_view>

#include "swr/checksums/name_escape.h"
#include "swr/hash/digest_text.h"
#include "swr/system/name_bytes.h"
#include "swr/text/encoding.h"

namespace swr {
namespace {

std::string_view LineEnd(const ExportOptions& options) { return options.crLf ? "\r\n" : "\n"; }

std::string EncodeName(std::u16string_view name, const ExportOptions& options) {
  return options.exactNames ? NameBytes(name) : WideToUtf8(name);
}

// A name, escaped if necessary, and the mark at the start of the line that says so.
struct LineName {
  LineName(std::u16string_view name, const ExportOptions& options)
      : mark(NameNeedsEscape(name) ? "\\" : ""),
        text(NameNeedsEscape(name) ? EncodeName(EscapeName(name), options)
                                   : EncodeName(name, options)) {}

  std::string_view mark;
  std::string text;
};

const ExportDigest* FindDigest(const ExportRow& row, AlgoId algo) {
  const auto found = std::ranges::find(row.digests, algo, &ExportDigest::algo);
  return found == row.digests.end() ? nullptr : &*found;
}

std::string Sha256SumRow(const ExportRow& row, const ExportOptions& options) {
  const ExportDigest* digest = options.hasAlgo       ? FindDigest(row, options.algo)
                               : row.digests.empty() ? nullptr
                                                     : &row.digests.front();
  if (digest == nullptr) return {};
  const LineName name(row.name, options);
  std::string text(name.mark);
  if (digest->algo == AlgoId::Xxh3_64) text += "XXH3_";
  text += DigestToHex(digest->digest, options.uppercase);
  text += "  ";
  text += name.text;
  text += LineEnd(options);
  return text;
}

std::string TaggedRow(const ExportRow& row, const ExportOptions& options) {
  std::string text;
  const LineName name(row.name, options);
  for (const ExportDigest& digest : row.digests) {
    text += name.mark;
    text += GetAlgo(digest.algo).upperTag;
    text += " (";
    text += name.text;
    text += ") = ";
    text += DigestToHex(digest.digest, options.uppercase);
    text += LineEnd(options);
  }
  return text;
}

std::string SfvRow(const ExportRow& row, const ExportOptions& options) {
  std::string text;
  for (const ExportDigest& digest : row.digests) {
    if (digest.algo != AlgoId::Crc32) continue;
    text += EncodeName(row.name, options);
    text += ' ';
    text += DigestToHex(digest.digest, true);
    text += LineEnd(options);
  }
  return text;
}

// RFC 4180.
std::string CsvField(std::string text) {
  if (text.find_first_of(",\"\r\n") == text.npos) return text;
  std::string quoted = "\"";
  for (const char byte : text) {
    if (byte == '"') quoted += '"';
    quoted += byte;
  }
  return quoted + '"';
}

std::string CsvHead(const std::vector<AlgoId>& columns, const ExportOptions& options) {
  std::string text = "Path,Size";
  for (const AlgoId algo : columns) {
    text += ',';
    text += WideToUtf8(GetAlgo(algo).name);
  }
  text += LineEnd(options);
  return text;
}

std::string CsvRow(const ExportRow& row, const std::vector<AlgoId>& columns,
                   const ExportOptions& options) {
  std::string text = CsvField(EncodeName(row.name, options));
  text += ',';
  text += std::to_string(row.size);
  for (const AlgoId algo : columns) {
    text += ',';
    const ExportDigest* digest = FindDigest(row, algo);
    if (digest != nullptr) text += DigestToHex(digest->digest, options.uppercase);
  }
  text += LineEnd(options);
  return text;
}

constexpr std::string_view hexDigits = "0123456789abcdef";

// RFC 8259.
void AppendJsonText(std::string_view text, std::string& json) {
  for (const char byte : text) {
    switch (byte) {
      case '\t':
        json += "\\t";
        break;
      case '\n':
        json += "\\n";
        break;
      case '\r':
        json += "\\r";
        break;
      case '"':
      case '\\':
        json += '\\';
        json += byte;
        break;
      default:
        if (const auto value = static_cast<uint8_t>(byte); value < 0x20) {
          json += "\\u00";
          json += hexDigits[value >> 4];
          json += hexDigits[value & 15];
        } else {
          json += byte;
        }
    }
  }
}

constexpr bool IsHighSurrogate(char16_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
constexpr bool IsLowSurrogate(char16_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

// JSON is UTF-8 throughout, but its escapes can say what UTF-8 can't: half of a surrogate pair.
std::string JsonString(std::u16string_view name, const ExportOptions& options) {
  std::string json = "\"";
  while (!name.empty()) {
    size_t length = 0;
    while (length < name.size()) {
      const char16_t unit = name[length];
      const bool isPair =
          IsHighSurrogate(unit) && length + 1 < name.size() && IsLowSurrogate(name[length + 1]);
      const bool isHalf = !isPair && (IsHighSurrogate(unit) || IsLowSurrogate(unit));
      if (options.exactNames && isHalf) break;
      length += isPair ? 2 : 1;
    }
    AppendJsonText(WideToUtf8(name.substr(0, length)), json);
    name.remove_prefix(length);
    if (name.empty()) break;
    json += "\\u";
    for (int shift = 12; shift >= 0; shift -= 4) json += hexDigits[name[0] >> shift & 15];
    name.remove_prefix(1);
  }
  return json + '"';
}

std::string JsonRow(const ExportRow& row, const ExportOptions& options) {
  std::string text = "  {\"path\": ";
  text += JsonString(row.name, options);
  text += ", \"size\": ";
  text += std::to_string(row.size);
  for (const ExportDigest& digest : row.digests) {
    text += ", \"";
    text += GetAlgo(digest.algo).tag;
    text += "\": \"";
    text += DigestToHex(digest.digest, options.uppercase);
    text += '"';
  }
  return text + '}';
}

}  // namespace

ChecksumWriter::ChecksumWriter(const ExportOptions& options, AlgoMask columns)
    : options_(options), columns_(IdsFromMask(columns)) {}

std::string ChecksumWriter::Head() const {
  const std::string lineEnd(LineEnd(options_));
  switch (options_.format) {
    case ExportFormat::Sfv:
      return "; Generated by Sumwright" + lineEnd;
    case ExportFormat::Csv:
      return CsvHead(columns_, options_);
    case ExportFormat::Json:
      return "[" + lineEnd;
    default:
      return {};
  }
}

std::string ChecksumWriter::Row(const ExportRow& row) const {
  switch (options_.format) {
    case ExportFormat::Sha256Sum:
      return Sha256SumRow(row, options_);
    case ExportFormat::Tagged:
      return TaggedRow(row, options_);
    case ExportFormat::Sfv:
      return SfvRow(row, options_);
    case ExportFormat::Csv:
      return CsvRow(row, columns_, options_);
    case ExportFormat::Json:
      return JsonRow(row, options_);
  }
  return {};
}

std::string ChecksumWriter::Between() const {
  return options_.format == ExportFormat::Json ? "," + std::string(LineEnd(options_)) : "";
}

std::string ChecksumWriter::Tail(bool hasRows) const {
  if (options_.format != ExportFormat::Json) return {};
  const std::string lineEnd(LineEnd(options_));
  return (hasRows ? lineEnd : "") + "]" + lineEnd;
}

std::string RenderChecksums(const std::vector<ExportRow>& rows, const ExportOptions& options) {
  AlgoMask columns = 0;
  if (options.format == ExportFormat::Csv) {
    for (const ExportRow& row : rows) {
      for (const ExportDigest& digest : row.digests) columns |= MaskOf(digest.algo);
    }
  }
  const ChecksumWriter writer(options, columns);
  std::string text = writer.Head();
  for (size_t i = 0; i < rows.size(); ++i) {
    if (i > 0) text += writer.Between();
    text += writer.Row(rows[i]);
  }
  return text + writer.Tail(!rows.empty());
}

std::u16string ExtensionForAlgo(AlgoId id) {
  if (id == AlgoId::Blake3) return u".b3";
  const std::string_view tag = GetAlgo(id).tag;
  return u"." + std::u16string(tag.begin(), tag.end());
}

}  // namespace swr
