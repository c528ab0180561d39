// "nivlo ctl".
#pragma once

#include <optional>
#include <string>

namespace nivlo {

struct CtlOptions {
  std::string method;            ///< of kControlInterface
  std::optional<int> preset;     ///< what SetPreset is given
  std::optional<bool> scanning;  ///< what SetScanning is given
  bool json = false;             ///< how GetStatus is printed
};

/// Asks the running program. Returns the exit status: 0 done, 1 refused, 3 there is no running program.
int runCtl(const CtlOptions& options);

}  // namespace nivlo
