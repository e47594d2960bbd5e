#include <gtest/gtest.h>

#include <algorithm>

#include "app/desktop/addresses.h"
#include "resources/resource_ids.h"
#include "swr/text/encoding.h"
#include "swr/text/text.h"
#include "tests/support/random_window.h"
#include "tests/support/row_setup.h"

namespace app::testing {

using swr::AlgoId;

namespace {

constexpr char16_t EntryCommand[] = u"Software\\Classes\\*\\shell\\ZendrikSumwright\\command";

}  // namespace

// ---- The list.

std::string RandomWindow::SelectRows() {
  std::set<size_t> chosen;
  const size_t count = reference_.rows.size();
  for (size_t wanted = std::min(count, Pick(3)); wanted > 0; --wanted) chosen.insert(Pick(count));
  Select(std::move(chosen));
  return "rows selected";
}

void RandomWindow::Select(std::set<size_t> chosen) {
  window_.view.selected.assign(chosen.begin(), chosen.end());
  window_.details.Refresh();
  reference_.selection = std::move(chosen);
  reference_.shownDetails = reference_.Details();
}

std::string RandomWindow::Sort() {
  const size_t column = Pick(window_.view.columns.size());
  const std::u16string heading = window_.view.columns[column].heading;
  reference_.SortBy(heading);
  window_.sorting.SortBy(column);
  return "sorted by " + swr::WideToUtf8(heading);
}

std::string RandomWindow::LookUp() {
  const size_t count = reference_.rows.size();
  if (count > 0 && !OneIn(4)) Select({Pick(count)});
  reference_.LookUp();
  window_.commands.Run(OneIn(2) ? IDC_VIRUSTOTAL : ID_CTX_VIRUSTOTAL);
  return "looked up";
}

std::string RandomWindow::CompareTwo() {
  const size_t count = reference_.rows.size();
  if (count < 2) return AddFiles();
  const size_t anchor = Pick(count);
  Select({anchor, (anchor + 1 + Pick(count - 1)) % count});
  const size_t first = *reference_.selection.begin();
  const size_t second = *reference_.selection.rbegin();
  if (reference_.CompareTwo(first, second)) {
    messages_.push_back(u"The two files are different.");
  } else if (const auto answer = reference_.TakeComparison()) {
    messages_.push_back(*answer);
  }
  window_.commands.Run(ID_CTX_COMPARE);
  return "two files compared";
}

std::string RandomWindow::ChangeCase() {
  reference_.uppercase = !reference_.uppercase;
  reference_.shownDetails = reference_.Details();
  window_.commands.Run(ID_UPPERCASE);
  return "uppercase";
}

// ---- The box, the clipboard and the banner.

ReferenceBox RandomWindow::PickBox() {
  if (OneIn(8)) return {.isEmpty = false, .claim = std::nullopt, .text = u"rubbish"};
  const AlgoId algo = PickAlgo();
  const uint8_t fill = PickFill();
  ReferenceClaim claim = {.bytes = DigestOf(algo, fill)};
  std::u16string text = FilledHex(claim.bytes.size(), fill);
  claim.isNamed = OneIn(3);
  claim.algos = claim.isNamed ? std::vector{algo} : ReferenceAlgosOfSize(claim.bytes.size());
  if (OneIn(2) || claim.isNamed) {
    claim.fileName = RandomFiles::Names[Pick(RandomFiles::NameCount)];
  }
  if (claim.isNamed) {
    text = swr::Utf8ToWide(swr::GetAlgo(algo).upperTag) + u" (" + claim.fileName + u") = " + text;
  } else if (!claim.fileName.empty()) {
    text += u"  " + claim.fileName;
  }
  return {.isEmpty = false, .claim = std::move(claim), .text = std::move(text)};
}

std::string RandomWindow::EditBox() {
  ReferenceBox box;
  if (OneIn(5)) {
    box.text = u" \t";
  } else if (OneIn(4)) {
    box = reference_.box;
    box.text += u"\n";
  } else {
    box = PickBox();
  }
  reference_.EditBox(box);
  window_.view.SetExpectedText(box.text);
  return "box: " + swr::WideToUtf8(box.text);
}

std::string RandomWindow::UseClipboard() {
  if (OneIn(4)) {
    reference_.Paste();
    window_.commands.Run(IDC_PASTE);
    return "pasted";
  }
  if (!OneIn(4)) {
    ReferenceBox box = OneIn(4) ? reference_.box : PickBox();
    if (!OneIn(3)) box.text += u"\r\n";
    reference_.Copy({.text = box.text, .box = box});
    window_.desktop.Copy(box.text);
  }
  reference_.Activate();
  window_.clipboardWatch.Check();
  return "window activated, clipboard: " +
         swr::WideToUtf8(window_.desktop.clipboard.value_or(u"nothing"));
}

std::string RandomWindow::FindStaleEntry() {
  window_.installSystem.registry[FakeInstallSystem::User(EntryCommand, u"")] =
      u"\"C:\\gone\\Sumwright.exe\" \"%1\"";
  reference_.FindStaleEntry();
  window_.shellEntries.OfferRepair();
  return "a stale entry found";
}

std::string RandomWindow::FollowBannerLink() {
  if (reference_.banner == ReferenceBanner::None && !OneIn(4)) return UseClipboard();
  const std::u16string link = OneIn(3) ? u"x" : OneIn(3) ? u"r" : u"a";
  const bool loads = reference_.banner == ReferenceBanner::ChecksumFileOffer && link != u"x";
  const auto running = RunningJob();
  reference_.FollowBannerLink(link);
  if (loads) {
    LoadWrittenList();
    ExpectLateResult(running);
  }
  window_.bannerLinks.Follow(link);
  return "link " + swr::WideToUtf8(link);
}

// ---- What is visible.

void RandomWindow::Check() {
  Repaint();
  ASSERT_EQ(window_.rows.Size(), reference_.rows.size());
  EXPECT_EQ(window_.view.rowCount, reference_.rows.size());
  for (size_t i = 0; i < reference_.rows.size(); ++i) {
    SCOPED_TRACE("row " + std::to_string(i));
    const ReferenceFileRow& row = reference_.rows[i];
    EXPECT_EQ(window_.rows[i].id, row.id);
    EXPECT_EQ(window_.StatusCell(i), reference_.StatusCell(row));
    EXPECT_EQ(window_.cells.TintOf(i), reference_.Tint(row));
    EXPECT_TRUE(picture_[i] == Painted(i)) << "the screen is out of date";
  }
  EXPECT_EQ(window_.Result(), reference_.Line());
  EXPECT_EQ(window_.view.details, reference_.shownDetails);
  if (const auto status = reference_.IdleStatus()) {
    EXPECT_EQ(window_.view.statusText, *status);
  }
  EXPECT_EQ(window_.view.banner, reference_.BannerText());
  EXPECT_EQ(swr::TrimText(window_.view.expectedText), swr::TrimText(reference_.box.text));
  EXPECT_EQ(EntryOfWindow(), reference_.entry);
  EXPECT_EQ(Jobs(), reference_.jobs);
  std::vector<std::u16string> instructions;
  for (const TaskDialogSpec& spec : window_.desktop.messages) {
    instructions.push_back(spec.mainInstruction);
  }
  EXPECT_EQ(instructions, messages_);
  std::vector<std::u16string> pages;
  if (const auto opened = reference_.TakeOpenedPage()) {
    pages.push_back(std::u16string(VirusTotalFilePage) + ReferenceHex(*opened, false));
  }
  EXPECT_EQ(window_.desktop.openedAddresses, pages);
}

RandomWindow::Look RandomWindow::Painted(size_t row) const {
  return {window_.cells.TextOf(row, 0), window_.StatusCell(row), window_.cells.TintOf(row)};
}

void RandomWindow::TakePicture() {
  picture_.clear();
  for (size_t i = 0; i < window_.rows.Size(); ++i) picture_.push_back(Painted(i));
}

void RandomWindow::Repaint() {
  if (window_.view.listPaints != paintsBefore_) {
    TakePicture();
    return;
  }
  for (const size_t row : window_.view.redrawn) picture_.at(row) = Painted(row);
}

std::deque<ReferenceJob> RandomWindow::Jobs() const {
  std::deque<ReferenceJob> jobs;
  for (const HashJob& job : window_.queue.jobs) {
    const std::vector<AlgoId> ids = swr::IdsFromMask(job.mask);
    jobs.push_back({job.rowId, {ids.begin(), ids.end()}});
  }
  return jobs;
}

ReferenceEntry RandomWindow::EntryOfWindow() const {
  switch (window_.installation.GetExplorerState()) {
    case ExplorerState::ThisCopy:
      return ReferenceEntry::ThisCopy;
    case ExplorerState::Stale:
      return ReferenceEntry::MissingCopy;
    default:
      return ReferenceEntry::None;
  }
}

}  // namespace app::testing
