#include "app/flows/algorithm_selection.h"

#include <string>

#include "app/screen/algo_boxes.h"
#include "swr/text/decimal_text.h"

namespace app {
namespace {

// "&More...", and how many of the selected algorithms have no check box of their own.
std::u16string MoreText(swr::AlgoMask mask) {
  swr::AlgoMask boxed = 0;
  for (const AlgoBox& box : AlgoBoxes) boxed |= swr::MaskOf(box.algo);
  const uint32_t hidden = swr::CountAlgos(mask & ~boxed);
  return hidden == 0 ? u"&More..." : u"&More (+" + swr::DecimalText(hidden) + u")...";
}

}  // namespace

void AlgorithmSelection::Select(swr::AlgoMask mask) {
  uses_.options.algorithms = mask == 0 ? swr::FallbackAlgoMask : mask;
  uses_.menu.ShowAlgoSelection(uses_.options.algorithms, MoreText(uses_.options.algorithms));
  uses_.columns.Rebuild(uses_.options.algorithms);
  uses_.sorting.Forget();
  uses_.hashing.QueueAll();
  uses_.list.SetRowCount(uses_.rows.Size());
  uses_.refresh.AfterRowChange();
}

void AlgorithmSelection::SelectOne(swr::AlgoId id, bool isSelected) {
  const swr::AlgoMask others = uses_.options.algorithms & ~swr::MaskOf(id);
  Select(isSelected ? others | swr::MaskOf(id) : others);
}

void AlgorithmSelection::FollowBox(swr::AlgoId id) { SelectOne(id, uses_.menu.IsAlgoChecked(id)); }

void AlgorithmSelection::ChooseFromMenu() {
  // The choice applies to the state that the menu showed, whatever has changed since it was opened.
  const swr::AlgoMask shown = uses_.options.algorithms;
  const auto algo = uses_.popups.ChooseAlgo(shown, uses_.options.showLegacy);
  if (algo) SelectOne(*algo, (shown & swr::MaskOf(*algo)) == 0);
}

}  // namespace app
