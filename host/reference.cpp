// nivlo-reference: used by the build only. Prints what nivlo's manual page, completions and unit are made
// from.
#include "host/commands/Reference.hpp"

#include <iostream>

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: nivlo-reference PROGRAM   (PROGRAM: where nivlo is installed)\n";
    return 2;
  }
  std::cout << nivlo::reference(argv[1]) << '\n';
  return 0;
}
