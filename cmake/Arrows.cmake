# Part of every build: fails when a source includes what it must not, or when docs/architecture.md shows other arrows.
find_package(Python3 REQUIRED COMPONENTS Interpreter)
set(patterns bundle kit platform linux host tests bench fuzz)
list(TRANSFORM patterns APPEND "/*.[ch]pp")
list(TRANSFORM patterns PREPEND "${PROJECT_SOURCE_DIR}/")
file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${patterns})
add_custom_command(
  OUTPUT ${PROJECT_BINARY_DIR}/arrows.stamp
  COMMAND Python3::Interpreter ${PROJECT_SOURCE_DIR}/cmake/check_arrows.py ${PROJECT_SOURCE_DIR}
  COMMAND ${CMAKE_COMMAND} -E touch ${PROJECT_BINARY_DIR}/arrows.stamp
  DEPENDS ${sources} ${PROJECT_SOURCE_DIR}/cmake/check_arrows.py ${PROJECT_SOURCE_DIR}/docs/architecture.md
  COMMENT "Checking what the sources include"
  VERBATIM)
add_custom_target(arrows ALL DEPENDS ${PROJECT_BINARY_DIR}/arrows.stamp)
