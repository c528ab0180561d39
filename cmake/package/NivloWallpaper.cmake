# nivlo_add_wallpaper(TARGET SOURCES FILE... [RESOURCES FILE...] [CLASS NAME] [TITLE TEXT] [IDENTIFIER TEXT] [CHIME FILE]):
# builds a wallpaper, TARGET.bundle in the directory for programs or the current binary directory, and installs it.
#
# RESOURCES are the files that lie in the bundle. CLASS is the class given to NIVLO_EXPORT_WALLPAPER and TITLE what users
# call the wallpaper; both default to TARGET. IDENTIFIER names the bundle to programs ("org.example.tide"), and CHIME is
# the resource that 'nivlo chime' plays. The bundle is installed in NIVLO_BUNDLE_DIR below the installation prefix, where
# nivlo finds it as long as the prefix is ~/.local, /usr/local or /usr.
include_guard()

set(NIVLO_BUNDLE_DIR share/nivlo/wallpapers CACHE STRING "Where wallpapers are installed, below the installation prefix")
set(NIVLO_INFO_TEMPLATE ${CMAKE_CURRENT_LIST_DIR}/WallpaperInfo.plist.in)

function(nivlo_add_wallpaper target)
  cmake_parse_arguments(PARSE_ARGV 1 wallpaper "" "CLASS;TITLE;IDENTIFIER;CHIME" "SOURCES;RESOURCES")
  if(NOT wallpaper_SOURCES OR wallpaper_UNPARSED_ARGUMENTS)
    message(FATAL_ERROR "nivlo_add_wallpaper(${target}): SOURCES are missing, or these are unknown: "
      "${wallpaper_UNPARSED_ARGUMENTS}")
  endif()
  foreach(name CLASS TITLE IDENTIFIER)
    if(NOT wallpaper_${name})
      set(wallpaper_${name} ${target})
    endif()
  endforeach()
  set(wallpaper_chime_entry "")
  if(wallpaper_CHIME)
    cmake_path(GET wallpaper_CHIME FILENAME chime)
    set(wallpaper_chime_entry "\n  <key>NivloChimeFile</key>\n  <string>${chime}</string>")
    list(APPEND wallpaper_RESOURCES ${wallpaper_CHIME})
  endif()

  set(programs ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
  if(NOT programs)
    set(programs ${CMAKE_CURRENT_BINARY_DIR})
  endif()
  set(bundle ${programs}/${target}.bundle)
  add_library(${target} MODULE ${wallpaper_SOURCES})
  target_link_libraries(${target} PRIVATE nivlo::platform)
  # The program that opens the bundle has loaded what it links already; no path of this machine belongs in it.
  set_target_properties(${target} PROPERTIES PREFIX "" SUFFIX .so LIBRARY_OUTPUT_DIRECTORY ${bundle} INSTALL_RPATH ""
    BUILD_WITH_INSTALL_RPATH ON)
  configure_file(${NIVLO_INFO_TEMPLATE} ${bundle}/Info.plist @ONLY)
  foreach(resource ${wallpaper_RESOURCES})
    cmake_path(GET resource FILENAME name)
    configure_file(${resource} ${bundle}/${name} COPYONLY)
  endforeach()

  install(TARGETS ${target} LIBRARY DESTINATION ${NIVLO_BUNDLE_DIR}/${target}.bundle)
  install(FILES ${bundle}/Info.plist ${wallpaper_RESOURCES} DESTINATION ${NIVLO_BUNDLE_DIR}/${target}.bundle)
endfunction()
