// Carries out clicks on the links in banners.
#pragma once

#include <string_view>

#include "app/flows/banners.h"
#include "app/flows/clipboard_watch.h"
#include "app/flows/list_edits.h"
#include "app/flows/shell_entries.h"
#include "app/flows/verification.h"
#include "app/screen/expected_view.h"

namespace app {

class BannerLinks {
 public:
  // All must outlive the object.
  BannerLinks(Banners& banners, ClipboardWatch& clipboard, ListEdits& edits,
              Verification& verification, ShellEntries& shellEntries, ExpectedView& expected);

  // `link` is one of the ids in link_ids.h.
  void Follow(std::u16string_view link);

 private:
  Banners& banners_;
  ClipboardWatch& clipboard_;
  ListEdits& edits_;
  Verification& verification_;
  ShellEntries& shellEntries_;
  ExpectedView& expected_;
};

}  // namespace app
