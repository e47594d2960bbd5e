#include "app/dialogs/command_line_tool.h"

#include "resources/resource_ids.h"

namespace app {

TaskDialogSpec CommandLineToolDialog(bool isThere, const std::u16string& programFolder) {
  TaskDialogSpec spec = {
      .title = u"Command-Line Tool",
      .mainInstruction = u"Command-line tool (swrhash)",
      .content =
          u"swrhash calculates and verifies checksums in a command prompt, in scripts and "
          u"in batch files. Its checksum files also work with Linux sha256sum.\n\n"
          u"swrhash setup.exe\n"
          u"swrhash -a md5,sha256 -r C:\\Downloads > checksums.txt\n"
          u"swrhash -c SHA256SUMS\n"
          u"swrhash --expect <hash> setup.exe\n\n"
          u"Run swrhash --help for all options.",
      .commonButtons = CloseButton,
      .commandLinks = true,
      .customIcon = IDI_COMMAND_LINE_TOOL};
  if (isThere) {
    spec.footer =
        u"swrhash.exe runs on every Windows. swrhash64.exe and swrhasharm64.exe are the "
        u"faster native builds. Folder: " +
        programFolder;
    spec.buttons = {{OpenPromptAnswer,
                     u"Open a command prompt here\nIn the program folder, ready to run swrhash"},
                    {OpenProgramFolderAnswer, u"Open the program folder"}};
  } else {
    spec.footer = u"swrhash comes with the setup and in sumwrite.zip (every build in one zip).";
    spec.buttons = {{GetToolAnswer, u"Get swrhash\nOpens the Sumwright page"}};
  }
  return spec;
}

}  // namespace app
