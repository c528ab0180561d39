#include <cstdio>
#include <exception>
#include <iostream>
#include <variant>

#include "host/commands/ChimeCommand.hpp"
#include "host/commands/CommandLine.hpp"
#include "host/commands/CtlCommand.hpp"
#include "host/commands/DevicesCommand.hpp"
#include "host/commands/InstallServiceCommand.hpp"
#include "host/commands/PickCommand.hpp"
#include "host/commands/PresetsCommand.hpp"
#include "host/commands/RunCommand.hpp"

namespace {

struct Execute {
  int operator()(const nivlo::ExitNow& leave) const { return leave.status; }
  int operator()(const nivlo::RunOptions& options) const { return nivlo::runWallpaper(options); }
  int operator()(const nivlo::PresetsOptions& options) const { return nivlo::runPresets(options); }
  int operator()(const nivlo::DevicesOptions& options) const { return nivlo::runDevices(options); }
  int operator()(const nivlo::ChimeOptions& options) const { return nivlo::runChime(options); }
  int operator()(const nivlo::ScanOptions& options) const {
    return nivlo::runScan(options, std::cout, std::cerr);
  }
  int operator()(const nivlo::PickOptions& options) const { return nivlo::runPick(options); }
  int operator()(const nivlo::CtlOptions& options) const { return nivlo::runCtl(options); }
  int operator()(const nivlo::InstallServiceOptions& options) const {
    return nivlo::runInstallService(options);
  }
};

}  // namespace

int main(int argc, char** argv) {
  try {
    return std::visit(Execute{}, nivlo::parseCommandLine(argc, argv));
  } catch (const std::exception& trouble) {
    std::fprintf(stderr, "nivlo: %s\n", trouble.what());
    return 1;
  }
}
