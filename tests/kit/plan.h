// Which programs the kit runs, on which system, and how long each may take.
#pragma once

#include <string>
#include <vector>

namespace kit {

enum class ProgramKind {
  Tests,        // GoogleTest, by itself
  WindowTests,  // GoogleTest, given the path of Sumwright.exe
  Soak,         // random use of the window for the minutes that it is given
};

struct PlannedProgram {
  std::string title;
  int bits = 64;     // which builds of the program and of Sumwright
  std::string file;  // in the folder of tests of that width
  ProgramKind kind = ProgramKind::Tests;
  std::string filter;  // of GoogleTest
  int limitSeconds = 0;
};

struct PlanOptions {
  bool is64Bit = true;  // the system runs programs of 64 bits too
  bool quick = false;   // a few tests of each program, for trying the kit itself
  int soakMinutes = 0;  // 0 for no soak test
  std::string only;     // if not empty, only programs whose title contains it
};

std::vector<PlannedProgram> MakePlan(const PlanOptions& options);

}  // namespace kit
