// What leaves the machine: only an address, on an explicit command, which reveals nothing about a
// file but its digest. Tested in long random use, with names and clipboard contents that would be
// recognised.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "app/desktop/addresses.h"
#include "resources/resource_ids.h"
#include "swr/hash/digest_text.h"
#include "swr/text/encoding.h"
#include "tests/support/fake_window.h"
#include "tests/support/temp_tree.h"

namespace app::testing {
namespace {

using swr::AlgoId;
using swr::testing::TempTree;

constexpr std::u16string_view Secret = u"secret";

// The kinds of event: commands that open a page, the lookup, and everything else.
constexpr uint32_t Pages[] = {ID_HELP_ONLINE, ID_WEBSITE, ID_PROGRAM_FOLDER, ID_CLI_TOOL};
constexpr uint32_t LookUps[] = {IDC_VIRUSTOTAL, ID_CTX_VIRUSTOTAL};
constexpr uint32_t Others[] = {
    ID_ADD_FILES,       ID_ADD_FOLDER,   ID_VERIFY_FILE,    ID_SAVE_CHECKSUMS, ID_COPY_HASHES,
    ID_PASTE_EXPECTED,  ID_SELECT_ALL,   ID_REMOVE,         ID_CLEAR_LIST,     ID_HASH_TEXT,
    ID_UPPERCASE,       ID_SHOW_LEGACY,  ID_INCLUDE_HIDDEN, ID_CRLF,           ID_EXPLORER_MENU,
    ID_SEND_TO,         ID_ABOUT,        ID_CTX_COPY_LINE,  ID_CTX_COPY_ALL,   ID_CTX_COPY_PATH,
    ID_CTX_OPEN_FOLDER, ID_CTX_COMPARE,  ID_CTX_REMOVE,     IDC_PASTE,         IDC_COPY,
    IDC_OPEN_FOLDER,    IDC_CANCEL,      IDC_ALGO_MORE,     IDC_ALGO_MD5,      IDC_ALGO_SHA1,
    IDC_ALGO_SHA256,    IDC_ALGO_SHA512, IDC_ALGO_BLAKE3};

class RandomUse {
 public:
  RandomUse(const TempTree& tree, uint32_t seed) : random_(seed) {
    files_ = {tree.Path(u"secret a"), tree.Path(u"secret b"), tree.Path(u"secret missing"),
              tree.Path(u"secret SHA256SUMS")};
    window_.desktop.saveTarget = SaveTarget{.path = tree.Path(u"secret saved"), .filter = 0};
  }

  void Step() {
    const std::vector<std::u16string> before = window_.desktop.openedAddresses;
    const bool wasPending = window_.lookUp.IsWaiting();
    const EventKind event = RandomEvent();
    const std::vector<std::u16string>& after = window_.desktop.openedAddresses;
    ASSERT_LE(after.size(), before.size() + 1);
    if (after.size() == before.size()) return;
    const std::u16string& address = after.back();
    ASSERT_EQ(address.find(Secret), address.npos) << swr::WideToUtf8(address);
    if (!address.starts_with(VirusTotalFilePage)) {
      ASSERT_EQ(event, EventKind::Page);
      ASSERT_TRUE(address == ProductPage || address == MakerPage) << swr::WideToUtf8(address);
      ++pages;
      return;
    }
    // At once, or when the awaited digest arrived.
    ASSERT_TRUE(event == EventKind::LookUp || (event == EventKind::Result && wasPending));
    ASSERT_LE(++lookUps, requested_);
    const std::u16string digest = address.substr(VirusTotalFilePage.size());
    ASSERT_TRUE(std::ranges::any_of(window_.rows, [&](const Row& row) {
      const swr::DigestSlot& slot = row.digests[swr::IndexOf(AlgoId::Sha256)];
      return slot.present && swr::DigestToWideHex(slot, false) == digest;
    })) << swr::WideToUtf8(address);
  }

  size_t pages = 0;
  size_t lookUps = 0;

 private:
  enum class EventKind { Page, LookUp, Result, Other };

  uint32_t Below(size_t limit) {
    return std::uniform_int_distribution<uint32_t>(0, static_cast<uint32_t>(limit - 1))(random_);
  }
  template <typename List>
  auto OneOf(const List& list) {
    return list[Below(std::size(list))];
  }

  EventKind RandomEvent() {
    FakeDesktop& desktop = window_.desktop;
    desktop.picked = {OneOf(files_)};
    desktop.answer = static_cast<int>(OneOf(std::vector{2, 100, 101, 102}));
    window_.view.selected.clear();
    for (size_t i = 0; i < window_.rows.Size(); ++i) {
      if (Below(3) == 0) window_.view.selected.push_back(i);
    }
    switch (Below(12)) {
      case 0:
        window_.commands.Run(OneOf(Pages));
        return EventKind::Page;
      case 1:
      case 2:
        ++requested_;
        window_.commands.Run(OneOf(LookUps));
        return EventKind::LookUp;
      case 3:
      case 4:
        if (!window_.queue.jobs.empty()) {
          window_.Finish(Below(8) == 0 ? swr::HashOutcome{.error = 5} : swr::HashOutcome{});
        }
        return EventKind::Result;
      case 5:
        window_.adding.AddPaths({OneOf(files_)});
        return EventKind::Other;
      case 6:
        desktop.Copy(OneOf(std::vector<std::u16string>{std::u16string(64, u'a') + u"  secret",
                                                       u"secret", std::u16string(32, u'0')}));
        window_.clipboardWatch.Check();
        return EventKind::Other;
      case 7:
        window_.bannerLinks.Follow(OneOf(std::vector<std::u16string>{u"a", u"r", u"x"}));
        return EventKind::Other;
      case 8:
        window_.details.Refresh();
        window_.intake.OnTimer();
        return EventKind::Other;
      default:
        window_.commands.Run(OneOf(Others));
        return EventKind::Other;
    }
  }

  FakeWindow window_;
  std::mt19937 random_;
  std::vector<std::u16string> files_;
  size_t requested_ = 0;  // lookups that the user requested
};

TEST(PrivacyTest, OnlyCommandsOpenAddressesAndOnlyADigestIsRevealed) {
  TempTree tree;
  tree.AddFile(u"secret a", "a");
  tree.AddFile(u"secret b", "b");
  tree.AddFile(u"secret SHA256SUMS", std::string(64, 'c') + "  secret a\n" + std::string(64, 'd') +
                                         "  ../secret b\n" + std::string(64, 'e') + "  gone\n");
  size_t pages = 0;
  size_t lookUps = 0;
  for (uint32_t seed = 1; seed <= 40; ++seed) {
    RandomUse use(tree, seed);
    for (int step = 0; step < 300; ++step) {
      ASSERT_NO_FATAL_FAILURE(use.Step()) << "seed " << seed << ", step " << step;
    }
    pages += use.pages;
    lookUps += use.lookUps;
  }
  // Each kind happened often enough.
  EXPECT_GT(pages, 300u);
  EXPECT_GT(lookUps, 100u);
}

}  // namespace
}  // namespace app::testing
