// The cost of a keystroke in the Hash Text dialog, without the dialog itself.
#include <benchmark/benchmark.h>

#include <string>

#include "app/dialogs/hash_text.h"

namespace {

// Arguments: the selection of algorithms, the length of the text.
void HashText(benchmark::State& state) {
  const auto mask = static_cast<swr::AlgoMask>(state.range(0));
  const std::u16string text(static_cast<size_t>(state.range(1)), u'a');
  for (auto _ : state) {
    benchmark::DoNotOptimize(app::HashTextResult(text, app::TextForm{}, mask, false));
  }
}

BENCHMARK(HashText)
    ->ArgsProduct({{swr::DefaultAlgoMask, swr::AllAlgosMask}, {1024, 1048576}})
    ->Unit(benchmark::kMillisecond);

}  // namespace
