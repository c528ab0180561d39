# Part of every build: fails when an include runs against the arrows between the rooms, or in a circle.
find_package(Python3 REQUIRED COMPONENTS Interpreter)
file(GLOB_RECURSE NIVLO_SOURCES CONFIGURE_DEPENDS
  ${PROJECT_SOURCE_DIR}/bundle/*.[ch]pp ${PROJECT_SOURCE_DIR}/kit/*.[ch]pp ${PROJECT_SOURCE_DIR}/platform/*.[ch]pp
  ${PROJECT_SOURCE_DIR}/linux/*.[ch]pp ${PROJECT_SOURCE_DIR}/host/*.[ch]pp)
add_custom_command(
  OUTPUT ${PROJECT_BINARY_DIR}/arrows.stamp
  COMMAND Python3::Interpreter ${PROJECT_SOURCE_DIR}/cmake/check_arrows.py ${PROJECT_SOURCE_DIR}
  COMMAND ${CMAKE_COMMAND} -E touch ${PROJECT_BINARY_DIR}/arrows.stamp
  DEPENDS ${NIVLO_SOURCES} ${PROJECT_SOURCE_DIR}/cmake/check_arrows.py
  COMMENT "Checking that no include runs upwards"
  VERBATIM)
add_custom_target(arrows ALL DEPENDS ${PROJECT_BINARY_DIR}/arrows.stamp)
