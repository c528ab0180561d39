// Reads the command line.
#pragma once

#include <variant>

#include "host/commands/Options.hpp"

namespace nivlo {

/// Nothing is left to do but to leave with this status: help was asked for and printed, or the usage was
/// wrong.
struct ExitNow {
  int status = 0;
};

using Command = std::variant<ExitNow, RunOptions, PresetsOptions, DevicesOptions, ChimeOptions, ScanOptions,
                             CtlOptions, PickOptions, InstallServiceOptions>;

/// Prints help to standard output and usage errors to standard error.
Command parseCommandLine(int argc, const char* const* argv);

}  // namespace nivlo
