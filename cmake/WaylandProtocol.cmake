# nivlo_wayland_protocol(TARGET XML): adds the client side of a Wayland protocol to the target, which includes it as
# <NAME-client-protocol.h>, where NAME is the name of the XML file.
pkg_get_variable(WAYLAND_SCANNER wayland-scanner wayland_scanner)
# Generates the headers only. clang-tidy needs no more of a build than that.
add_custom_target(protocols)

function(nivlo_wayland_protocol target xml)
  get_filename_component(name ${xml} NAME_WE)
  set(header ${CMAKE_CURRENT_BINARY_DIR}/${name}-client-protocol.h)
  set(code ${CMAKE_CURRENT_BINARY_DIR}/${name}-protocol.cpp)
  add_custom_command(OUTPUT ${header} DEPENDS ${xml} COMMAND ${WAYLAND_SCANNER} client-header ${xml} ${header})
  add_custom_command(OUTPUT ${code} DEPENDS ${xml} COMMAND ${WAYLAND_SCANNER} private-code ${xml} ${code})
  # The generated code is C. Compiled as C++, its constant tables would have internal linkage without the header's
  # declarations. The warning is about their visibility, which does not matter within a program.
  set_source_files_properties(${code} PROPERTIES COMPILE_OPTIONS "-include;${header};-Wno-attributes"
    OBJECT_DEPENDS ${header})
  target_sources(${target} PRIVATE ${code} ${header})
  add_custom_target(${target}-${name} DEPENDS ${header})
  add_dependencies(protocols ${target}-${name})
  target_include_directories(${target} PRIVATE ${CMAKE_CURRENT_BINARY_DIR})
endfunction()
