# Part of every build: fails when a source includes what it must not, or when docs/architecture.md shows other arrows.
find_package(Python3 REQUIRED COMPONENTS Interpreter)
set(NIVLO_SOURCE_PATTERNS bundle kit platform linux host tests bench fuzz)
list(TRANSFORM NIVLO_SOURCE_PATTERNS APPEND "/*.[ch]pp")
list(TRANSFORM NIVLO_SOURCE_PATTERNS PREPEND "${PROJECT_SOURCE_DIR}/")
file(GLOB_RECURSE NIVLO_SOURCES CONFIGURE_DEPENDS ${NIVLO_SOURCE_PATTERNS})
add_custom_command(
  OUTPUT ${PROJECT_BINARY_DIR}/arrows.stamp
  COMMAND Python3::Interpreter ${PROJECT_SOURCE_DIR}/cmake/check_arrows.py ${PROJECT_SOURCE_DIR}
  COMMAND ${CMAKE_COMMAND} -E touch ${PROJECT_BINARY_DIR}/arrows.stamp
  DEPENDS ${NIVLO_SOURCES} ${PROJECT_SOURCE_DIR}/cmake/check_arrows.py ${PROJECT_SOURCE_DIR}/docs/architecture.md
  COMMENT "Checking what the sources include"
  VERBATIM)
add_custom_target(arrows ALL DEPENDS ${PROJECT_BINARY_DIR}/arrows.stamp)
