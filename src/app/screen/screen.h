// The parts of the screen, as the composition root receives them.
#pragma once

namespace app {

class BannerView;
class ColumnView;
class DetailsView;
class EditFocus;
class ExpectedView;
class Frame;
class ListView;
class MenuView;
class PlacementView;
class PopupMenus;
class ProgressTimer;
class StatusView;

struct Screen {
  ListView& list;
  ColumnView& columns;
  ExpectedView& expected;
  BannerView& banner;
  DetailsView& details;
  StatusView& status;
  ProgressTimer& timer;
  MenuView& menu;
  PopupMenus& popups;
  EditFocus& edit;
  PlacementView& placement;
  Frame& frame;
};

}  // namespace app
