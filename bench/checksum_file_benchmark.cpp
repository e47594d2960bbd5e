// The time that the window's thread takes to load a checksum file, without the hashing: into an
// empty list, and into one that already contains all the listed files, so that each row is
// replaced. The files do not exist; looking for them costs the same.
#include <benchmark/benchmark.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/support/fake_window.h"
#include "tests/support/temp_tree.h"

namespace {

using app::testing::FakeWindow;
using swr::testing::TempTree;

constexpr char16_t Digest[] = u"e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855";

std::string ListOf(int64_t lines) {
  std::string text;
  for (int64_t i = 0; i < lines; ++i) {
    text += std::string(std::begin(Digest), std::end(Digest) - 1) + "  Folder/Photograph " +
            std::to_string(i) + ".jpg\n";
  }
  return text;
}

void LoadInto(benchmark::State& state, bool listed) {
  TempTree tree;
  const std::u16string path = tree.AddFile(u"SHA256SUMS", ListOf(state.range(0)));
  std::vector<std::u16string> listedPaths;
  for (int64_t i = 0; listed && i < state.range(0); ++i) {
    const std::string number = std::to_string(i);
    listedPaths.push_back(tree.Path(u"folder/photograph ") +
                          std::u16string(number.begin(), number.end()) + u".JPG");
  }
  for (auto _ : state) {
    state.PauseTiming();
    auto window = std::make_unique<FakeWindow>();
    for (const std::u16string& row : listedPaths) {
      app::Row added;
      added.path = row;
      window->rows.Append(std::move(added));
    }
    state.ResumeTiming();
    window->verification.VerifyFile(path);
    state.PauseTiming();
    if (window->rows.Size() != static_cast<size_t>(state.range(0))) {
      state.SkipWithError("the list has the wrong number of rows");
    }
    window.reset();
    state.ResumeTiming();
  }
}

void LoadIntoEmptyList(benchmark::State& state) { LoadInto(state, false); }
void LoadReplacingAllRows(benchmark::State& state) { LoadInto(state, true); }

BENCHMARK(LoadIntoEmptyList)
    ->Arg(10'000)
    ->Arg(100'000)
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(LoadReplacingAllRows)
    ->Arg(10'000)
    ->Arg(100'000)
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

}  // namespace
