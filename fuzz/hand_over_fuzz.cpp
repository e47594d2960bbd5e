// Parses the message in which a second instance hands over its paths; any process can send one.
#include <vector>

#include "app/instance/hand_over.h"
#include "fuzz/fuzz_input.h"
#include "fuzz/require.h"

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using fuzz::Require;
  // A copy of exactly this size, so that reading beyond its end is detected.
  const std::vector<std::byte> payload(reinterpret_cast<const std::byte*>(data),
                                       reinterpret_cast<const std::byte*>(data) + size);
  Require(!app::ReadHandOver(0, payload), "messages without the mark are ignored");
  const auto paths = app::ReadHandOver(app::HandOverMark, payload);
  Require(paths.has_value() == (size % 2 == 0), "a message consists of whole code units");
  if (!paths) return 0;
  size_t units = 0;
  for (const std::u16string& path : *paths) {
    Require(!path.empty(), "no path is empty");
    Require(path.find(u'\0') == path.npos, "a path ends at its terminator");
    units += path.size();
  }
  Require(units <= size / 2, "no code unit is added");
  const std::u16string again = app::HandOverPayload(*paths);
  Require(app::ReadHandOver(app::HandOverMark, std::as_bytes(std::span(again))) == paths,
          "a message is read back as it was sent");
  return 0;
}
