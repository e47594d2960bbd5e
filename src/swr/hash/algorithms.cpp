#include "swr/hash/algorithms.h"

#include <algorithm>
#include <array>
#include <bit>

namespace swr {
namespace {

constexpr std::array<AlgoInfo, AlgoCount> AlgoCatalogue = {{
    {AlgoId::Crc32, u"CRC32", "crc32", "CRC32", 4, AlgoGroup::Fast, false},
    {AlgoId::Md5, u"MD5", "md5", "MD5", 16, AlgoGroup::General, false},
    {AlgoId::Sha1, u"SHA-1", "sha1", "SHA1", 20, AlgoGroup::General, false},
    {AlgoId::Sha256, u"SHA-256", "sha256", "SHA256", 32, AlgoGroup::General, true},
    {AlgoId::Sha384, u"SHA-384", "sha384", "SHA384", 48, AlgoGroup::General, true},
    {AlgoId::Sha512, u"SHA-512", "sha512", "SHA512", 64, AlgoGroup::General, true},
    {AlgoId::Sha3_256, u"SHA3-256", "sha3-256", "SHA3-256", 32, AlgoGroup::Modern, true},
    {AlgoId::Sha3_384, u"SHA3-384", "sha3-384", "SHA3-384", 48, AlgoGroup::Modern, true},
    {AlgoId::Sha3_512, u"SHA3-512", "sha3-512", "SHA3-512", 64, AlgoGroup::Modern, true},
    {AlgoId::Blake3, u"BLAKE3", "blake3", "BLAKE3", 32, AlgoGroup::Modern, true},
    {AlgoId::Xxh64, u"XXH64", "xxh64", "XXH64", 8, AlgoGroup::Fast, false},
    {AlgoId::Xxh3_64, u"XXH3-64", "xxh3", "XXH3", 8, AlgoGroup::Fast, false},
    {AlgoId::Xxh128, u"XXH128", "xxh128", "XXH128", 16, AlgoGroup::Fast, false},
    {AlgoId::Md2, u"MD2", "md2", "MD2", 16, AlgoGroup::Legacy, false},
    {AlgoId::Md4, u"MD4", "md4", "MD4", 16, AlgoGroup::Legacy, false},
}};

static_assert(
    [] {
      for (size_t i = 0; i < AlgoCount; ++i) {
        if (IndexOf(AlgoCatalogue[i].id) != i) return false;
      }
      return true;
    }(),
    "the index of each row is its AlgoId");

struct Alias {
  std::string_view normalized;
  AlgoId id;
};

// "xxh3_64bits" can never match, because normalized text has no underscores, and "xxh364" also
// matches through the display name. Both are kept so that the list is the complete list of aliases.
constexpr Alias aliases[] = {
    {"b3", AlgoId::Blake3},           {"blake3256", AlgoId::Blake3},
    {"crc", AlgoId::Crc32},           {"xxh364", AlgoId::Xxh3_64},
    {"xxh3_64bits", AlgoId::Xxh3_64}, {"xxh364bits", AlgoId::Xxh3_64},
    {"xxh3128", AlgoId::Xxh128},      {"sha", AlgoId::Sha1},
    {"sha160", AlgoId::Sha1},         {"sha2256", AlgoId::Sha256},
    {"sha2384", AlgoId::Sha384},      {"sha2512", AlgoId::Sha512},
};

std::string Narrow(std::u16string_view text) {
  std::string narrow;
  narrow.reserve(text.size());
  for (const char16_t unit : text) narrow.push_back(static_cast<char>(unit & 0xFF));
  return narrow;
}

struct DigestSizeCandidates {
  size_t bytes;
  std::span<const AlgoId> ids;
};

// Not in catalogue order: the more common algorithms come first.
constexpr AlgoId algosOf4[] = {AlgoId::Crc32};
constexpr AlgoId algosOf8[] = {AlgoId::Xxh64, AlgoId::Xxh3_64};
constexpr AlgoId algosOf16[] = {AlgoId::Md5, AlgoId::Xxh128, AlgoId::Md4, AlgoId::Md2};
constexpr AlgoId algosOf20[] = {AlgoId::Sha1};
constexpr AlgoId algosOf32[] = {AlgoId::Sha256, AlgoId::Sha3_256, AlgoId::Blake3};
constexpr AlgoId algosOf48[] = {AlgoId::Sha384, AlgoId::Sha3_384};
constexpr AlgoId algosOf64[] = {AlgoId::Sha512, AlgoId::Sha3_512};
constexpr DigestSizeCandidates candidatesBySize[] = {
    {4, algosOf4},   {8, algosOf8},   {16, algosOf16}, {20, algosOf20},
    {32, algosOf32}, {48, algosOf48}, {64, algosOf64},
};

std::span<const AlgoId> CandidatesOf(size_t bytes) {
  for (const auto& entry : candidatesBySize) {
    if (entry.bytes == bytes) return entry.ids;
  }
  return {};
}

}  // namespace

std::span<const AlgoInfo> AllAlgos() { return AlgoCatalogue; }

const AlgoInfo& GetAlgo(AlgoId id) { return AlgoCatalogue[IndexOf(id)]; }

std::vector<AlgoId> IdsFromMask(AlgoMask mask) {
  std::vector<AlgoId> ids;
  for (const AlgoInfo& info : AlgoCatalogue) {
    if ((mask & MaskOf(info.id)) != 0) ids.push_back(info.id);
  }
  return ids;
}

uint32_t CountAlgos(AlgoMask mask) { return static_cast<uint32_t>(std::popcount(mask)); }

AlgoMask CandidateMask(std::span<const AlgoId> candidates) {
  AlgoMask mask = 0;
  for (const AlgoId id : candidates) mask |= MaskOf(id);
  return mask;
}

AlgoMask AlgosFromSaved(AlgoMask saved, bool showLegacy) {
  AlgoMask mask = saved == 0 ? DefaultAlgoMask : saved & AllAlgosMask;
  if (!showLegacy) mask &= ~LegacyAlgoMask;
  return mask == 0 ? DefaultAlgoMask : mask;
}

std::string NormalizeAlgoName(std::string_view text) {
  std::string normalized;
  for (const char c : text) {
    if (c == '-' || c == '_' || c == ' ') continue;
    normalized.push_back(c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c);
  }
  return normalized;
}

std::optional<AlgoId> ParseAlgoName(std::string_view text) {
  const std::string wanted = NormalizeAlgoName(text);
  if (wanted.empty()) return std::nullopt;
  for (const AlgoInfo& info : AlgoCatalogue) {
    if (wanted == NormalizeAlgoName(info.tag) || wanted == NormalizeAlgoName(info.upperTag) ||
        wanted == NormalizeAlgoName(Narrow(info.name))) {
      return info.id;
    }
  }
  for (const Alias& alias : aliases) {
    if (wanted == alias.normalized) return alias.id;
  }
  return std::nullopt;
}

std::optional<AlgoId> ParseAlgoName(std::u16string_view text) {
  const bool isAscii = std::all_of(text.begin(), text.end(), [](char16_t c) { return c <= 127; });
  return isAscii ? ParseAlgoName(Narrow(text)) : std::nullopt;
}

std::vector<AlgoId> AlgosForDigestSize(size_t bytes) {
  const std::span<const AlgoId> ids = CandidatesOf(bytes);
  return {ids.begin(), ids.end()};
}

bool IsDigestSizeKnown(size_t bytes) { return !CandidatesOf(bytes).empty(); }

}  // namespace swr
