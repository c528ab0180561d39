// Finds the files that belong to the running program.
#pragma once

#include <filesystem>

namespace nivlo {

/// Returns the folder of the running program; empty if the kernel does not tell. Callable from any thread.
std::filesystem::path programFolder();

/// Returns the file or folder `name` in the running program's own folder, where a build tree has it, or, if
/// there is none, `installedPlace`, which is relative to that folder. Does not check whether the latter
/// exists. Callable from any thread.
std::filesystem::path programFile(const std::filesystem::path& name,
                                  const std::filesystem::path& installedPlace);

/// Returns the folder of an installation's bundle and libraries, relative to that of its program.
std::filesystem::path installedLibraries();

/// Returns the folder of an installation's nivlo-reader and nivlo-dialogs, relative to that of its program.
std::filesystem::path installedHelpers();

}  // namespace nivlo
