// Starts the desktop's toolkit.
#pragma once

namespace nivlo {

/// Starts GTK and libadwaita. Returns false if there is no desktop to show windows on. To be called once, at
/// the start of the process, before it has a second thread.
bool startToolkit();

}  // namespace nivlo
