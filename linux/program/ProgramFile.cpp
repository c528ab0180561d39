#include "linux/program/ProgramFile.hpp"

#include <system_error>

namespace nivlo {

std::filesystem::path programFile(const std::filesystem::path& name,
                                  const std::filesystem::path& installedPlace) {
  std::error_code error;
  const auto programs = std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
  auto beside = programs / name;
  if (std::filesystem::exists(beside, error)) {
    return beside;
  }
  return (programs / installedPlace).lexically_normal();
}

}  // namespace nivlo
