// Starts nivlo-dialogs.
#pragma once

#include "linux/handles/Descriptor.hpp"

namespace nivlo {

/// Starts nivlo-dialogs, the program that shows windows. The toolkit that draws them takes more memory than
/// all the rest of Nivlo, never gives it back, and ends its process when the compositor goes away, so it is
/// given a process of its own for as long as there is something to show.
///
/// Returns the socket for DialogMessages; closing it ends nivlo-dialogs, as soon as the clipboard no longer
/// needs it. Returns an empty descriptor, and logs the cause, if it cannot be started. Main thread only.
Descriptor startDialogProcess();

}  // namespace nivlo
