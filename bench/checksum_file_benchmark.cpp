// The time until all files of a checksum file are in the list, without hashing them: for an empty
// list, and for one that already contains all the listed files, so that each row is replaced. The
// files do not exist; looking them up costs the same.
#include <benchmark/benchmark.h>

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "app/intake/file_intake.h"
#include "tests/support/fake_window.h"
#include "tests/support/temp_tree.h"

namespace {

using namespace std::chrono_literals;
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

// A window that looks up files on a thread, like the real one, but hashes none.
struct LoadingParts {
  app::testing::FakeView view;
  app::testing::FakeDesktop desktop;
  app::testing::FakeQueue queue;
  app::FileIntake fileIntake{[] { return true; }};
  app::testing::FakeInstallSystem installSystem;
  app::Installation installation{installSystem};
  app::MainWindow main{app::testing::ScreenOf(view, desktop), app::testing::DesktopOf(desktop),
                       queue, fileIntake, installation};
};

struct LoadingWindow : LoadingParts, app::testing::WindowFlows {
  LoadingWindow() : WindowFlows(main) { main.Start(); }

  void Load(const std::u16string& path) {
    verification.VerifyFile(path);
    while (arrivals.Open().Any()) {
      fileIntake.WaitForBatch(std::chrono::steady_clock::now() + 15ms);
      arrivals.TakeSome(20ms);
    }
  }
};

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
    auto window = std::make_unique<LoadingWindow>();
    for (const std::u16string& row : listedPaths) {
      app::Row added;
      added.path = row;
      window->rows.Append(std::move(added));
    }
    state.ResumeTiming();
    window->Load(path);
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
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(LoadReplacingAllRows)
    ->Arg(10'000)
    ->Arg(100'000)
    ->Iterations(1)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace
