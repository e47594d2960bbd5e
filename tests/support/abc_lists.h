// Checksum files of three small files with published digests, for tests of verification.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "tests/support/fake_window.h"
#include "tests/support/temp_tree.h"

namespace app::testing {

using TextList = std::vector<std::u16string>;

// The digests of "abc", from the standards.
inline const std::string AbcCrc32 = "352441c2";
inline const std::string AbcMd5 = "900150983cd24fb0d6963f7d28e17f72";
inline const std::string AbcSha1 = "a9993e364706816aba3e25717850c26c9cd0d89d";
inline const std::string AbcSha256 =
    "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad";
inline const std::string AbcSha3 =
    "3a985da74fe225b2045c172d6bd390bd855f086e3e9d525b46bfe24511431532";
inline const std::string AbcBlake3 =
    "6437b3ac38465133ffb63b75273a8db548c558465d79db03fd359c6cd5bd9d85";
inline const std::string Zeros(64, '0');

// An empty window, and a folder with the files "a.bin", "b.bin" and "c.bin", each of which holds
// "abc".
class VerificationTest : public ::testing::Test {
 protected:
  VerificationTest() {
    for (const char16_t* name : {u"a.bin", u"b.bin", u"c.bin"}) tree.AddFile(name, "abc");
  }

  // Writes the checksum file, loads it and returns its path.
  std::u16string Load(std::u16string_view name, std::string_view bytes) {
    const std::u16string path = tree.AddFile(name, bytes);
    window.verification.VerifyFile(path);
    return path;
  }
  TextList StatusCells() const {
    TextList cells;
    for (size_t i = 0; i < window.rows.Size(); ++i) cells.push_back(window.StatusCell(i));
    return cells;
  }
  TextList Names() const {
    TextList names;
    for (const Row& row : window.rows) names.push_back(row.Name());
    return names;
  }

  swr::testing::TempTree tree;
  FakeWindow window;
};

inline std::string Line(std::string_view hash, std::string_view name) {
  return std::string(hash) + "  " + std::string(name) + "\n";
}

}  // namespace app::testing
