#include "host/log/ProgramLog.hpp"

#include "platform/Foundation/NSBundle.hpp"

namespace nivlo {

void nameProgramInLog() {
  NSBundle::setMainBundle({}, {{"CFBundleName", "Nivlo"}, {"CFBundleVersion", NIVLO_VERSION}});
}

}  // namespace nivlo
