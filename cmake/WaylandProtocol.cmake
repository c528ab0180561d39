# nivlo_wayland_protocol(TARGET XML): gives the target a Wayland protocol's client side, to be included as
# "<name of the XML>-client-protocol.h".
pkg_get_variable(WAYLAND_SCANNER wayland-scanner wayland_scanner)
# For clang-tidy, which reads sources that nothing has been built of.
add_custom_target(protocols)

function(nivlo_wayland_protocol target xml)
  get_filename_component(name ${xml} NAME_WE)
  set(header ${CMAKE_CURRENT_BINARY_DIR}/${name}-client-protocol.h)
  set(code ${CMAKE_CURRENT_BINARY_DIR}/${name}-protocol.cpp)
  add_custom_command(OUTPUT ${header} DEPENDS ${xml} COMMAND ${WAYLAND_SCANNER} client-header ${xml} ${header})
  add_custom_command(OUTPUT ${code} DEPENDS ${xml} COMMAND ${WAYLAND_SCANNER} private-code ${xml} ${code})
  # The header's declarations give the tables external linkage, which C++ would deny them otherwise; it ignores their
  # visibility, which is of no matter within a program.
  set_source_files_properties(${code} PROPERTIES COMPILE_OPTIONS "-include;${header};-Wno-attributes"
    OBJECT_DEPENDS ${header})
  target_sources(${target} PRIVATE ${code} ${header})
  add_custom_target(${name}-protocol DEPENDS ${header})
  add_dependencies(protocols ${name}-protocol)
  target_include_directories(${target} PRIVATE ${CMAKE_CURRENT_BINARY_DIR})
endfunction()
