// Several results that arrive at once: each takes effect, whatever its position in the batch.
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "resources/resource_ids.h"
#include "tests/support/fake_window.h"
#include "tests/support/row_setup.h"

namespace app::testing {
namespace {

using swr::AlgoId;

constexpr swr::AlgoMask Md5 = swr::MaskOf(AlgoId::Md5);
constexpr size_t RowCount = 3;

// Three rows that wait to be hashed with MD5 only.
struct BatchWindow : FakeWindow {
  BatchWindow() {
    algorithms.Select(Md5);
    for (const char16_t* name : {u"a", u"b", u"c"}) AddRow(name, 1);
  }
  // All results of the queue at once, in its order.
  void FinishAll(const std::vector<swr::HashOutcome>& outcomes = {}) {
    std::vector<std::pair<HashJob, swr::HashOutcome>> results;
    for (size_t i = 0; i < queue.jobs.size(); ++i) {
      results.emplace_back(queue.jobs[i], i < outcomes.size() ? outcomes[i] : swr::HashOutcome{});
    }
    queue.jobs.clear();
    ReportAll(std::move(results));
  }
};

TEST(ResultBatchTest, ALookupFindsItsResultAnywhereInTheBatch) {
  for (size_t place = 0; place < RowCount; ++place) {
    SCOPED_TRACE(place);
    BatchWindow window;
    for (size_t i = 0; i < RowCount; ++i) {
      if (i == place) {
        window.view.selected = {i};
        window.commands.Run(IDC_VIRUSTOTAL);
      } else {
        window.hashing.QueueRow(window.rows[i].id, Md5);
      }
    }
    ASSERT_EQ(window.queue.jobs.size(), RowCount);
    window.FinishAll();
    EXPECT_EQ(window.desktop.openedAddresses, std::vector{u"https://www.virustotal.com/gui/file/" +
                                                          FakeDigestText(AlgoId::Sha256)});
    EXPECT_FALSE(window.lookUp.IsWaiting());
  }
}

TEST(ResultBatchTest, TheDetailsShowAResultAnywhereInTheBatch) {
  for (size_t place = 0; place < RowCount; ++place) {
    SCOPED_TRACE(place);
    BatchWindow window;
    window.hashing.QueueAll();
    window.view.selected = {place};
    window.details.Refresh();
    ASSERT_EQ(window.view.details.find(u"MD5"), std::u16string::npos);
    window.FinishAll();
    EXPECT_NE(window.view.details.find(u"MD5:\t" + FakeDigestText(AlgoId::Md5)),
              std::u16string::npos);
  }
}

// The size of a file can change before it is read.
TEST(ResultBatchTest, TheTotalSizeIsUpdatedByEachResult) {
  BatchWindow window;
  window.hashing.QueueAll();
  window.FinishAll({{.bytesRead = 10}, {.error = 5}, {.bytesRead = 300}});
  EXPECT_EQ(window.view.statusText, u"3 files, 311 bytes");
  window.hashing.QueueRow(window.rows[2].id, swr::MaskOf(AlgoId::Sha1));
  window.Finish({.bytesRead = 4});
  EXPECT_EQ(window.view.statusText, u"3 files, 15 bytes") << "the file became shorter";
}

}  // namespace
}  // namespace app::testing
