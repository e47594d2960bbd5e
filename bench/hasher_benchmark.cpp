// The speed of each hasher on bytes in memory.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <vector>

#include "swr/hash/algorithms.h"
#include "swr/hash/hasher.h"

namespace {

// Arguments: the number of the algorithm, the length of the message.
void HashMessage(benchmark::State& state) {
  const auto id = static_cast<swr::AlgoId>(state.range(0));
  const std::vector<uint8_t> message(static_cast<size_t>(state.range(1)), 0x5A);
  for (auto _ : state) benchmark::DoNotOptimize(swr::HashBytes(id, message));
  state.SetBytesProcessed(state.iterations() * state.range(1));
  state.SetLabel(std::string(swr::GetAlgo(id).upperTag));
}

BENCHMARK(HashMessage)
    ->ArgsProduct({benchmark::CreateDenseRange(0, swr::AlgoCount - 1, 1), {4096, 1048576}});

}  // namespace
