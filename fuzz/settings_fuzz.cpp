// Reads settings that an older, a newer or a faulty program may have left.
#include <fuzzer/FuzzedDataProvider.h>

#include <map>

#include "fuzz/fuzz_input.h"
#include "fuzz/require.h"
#include "tests/support/fake_window.h"

namespace {

using app::testing::FakeDesktop;

// A window that starts with these settings and is closed.
struct OneRun {
  explicit OneRun(FakeDesktop settings) : desktop(std::move(settings)) {
    main.ReadSettings();
    main.Start();
    main.RestorePlacement();
    view.placement = view.triedPlacement;
    main.WriteSettings();
  }

  app::testing::FakeView view;
  FakeDesktop desktop;
  app::testing::FakeQueue queue;
  app::testing::FakeInstallSystem installSystem;
  app::Installation installation{installSystem};
  app::MainWindow main{view, desktop, queue, installation};
};

void RequireSound(const app::MainWindow& main) {
  using fuzz::Require;
  Require(main.algorithms != 0, "something is selected");
  Require((main.algorithms & ~swr::AllAlgosMask) == 0, "only known algorithms are selected");
  Require(main.showLegacy || (main.algorithms & swr::LegacyAlgoMask) == 0,
          "legacy algorithms are selected only if they are shown");
  for (const uint32_t width : {main.fixedWidths.name, main.fixedWidths.folder,
                               main.fixedWidths.size, main.fixedWidths.status}) {
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
  OneRun first(std::move(settings));
  RequireSound(first.main);
  const OneRun second(first.desktop);
  fuzz::Require(second.desktop.dwordSettings == first.desktop.dwordSettings,
                "settings are read as they were written");
  fuzz::Require(second.desktop.binarySettings == first.desktop.binarySettings,
                "column widths and window position are written as they were read");
  return 0;
}
