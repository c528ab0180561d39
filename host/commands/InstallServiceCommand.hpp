// "nivlo install-service".
#pragma once

#include <string>
#include <vector>

namespace nivlo {

struct InstallServiceOptions {
  int preset = 1;
  std::vector<std::string> arguments;  ///< the other options of the run, as "--name=value"
  bool print = false;                  ///< changes nothing
  bool remove = false;
};

/// Has the desktop start this program with these options, or not any more. Returns the exit status.
int runInstallService(const InstallServiceOptions& options);

}  // namespace nivlo
