// Where the files are that belong to the running program.
#pragma once

#include <filesystem>

namespace nivlo {

/// The file or folder of this name beside the running program, as a build has it; otherwise its place in an
/// installation, given relative to the program's own folder. Whether it exists there is not checked.
std::filesystem::path programFile(const std::filesystem::path& name,
                                  const std::filesystem::path& installedPlace);

}  // namespace nivlo
