#include "bench/desktop/ProcessFigures.hpp"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>

#include <unistd.h>

namespace nivlo::bench {

namespace {

std::filesystem::path procDirectory(pid_t process) { return "/proc/" + std::to_string(process); }

}  // namespace

double cpuSeconds(pid_t process) {
  std::ifstream file(procDirectory(process) / "stat");
  std::string text((std::istreambuf_iterator<char>(file)), {});
  // The program's name may contain anything, so the fields are counted from its closing parenthesis.
  std::istringstream fields(text.substr(text.rfind(')') + 1));
  std::string skipped;
  for (int field = 3; field < 14; ++field) {
    fields >> skipped;
  }
  long user = 0;
  long system = 0;
  fields >> user >> system;
  return static_cast<double>(user + system) / static_cast<double>(sysconf(_SC_CLK_TCK));
}

double residentMegabytes(pid_t process) {
  std::ifstream file(procDirectory(process) / "statm");
  long total = 0;
  long resident = 0;
  file >> total >> resident;
  return static_cast<double>(resident) * static_cast<double>(sysconf(_SC_PAGESIZE)) / 1e6;
}

double privateMegabytes(pid_t process) {
  std::ifstream file(procDirectory(process) / "smaps_rollup");
  double kibibytes = 0;
  for (std::string line; std::getline(file, line);) {
    if (line.starts_with("Private_")) {
      kibibytes += std::stod(line.substr(line.find(':') + 1));
    }
  }
  return kibibytes * 1024 / 1e6;
}

int openDescriptors(pid_t process) {
  const std::filesystem::directory_iterator entries(procDirectory(process) / "fd");
  return static_cast<int>(std::distance(begin(entries), end(entries)));
}

}  // namespace nivlo::bench
