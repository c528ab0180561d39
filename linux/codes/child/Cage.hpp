// What a process may still do when it looks at pictures that anybody may have made.
#pragma once

namespace nivlo {

/// From now on this process computes with the memory it has, up to half a gigabyte, and talks over the
/// descriptors it has; it opens nothing, starts nothing and reaches nobody, and ends at once when it tries
/// to. It yields to other processes and ends with the thread that started it. There is no way back. Throws
/// std::system_error when any of it cannot be had.
void enterCage();

}  // namespace nivlo
