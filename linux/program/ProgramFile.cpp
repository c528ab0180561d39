#include "linux/program/ProgramFile.hpp"

#include <system_error>

namespace nivlo {

std::filesystem::path programFolder() {
  std::error_code error;
  return std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
}

std::filesystem::path programFile(const std::filesystem::path& name,
                                  const std::filesystem::path& installedPlace) {
  std::error_code error;
  auto beside = programFolder() / name;
  if (std::filesystem::exists(beside, error)) {
    return beside;
  }
  return (programFolder() / installedPlace).lexically_normal();
}

std::filesystem::path installedLibraries() { return NIVLO_LIBRARIES; }

std::filesystem::path installedHelpers() { return NIVLO_HELPERS; }

}  // namespace nivlo
