#include "tests/support/ProcessTree.hpp"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>

namespace nivlo::test {

namespace {

std::filesystem::path directoryOf(pid_t process) { return "/proc/" + std::to_string(process); }

}  // namespace

pid_t childNamed(pid_t process, std::string_view program) {
  std::error_code error;
  for (const auto& task : std::filesystem::directory_iterator(directoryOf(process) / "task", error)) {
    std::ifstream children(task.path() / "children");
    for (pid_t child = 0; children >> child;) {
      if (processFile(child, "comm") == std::string(program) + '\n') {
        return child;
      }
    }
  }
  return 0;
}

bool isAlive(pid_t process) { return !processFile(process, "maps").empty(); }

std::string processFile(pid_t process, std::string_view name) {
  std::ifstream file(directoryOf(process) / name);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace nivlo::test
