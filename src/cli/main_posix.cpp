#include <string>
#include <vector>

#include "cli/program.h"
#include "swr/system/interrupt.h"

int main(int count, char** arguments) {
  swr::EndOnInterrupt();
  return cli::RunProgram(
      std::vector<std::string>(arguments + (count > 0 ? 1 : 0), arguments + count));
}
