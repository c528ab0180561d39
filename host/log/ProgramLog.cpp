#include "host/log/ProgramLog.hpp"

#include <string>

#include "host/text/VisibleText.hpp"
#include "kit/MFLog/MFLog.hpp"
#include "platform/Foundation/NSBundle.hpp"

namespace nivlo {

void nameProgramInLog() {
  NSBundle::setMainBundle({}, {{"CFBundleName", "Nivlo"}, {"CFBundleVersion", NIVLO_VERSION}});
}

void logCameraEvent(CameraEvent event, const CameraInfo& camera) {
  // Other programs choose the names of nodes, and anybody those of files.
  const std::string id = visibleText(camera.uniqueID);
  switch (event) {
    case CameraEvent::Opened:
      MFInfo("camera %@ opened", id);
      break;
    case CameraEvent::Refused:
      MFWarning("camera %@ cannot be opened", id);
      break;
    case CameraEvent::Started:
      break;
    case CameraEvent::Silent:
      MFNotice("camera %@ lost: it sends no pictures", id);
      break;
    case CameraEvent::Resumed:
      MFNotice("camera %@ is back", id);
      break;
    case CameraEvent::Closed:
      MFInfo("camera %@ closed", id);
      break;
  }
}

}  // namespace nivlo
