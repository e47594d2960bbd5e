#include "swr/hash/digest_threads.h"

#include <algorithm>
#include <thread>

namespace swr {

uint32_t DigestThreads::UsualLimit() { return std::max(2u, std::thread::hardware_concurrency()); }

DigestThreads::DigestThreads(uint32_t limit) : limit_(limit) {}

DigestThreads::~DigestThreads() = default;

void DigestThreads::EndIdleThreads() {}

}  // namespace swr
