// Reads download origins, each on its own short-lived thread: on a slow share a read can take long,
// and some never end.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/desktop/origin_reads.h"
#include "swr/provenance/zone_record.h"

namespace app {

// Nothing waits for these threads once their records are late.
class OriginThreads final : public OriginReads {
 public:
  using ReadFunction = std::function<swr::ZoneRecord(const std::u16string& path)>;

  // How long ReadOrigin waits. A local disk takes about 1 ms, including the thread. A message may
  // take 50 ms, and the one that adds files has waited up to 30 ms for them when it shows the first
  // one.
  static constexpr std::chrono::milliseconds LongestWait{10};

  // `read` and `announce` are called on the threads, `read` on several at once. `announce` tells
  // the window's thread that a late record can be taken. It must neither wait for the window nor
  // call this object, and is not called any more once the destructor has returned.
  OriginThreads(ReadFunction read, std::function<void()> announce,
                std::chrono::milliseconds longestWait = LongestWait);
  ~OriginThreads() override;
  OriginThreads(const OriginThreads&) = delete;
  OriginThreads& operator=(const OriginThreads&) = delete;

  // If no thread can be started, the record is one that was not found.
  std::optional<swr::ZoneRecord> ReadOrigin(uint64_t rowId, const std::u16string& path) override;
  std::vector<RowOrigin> TakeLateOrigins() override;

 private:
  class State;

  // Shared with the threads, which can outlive this object.
  const std::shared_ptr<State> state_;
  const std::chrono::milliseconds longestWait_;
};

}  // namespace app
