#include "app/flows/help.h"

#include <string>

#include "app/desktop/addresses.h"
#include "app/dialogs/about.h"
#include "app/dialogs/command_line_tool.h"

namespace app {

void Help::ShowAbout() {
  const char16_t* kind = installation_.IsInstalledCopy() ? u"Installed in " : u"Portable copy in ";
  messages_.ShowTaskDialog(AboutDialog(kind + installation_.ProgramFolder()));
}

void Help::ShowCommandLineTool() {
  const std::u16string folder = installation_.ProgramFolder();
  const bool isThere = installation_.HasCompanion(CommandLineToolFile);
  switch (messages_.ShowTaskDialog(CommandLineToolDialog(isThere, folder))) {
    case OpenPromptAnswer:
      shell_.OpenCommandPrompt(folder, u"swrhash --help");
      break;
    case OpenProgramFolderAnswer:
      shell_.OpenFolder(folder);
      break;
    case GetToolAnswer:
      OpenProductPage();
      break;
    default:
      break;
  }
}

void Help::OpenProgramFolder() {
  if (installation_.IsInstalledCopy()) {
    shell_.OpenFolder(installation_.ProgramFolder());
  } else {
    OpenProductPage();
  }
}

void Help::OpenProductPage() { shell_.OpenAddress(std::u16string(ProductPage)); }

void Help::OpenMakerPage() { shell_.OpenAddress(std::u16string(MakerPage)); }

}  // namespace app
