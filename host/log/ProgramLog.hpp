// The log file, in which the program records what it does.
#pragma once

#include "host/show/ObservedCameras.hpp"

namespace nivlo {

/// Gives the logger the program's name and version, which it writes at the head of its files. Call it before
/// the first line is logged.
void nameProgramInLog();

/// Writes a line about what has happened to a camera.
void logCameraEvent(CameraEvent event, const CameraInfo& camera);

}  // namespace nivlo
