// The addresses that the program knows. The program itself never contacts them: it hands them to
// the browser or the mail program when the user asks for it.
#pragma once

#include <string_view>

namespace app {

// Reserved names (RFC 2606) until the product has its own.
inline constexpr std::u16string_view ProductPage = u"https://sumwright.example/";
inline constexpr std::u16string_view MakerPage = u"https://zendrik.example/";
inline constexpr std::u16string_view SupportMailbox = u"support@sumwright.example";
inline constexpr std::u16string_view MailScheme = u"mailto:";  // before a mailbox

// Followed by the SHA-256 digest of a file, in lower-case hexadecimal.
inline constexpr std::u16string_view VirusTotalFilePage = u"https://www.virustotal.com/gui/file/";

// Whether a link in one of the program's messages may be followed. A message can contain untrusted
// text, which could look like a link, even one to a program.
constexpr bool MayLinkTo(std::u16string_view address) {
  return address == ProductPage ||
         (address.starts_with(MailScheme) && address.substr(MailScheme.size()) == SupportMailbox);
}

}  // namespace app
