#include <cstdio>
#include <exception>

#include "host/commands/CommandLine.hpp"

int main(int argc, char** argv) {
  try {
    return nivlo::runCommandLine(argc, argv);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "nivlo: %s\n", error.what());
    return 1;
  }
}
