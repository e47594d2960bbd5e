// The plan of a run: which test programs, on which system, with which time limits.
#pragma once

#include <string>
#include <vector>

namespace kit {

enum class ProgramKind {
  Tests,        // GoogleTest without arguments
  WindowTests,  // GoogleTest, given the path of Sumwright.exe
  Soak,         // random use of the window for a given number of minutes
};

struct PlannedProgram {
  std::string title;
  int bits = 64;     // which builds of the program and of Sumwright
  std::string file;  // in the folder of test programs for that word size
  ProgramKind kind = ProgramKind::Tests;
  std::string filter;  // of GoogleTest
  int limitSeconds = 0;
};

struct PlanOptions {
  bool is64Bit = true;  // the system also runs 64-bit programs
  bool quick = false;   // a few tests of each program, for testing the kit itself
  int soakMinutes = 0;  // 0 for no soak test
  std::string only;     // if not empty, only programs whose title contains it
};

std::vector<PlannedProgram> MakePlan(const PlanOptions& options);

}  // namespace kit
