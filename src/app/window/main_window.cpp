#include "app/window/main_window.h"

namespace app {

MainWindow::MainWindow(const Screen& screen, const Desktop& desktop, HashQueue& queue,
                       Intake& intake, Installation& installation)
    : selection_(rows_, screen.list),
      hashing_(rows_, queue, options_, screen.timer),
      progress_(rows_, queue, openRequests_, screen.list, screen.status),
      banners_(screen.banner),
      expected_(rows_, hashing_, openRequests_, progress_, banners_, desktop.clipboard, screen.list,
                screen.expected),
      details_(rows_, selection_, options_, desktop.signatures, desktop.origins, screen.details),
      refresh_(expected_, details_, progress_),
      arrivals_(intake, openRequests_, hashing_, refresh_, screen.frame, desktop.messages),
      adding_(rows_, hashing_, options_, banners_, arrivals_, screen.list, desktop.pickers),
      verification_(rows_, hashing_, banners_, arrivals_, screen.list, desktop.pickers),
      columns_(screen.columns),
      cells_(rows_, columns_, options_),
      sorting_(rows_, columns_, cells_, refresh_, screen.list, screen.columns),
      algorithms_({rows_, options_, hashing_, columns_, sorting_, refresh_, screen.list,
                   screen.menu, screen.popups}),
      lookUp_(rows_, hashing_, progress_, screen.list, desktop.shell),
      comparison_(rows_, hashing_, expected_, screen.list, desktop.messages),
      edits_({rows_, hashing_, arrivals_, comparison_, lookUp_, banners_, expected_, progress_,
              refresh_, screen.list}),
      jobIntake_({rows_, selection_, hashing_, openRequests_, expected_, details_, progress_,
                  lookUp_, comparison_, screen.list, desktop.shell}),
      clipboardWatch_(desktop.clipboard, banners_, screen.expected),
      optionsMenu_(options_, installation, screen.menu),
      switches_(options_, algorithms_, details_, optionsMenu_, screen.list),
      shellEntries_(installation, optionsMenu_, banners_, desktop.messages),
      bannerLinks_(banners_, clipboardWatch_, edits_, verification_, shellEntries_,
                   screen.expected),
      copying_(rows_, options_, desktop.clipboard),
      saving_(rows_, options_, desktop.pickers, desktop.messages),
      help_(installation, desktop.messages, desktop.shell),
      settings_(options_, columns_, screen.placement, desktop.settings),
      commands_({rows_, selection_, options_, adding_, verification_, saving_, copying_, edits_,
                 expected_, algorithms_, switches_, shellEntries_, lookUp_, comparison_, help_,
                 screen.edit, desktop.shell, screen.frame}),
      listMenu_(rows_, selection_, commands_, copying_, screen.popups) {}

void MainWindow::Start() {
  optionsMenu_.Prepare();
  algorithms_.Select(options_.algorithms);
  shellEntries_.OfferRepair();
}

}  // namespace app
