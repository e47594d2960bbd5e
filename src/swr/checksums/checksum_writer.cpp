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

void AppendName(std::u16string_view name, const ExportOptions& options, std::string& text) {
  if (options.exactNames) {
    text += NameBytes(name);
  } else {
    AppendUtf8(name, text);
  }
}

void AppendLineName(std::u16string_view name, bool isEscaped, const ExportOptions& options,
                    std::string& text) {
  if (isEscaped) {
    AppendName(EscapeName(name), options, text);
  } else {
    AppendName(name, options, text);
  }
}

const ExportDigest* FindDigest(const ExportRow& row, AlgoId algo) {
  const auto found = std::ranges::find(row.digests, algo, &ExportDigest::algo);
  return found == row.digests.end() ? nullptr : &*found;
}

void AppendSha256SumRow(const ExportRow& row, const ExportOptions& options, std::string& text) {
  const ExportDigest* digest = options.hasAlgo       ? FindDigest(row, options.algo)
                               : row.digests.empty() ? nullptr
                                                     : &row.digests.front();
  if (digest == nullptr) return;
  // A backslash at the start of the line shows that the name is escaped.
  const bool isEscaped = NameNeedsEscape(row.name);
  if (isEscaped) text += '\\';
  if (digest->algo == AlgoId::Xxh3_64) text += "XXH3_";
  AppendHex(digest->digest.View(), options.uppercase, text);
  text += "  ";
  AppendLineName(row.name, isEscaped, options, text);
  text += LineEnd(options);
}

void AppendTaggedRow(const ExportRow& row, const ExportOptions& options, std::string& text) {
  const bool isEscaped = NameNeedsEscape(row.name);
  for (const ExportDigest& digest : row.digests) {
    if (isEscaped) text += '\\';
    text += GetAlgo(digest.algo).upperTag;
    text += " (";
    AppendLineName(row.name, isEscaped, options, text);
    text += ") = ";
    AppendHex(digest.digest.View(), options.uppercase, text);
    text += LineEnd(options);
  }
}

void AppendSfvRow(const ExportRow& row, const ExportOptions& options, std::string& text) {
  for (const ExportDigest& digest : row.digests) {
    if (digest.algo != AlgoId::Crc32) continue;
    AppendName(row.name, options, text);
    text += ' ';
    AppendHex(digest.digest.View(), true, text);
    text += LineEnd(options);
  }
}

// RFC 4180.
void AppendCsvField(std::u16string_view name, const ExportOptions& options, std::string& text) {
  const size_t start = text.size();
  AppendName(name, options, text);
  if (text.find_first_of(",\"\r\n", start) == text.npos) return;
  const std::string plain = text.substr(start);
  text.resize(start);
  text += '"';
  for (const char byte : plain) {
    if (byte == '"') text += '"';
    text += byte;
  }
  text += '"';
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

void AppendCsvRow(const ExportRow& row, const std::vector<AlgoId>& columns,
                  const ExportOptions& options, std::string& text) {
  AppendCsvField(row.name, options, text);
  text += ',';
  text += std::to_string(row.size);
  for (const AlgoId algo : columns) {
    text += ',';
    const ExportDigest* digest = FindDigest(row, algo);
    if (digest != nullptr) AppendHex(digest->digest.View(), options.uppercase, text);
  }
  text += LineEnd(options);
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

// The JSON text is UTF-8, but its escapes can represent what UTF-8 can't: half of a surrogate pair.
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

void AppendJsonRow(const ExportRow& row, const ExportOptions& options, std::string& text) {
  text += "  {\"path\": ";
  text += JsonString(row.name, options);
  text += ", \"size\": ";
  text += std::to_string(row.size);
  for (const ExportDigest& digest : row.digests) {
    text += ", \"";
    text += GetAlgo(digest.algo).tag;
    text += "\": \"";
    AppendHex(digest.digest.View(), options.uppercase, text);
    text += '"';
  }
  text += '}';
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
  std::string text;
  AppendRow(row, text);
  return text;
}

void ChecksumWriter::AppendRow(const ExportRow& row, std::string& text) const {
  switch (options_.format) {
    case ExportFormat::Sha256Sum:
      AppendSha256SumRow(row, options_, text);
      break;
    case ExportFormat::Tagged:
      AppendTaggedRow(row, options_, text);
      break;
    case ExportFormat::Sfv:
      AppendSfvRow(row, options_, text);
      break;
    case ExportFormat::Csv:
      AppendCsvRow(row, columns_, options_, text);
      break;
    case ExportFormat::Json:
      AppendJsonRow(row, options_, text);
      break;
  }
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
    writer.AppendRow(rows[i], text);
  }
  return text + writer.Tail(!rows.empty());
}

std::u16string ExtensionForAlgo(AlgoId id) {
  if (id == AlgoId::Blake3) return u".b3";
  const std::string_view tag = GetAlgo(id).tag;
  return u"." + std::u16string(tag.begin(), tag.end());
}

}  // namespace swr
