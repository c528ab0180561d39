// The program's command line.
#pragma once

namespace nivlo {

/// Carries out the command that the command line names. Prints help to standard output and usage errors to
/// standard error. Returns the exit status: the command's own, 0 after help, or 2 for wrong usage.
int runCommandLine(int argc, const char* const* argv);

}  // namespace nivlo
