// Reads settings that an older, newer or faulty program may have written.
#include <fuzzer/FuzzedDataProvider.h>

#include <map>

#include "fuzz/fuzz_input.h"
#include "fuzz/require.h"
#include "tests/support/fake_window.h"

namespace {

using app::testing::FakeDesktop;

// A window that starts with these settings and is closed.
struct OneRun : app::testing::FakeParts, app::testing::WindowFlows {
  explicit OneRun(const FakeDesktop& stored) : WindowFlows(main) {
    desktop = stored;
    settings.Read();
    main.Start();
    settings.RestorePlacement();
    view.placement = view.triedPlacement;
    settings.Write();
  }
};

void RequireSound(const OneRun& run) {
  using fuzz::Require;
  const app::Options& options = run.options;
  Require(options.algorithms != 0, "at least one algorithm is selected");
  Require((options.algorithms & ~swr::AllAlgosMask) == 0, "only known algorithms are selected");
  Require(options.showLegacy || (options.algorithms & swr::LegacyAlgoMask) == 0,
          "legacy algorithms are selected only if they are shown");
  for (const uint32_t width : run.columns.Widths()) {
    Require(width >= 30 && width <= 2000, "a column is visible and does not hide the others");
  }
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  FuzzedDataProvider input(data, size);
  FakeDesktop settings;
  for (const char16_t* name :
       {u"Algorithms", u"Uppercase", u"ShowLegacy", u"IncludeHidden", u"CrLf"}) {
    if (input.ConsumeBool()) settings.dwordSettings[name] = input.ConsumeIntegral<uint32_t>();
  }
  for (const char16_t* name : {u"Columns", u"Window"}) {
    settings.binarySettings[name] =
        input.ConsumeBytes<uint8_t>(input.ConsumeIntegralInRange<size_t>(0, 24));
  }
  OneRun first(settings);
  RequireSound(first);
  const OneRun second(first.desktop);
  fuzz::Require(second.desktop.dwordSettings == first.desktop.dwordSettings,
                "settings are read back as they were written");
  fuzz::Require(second.desktop.binarySettings == first.desktop.binarySettings,
                "column widths and window position are read back as they were written");
  return 0;
}
