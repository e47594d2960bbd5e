#include "app/dialogs/about.h"

#include "app/desktop/addresses.h"
#include "resources/resource_ids.h"
#include "version.h"

namespace app {
namespace {

constexpr char16_t Copyright[] = u"Copyright \u00A9 2026 the Sumwright authors";
constexpr char16_t Licences[] =
    u"XXH64, XXH3 and XXH128 come from xxHash (BSD 2-Clause licence), BLAKE3 from the BLAKE3 "
    u"reference library (CC0 1.0 or Apache 2.0 licence). CRC32, SHA-3 and the icons are "
    u"Sumwright's own (MIT licence). The other algorithms come from Windows.";

std::u16string Link(std::u16string_view address, std::u16string_view words) {
  return u"<a href=\"" + std::u16string(address) + u"\">" + std::u16string(words) + u"</a>";
}

}  // namespace

TaskDialogSpec AboutDialog(const std::u16string& locationLine) {
  return {
      .title = u"About Sumwright",
      .mainInstruction = u"Sumwright " SUMWRIGHT_VERSION,
      .content = std::u16string(Copyright) + u"\nFreeware from Zendrik.\n\n" + locationLine +
                 u"\n\n" + Link(ProductPage, ProductPage) + u"\n" +
                 Link(std::u16string(MailScheme) + std::u16string(SupportMailbox), SupportMailbox),
      .footer = Licences,
      .customIcon = IDI_APP};
}

}  // namespace app
