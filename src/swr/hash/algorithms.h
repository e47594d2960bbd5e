// The catalogue of the fifteen algorithms, sets of algorithms, and lookup by name and by digest
// length.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace swr {

// The row in the catalogue, the bit in an AlgoMask and the index of every per-algorithm array.
// Saved masks contain these numbers, so they never change.
enum class AlgoId : uint8_t {
  Crc32 = 0,
  Md5 = 1,
  Sha1 = 2,
  Sha256 = 3,
  Sha384 = 4,
  Sha512 = 5,
  Sha3_256 = 6,
  Sha3_384 = 7,
  Sha3_512 = 8,
  Blake3 = 9,
  Xxh64 = 10,
  Xxh3_64 = 11,
  Xxh128 = 12,
  Md2 = 13,
  Md4 = 14,
};
inline constexpr size_t AlgoCount = 15;

// Menu groups of the algorithms.
enum class AlgoGroup : uint8_t { General = 0, Modern = 1, Fast = 2, Legacy = 3 };

struct AlgoInfo {
  AlgoId id;
  std::u16string_view name;   // what the user sees
  std::string_view tag;       // lower-case name, for file extensions and JSON
  std::string_view upperTag;  // upper-case name, for BSD tagged lines
  uint32_t digestSize;        // bytes
  AlgoGroup group;
  bool secure;  // suitable for detecting deliberate tampering
};

// A set of algorithms: bit n is the AlgoId n.
using AlgoMask = uint32_t;
inline constexpr AlgoMask AllAlgosMask = 0x7FFF;
inline constexpr AlgoMask LegacyAlgoMask = 0x6000;
inline constexpr AlgoMask DefaultAlgoMask = 14;  // MD5, SHA-1, SHA-256: when no selection is saved
inline constexpr AlgoMask FallbackAlgoMask = 8;  // SHA-256: replaces an empty selection

constexpr size_t IndexOf(AlgoId id) { return static_cast<size_t>(id); }
constexpr AlgoMask MaskOf(AlgoId id) { return AlgoMask{1} << IndexOf(id); }

// All rows, ascending by AlgoId: the order of every list of algorithms in the program.
std::span<const AlgoInfo> AllAlgos();
// `id` must be valid.
const AlgoInfo& GetAlgo(AlgoId id);

// The members of `mask`, ascending.
std::vector<AlgoId> IdsFromMask(AlgoMask mask);
uint32_t CountAlgos(AlgoMask mask);
// The set of these algorithms; 0 for none.
AlgoMask CandidateMask(std::span<const AlgoId> candidates);

// The selection to use for a saved one. 0 means that nothing was saved. Unknown bits are dropped,
// and legacy algorithms too unless `showLegacy` is set; an empty result becomes DefaultAlgoMask.
AlgoMask AlgosFromSaved(AlgoMask saved, bool showLegacy);

// `text` without hyphens, underscores and spaces, and with A to Z in lower case.
std::string NormalizeAlgoName(std::string_view text);
// The algorithm of this name or alias, compared after NormalizeAlgoName; nothing if there is none.
// "sha" is SHA-1; "sha2" and "sha3" alone are unknown. A wide name with a code unit above 127 is
// unknown.
std::optional<AlgoId> ParseAlgoName(std::string_view text);
std::optional<AlgoId> ParseAlgoName(std::u16string_view text);

// The algorithms whose digests have `bytes` bytes, in the order in which they are tried. Empty if
// there are none.
std::vector<AlgoId> AlgosForDigestSize(size_t bytes);
bool IsDigestSizeKnown(size_t bytes);

}  // namespace swr
