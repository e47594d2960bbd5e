// The message with which a second instance hands its paths over; any process can send one.
#include <vector>

#include "app/instance/hand_over.h"
#include "fuzz/fuzz_input.h"
#include "fuzz/require.h"

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using fuzz::Require;
  // A copy of exactly this size, so that a look beyond its end is seen.
  const std::vector<std::byte> payload(reinterpret_cast<const std::byte*>(data),
                                       reinterpret_cast<const std::byte*>(data) + size);
  Require(!app::ReadHandOver(0, payload), "only our mark counts");
  const auto paths = app::ReadHandOver(app::HandOverMark, payload);
  Require(paths.has_value() == (size % 2 == 0), "half a unit is no message of ours");
  if (!paths) return 0;
  size_t units = 0;
  for (const std::u16string& path : *paths) {
    Require(!path.empty(), "an empty path is left out");
    Require(path.find(u'\0') == path.npos, "a path ends at its terminator");
    units += path.size();
  }
  Require(units <= size / 2, "nothing is added");
  const std::u16string again = app::HandOverPayload(*paths);
  Require(app::ReadHandOver(app::HandOverMark, std::as_bytes(std::span(again))) == paths,
          "what is sent is what is read");
  return 0;
}
