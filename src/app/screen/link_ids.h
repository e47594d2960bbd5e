// The ids of the links in banners and at the bottom of the window.
#pragma once

#include <string>
#include <string_view>

namespace app {

// In banners. Every banner can be dismissed; most have a link to accept, some also one to reject.
inline constexpr std::u16string_view AcceptLink = u"a";
inline constexpr std::u16string_view RejectLink = u"r";
inline constexpr std::u16string_view DismissLink = u"x";

// At the bottom of the window.
inline constexpr std::u16string_view CommandLineToolLink = u"cli";
inline constexpr std::u16string_view AboutLink = u"about";

// The markup of a link.
inline std::u16string LinkMarkup(std::u16string_view id, std::u16string_view words) {
  std::u16string markup = u"<a id=\"";
  markup += id;
  markup += u"\">";
  markup += words;
  markup += u"</a>";
  return markup;
}

}  // namespace app
