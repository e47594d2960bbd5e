// Writes the manual page and the shell completion scripts into a folder.
#include <cstdio>
#include <fstream>
#include <string>
#include <utility>

#include "cli/documents/completions.h"
#include "cli/documents/man_page.h"

int main(int count, char** arguments) {
  if (count != 2) {
    std::fputs("usage: swrhash_documents FOLDER\n", stderr);
    return 2;
  }
  // PowerShell would run a script called swrhash.ps1 instead of the program.
  const std::pair<const char*, std::string> files[] = {
      {"swrhash.1", cli::ManPage()},
      {"swrhash.bash", cli::BashCompletion()},
      {"_swrhash", cli::ZshCompletion()},
      {"swrhash.fish", cli::FishCompletion()},
      {"swrhash-completion.ps1", cli::PowerShellCompletion()},
  };
  for (const auto& [name, text] : files) {
    std::ofstream file(std::string(arguments[1]) + "/" + name, std::ios::binary);
    file << text;
    file.close();
    if (!file) {
      std::fprintf(stderr, "swrhash_documents: %s could not be written\n", name);
      return 1;
    }
  }
  return 0;
}
