#include "host/log/ProgramLog.hpp"

#include "kit/MFLog/MFLog.hpp"
#include "platform/Foundation/NSBundle.hpp"

namespace nivlo {

void nameProgramInLog() {
  NSBundle::setMainBundle({}, {{"CFBundleName", "Nivlo"}, {"CFBundleVersion", NIVLO_VERSION}});
}

void logCameraEvent(CameraEvent event, const CameraInfo& camera) {
  switch (event) {
    case CameraEvent::Opened:
      MFInfo("camera %@ opened", camera.uniqueID);
      break;
    case CameraEvent::Refused:
      MFWarning("camera %@ cannot be opened", camera.uniqueID);
      break;
    case CameraEvent::Silent:
      MFNotice("camera %@ lost: it sends no pictures", camera.uniqueID);
      break;
    case CameraEvent::Resumed:
      MFNotice("camera %@ is back", camera.uniqueID);
      break;
    case CameraEvent::Closed:
      MFInfo("camera %@ closed", camera.uniqueID);
      break;
  }
}

}  // namespace nivlo
