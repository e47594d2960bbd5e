// The addresses that the program knows. None is ever asked for anything: they are handed to the
// browser, or the mail program, when the user says so.
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

// Whether a link in a message of the program may lead there. A text from outside that found its way
// into the message can hold what looks like a link, to a program as well as to a page.
constexpr bool MayLinkTo(std::u16string_view address) {
  return address == ProductPage ||
         (address.starts_with(MailScheme) && address.substr(MailScheme.size()) == SupportMailbox);
}

}  // namespace app
