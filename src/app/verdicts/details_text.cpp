#include "app/verdicts/details_text.h"

#include <string_view>

#include "swr/hash/digest_text.h"
#include "swr/paths/path_forms.h"
#include "swr/system/local_time.h"
#include "swr/text/decimal_text.h"
#include "swr/text/display_escape.h"
#include "swr/text/display_text.h"

namespace app {
namespace {

// "1,572,864".
std::u16string GroupedText(uint64_t value) {
  std::u16string text = swr::DecimalText(value);
  for (size_t place = text.size(); place > 3;) text.insert(place -= 3, 1, u',');
  return text;
}

// FormatSize is exact below this.
constexpr uint64_t FirstRoundedSize = 1024;

std::u16string SizeText(uint64_t bytes) {
  const std::u16string text = swr::FormatSize(bytes);
  return bytes < FirstRoundedSize ? text : text + u" (" + GroupedText(bytes) + u" bytes)";
}

// "2026-01-15 09:30".
std::u16string TimeText(const swr::CalendarTime& time) {
  const auto padded = [](uint32_t value, size_t width) {
    const std::u16string digits = swr::DecimalText(value);
    return std::u16string(digits.size() < width ? width - digits.size() : 0, u'0') + digits;
  };
  return padded(time.year, 4) + u'-' + padded(time.month, 2) + u'-' + padded(time.day, 2) + u' ' +
         padded(time.hour, 2) + u':' + padded(time.minute, 2);
}

std::u16string ExpectedValueText(const Row& row, bool uppercase) {
  const std::string hex = swr::BytesToHex(row.extras->expectedBytes, uppercase);
  std::u16string text(hex.begin(), hex.end());
  text += u" (";
  text += swr::EscapeForDisplay(swr::SplitPath(*row.extras->checksumFile).name);
  return text + u", line " + swr::DecimalText(row.extras->checksumLine) + u")";
}

// The outcome of a finished check.
std::u16string SignatureResultText(const swr::SignatureResult& signature) {
  const std::u16string catalogNote = signature.viaCatalog ? u" (through a Windows catalog)" : u"";
  switch (signature.state) {
    case swr::SignatureState::NotApplicable:
      return u"Not applicable (this file type has no digital signature)";
    case swr::SignatureState::NotSigned:
      return u"Not signed";
    case swr::SignatureState::Valid:
      return u"Signed by " + signature.signer + catalogNote + u", valid";
    case swr::SignatureState::Invalid:
      return u"Signed" + (signature.signer.empty() ? u"" : u" by " + signature.signer) +
             u", but the signature is not valid (the file was changed after signing)";
    case swr::SignatureState::Untrusted:
      return u"Signed by " + signature.signer + catalogNote +
             u", but Windows doesn't trust the certificate";
    case swr::SignatureState::Unknown:
      break;
  }
  return u"Can't be checked";
}

std::u16string SignatureText(const Row& row) {
  return row.signatureRequested || !row.extras->signature
             ? u"Checking..."
             : SignatureResultText(*row.extras->signature);
}

// Where the file was downloaded from, if that was recorded.
std::u16string OriginText(const swr::ZoneRecord& zone) {
  if (!zone.hostUrl.empty()) return zone.hostUrl;
  if (!zone.referrerUrl.empty()) return zone.referrerUrl;
  return zone.zoneId == swr::InternetZone ? u"the Internet (no address recorded)"
                                          : u"another computer (no address recorded)";
}

}  // namespace

std::u16string RowDetailsText(const Row& row, bool uppercase) {
  std::u16string text = swr::EscapeForDisplay(row.Name());
  const auto add = [&](std::u16string_view label, std::u16string_view value) {
    text += u"\r\n";
    text += label;
    text += u":\t";
    text += value;
  };
  add(u"Folder", swr::EscapeForDisplay(row.Folder()));
  if (row.status == RowStatus::Failed) {
    add(u"Error", swr::FormatErrorText(row.error) + u".");
  } else {
    add(u"Size", SizeText(row.size));
    if (const auto time = swr::ToLocalTime(row.modified)) add(u"Modified", TimeText(*time));
    for (const swr::AlgoId id : PresentAlgos(row, swr::AllAlgosMask)) {
      add(swr::GetAlgo(id).name, swr::DigestToWideHex(row.digests[swr::IndexOf(id)], uppercase));
    }
    add(u"Signature", swr::EscapeForDisplay(SignatureText(row)));
    if (row.extras->zone && row.extras->zone->found) {
      add(u"Downloaded from", swr::EscapeForDisplay(OriginText(*row.extras->zone)));
      if (!row.extras->zone->hostUrl.empty() && !row.extras->zone->referrerUrl.empty()) {
        add(u"From the page", swr::EscapeForDisplay(row.extras->zone->referrerUrl));
      }
    }
  }
  if (row.hasExpected) add(u"Expected", ExpectedValueText(row, uppercase));
  return text;
}

std::u16string SelectionText(size_t rows, uint64_t totalSize) {
  return swr::DecimalText(rows) + u" files selected, " + swr::FormatSize(totalSize) + u" in total.";
}

std::u16string NoSelectionText(size_t rows) {
  if (rows == 0) return {};
  return swr::DecimalText(rows) + u" files. Select one to see its details.";
}

}  // namespace app
