// How a test passes a measured value to the report: as a separate line on standard output.
#pragma once

#include <cstdio>
#include <string>
#include <string_view>

namespace kit {

inline constexpr std::string_view FigureMark = "[ FIGURE   ] ";

// Both in UTF-8, without tabs and line ends.
inline void PrintFigure(const std::string& name, const std::string& value) {
  std::printf("%s%s\t%s\n", std::string(FigureMark).c_str(), name.c_str(), value.c_str());
  std::fflush(stdout);
}

}  // namespace kit
