// Rows as tests describe them in tables, with digests whose bytes are all the same.
#pragma once

#include <algorithm>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/rows/row.h"
#include "swr/hash/algorithms.h"
#include "tests/support/fake_window.h"

namespace app::testing {

// The digest of `algo` with this value in each byte.
struct FilledDigest {
  swr::AlgoId algo = {};
  uint8_t fill = 0;
};

inline std::vector<FilledDigest> Filled(std::initializer_list<swr::AlgoId> algos, uint8_t fill) {
  std::vector<FilledDigest> digests;
  for (const swr::AlgoId id : algos) digests.push_back({id, fill});
  return digests;
}

inline std::vector<uint8_t> FilledBytes(size_t count, uint8_t fill) {
  return std::vector<uint8_t>(count, fill);
}

inline std::u16string FilledHex(size_t bytes, uint8_t fill) {
  constexpr std::u16string_view digits = u"0123456789abcdef";
  std::u16string text;
  for (size_t i = 0; i < bytes; ++i) {
    text += digits[fill >> 4];
    text += digits[fill & 15];
  }
  return text;
}

inline void PutDigest(RowState& row, const FilledDigest& digest) {
  swr::DigestSlot slot;
  slot.present = true;
  slot.length = static_cast<uint8_t>(swr::GetAlgo(digest.algo).digestSize);
  std::fill_n(slot.bytes.begin(), slot.length, digest.fill);
  row.digests.Set(swr::IndexOf(digest.algo), slot);
}

inline void Expect(RowState& row, std::vector<uint8_t> bytes, std::vector<swr::AlgoId> algos) {
  row.hasExpected = true;
  row.extras.Make().expectedBytes = std::move(bytes);
  row.extras.Make().expectedAlgos = std::move(algos);
  row.extras.Make().checksumFile = std::make_shared<const std::u16string>(u"C:\\SHA256SUMS");
  row.extras.Make().checksumLine = 1;
}

struct RowSetup {
  std::u16string name;
  std::vector<FilledDigest> digests;
  RowStatus status = RowStatus::Done;
  uint32_t error = 0;
  // Sets the expected digest from a checksum file: SHA-256, with this value in each byte.
  std::optional<uint8_t> expected;
};

inline Row& AddRow(FakeWindow& window, const RowSetup& setup) {
  Row& row = window.AddRow(setup.name);
  row.status = setup.status;
  row.error = setup.error;
  for (const FilledDigest& digest : setup.digests) PutDigest(row, digest);
  if (setup.expected) Expect(row, FilledBytes(32, *setup.expected), {swr::AlgoId::Sha256});
  window.Recount();
  return row;
}

}  // namespace app::testing
