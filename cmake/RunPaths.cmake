# Part of every build: fails when what is installed would look for libraries in the current folder.
set(NIVLO_INSTALLED_FILES "")
foreach(target nivlo nivlo-reader nivlo-dialogs NivloWallpaper nivlo-platform nivlo-mflog)
  list(APPEND NIVLO_INSTALLED_FILES $<TARGET_FILE:${target}>)
endforeach()
add_custom_command(
  OUTPUT ${PROJECT_BINARY_DIR}/run-paths.stamp
  COMMAND Python3::Interpreter ${PROJECT_SOURCE_DIR}/cmake/check_run_paths.py ${NIVLO_INSTALLED_FILES}
  COMMAND ${CMAKE_COMMAND} -E touch ${PROJECT_BINARY_DIR}/run-paths.stamp
  DEPENDS ${NIVLO_INSTALLED_FILES} ${PROJECT_SOURCE_DIR}/cmake/check_run_paths.py
  COMMENT "Checking where programs look for libraries"
  VERBATIM)
add_custom_target(run-paths ALL DEPENDS ${PROJECT_BINARY_DIR}/run-paths.stamp)
