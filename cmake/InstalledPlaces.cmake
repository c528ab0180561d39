# Where an installation keeps what is Nivlo's own, below the prefix, and the ways between these places. They are relative, so
# that an installation can be moved, and installed under any prefix.
include(GNUInstallDirs)
set(NIVLO_LIBRARY_DIR ${CMAKE_INSTALL_LIBDIR}/nivlo)
set(NIVLO_HELPERS_DIR ${CMAKE_INSTALL_LIBEXECDIR}/nivlo)
file(RELATIVE_PATH NIVLO_LIBRARIES_FROM_PROGRAM /prefix/${CMAKE_INSTALL_BINDIR} /prefix/${NIVLO_LIBRARY_DIR})
file(RELATIVE_PATH NIVLO_HELPERS_FROM_PROGRAM /prefix/${CMAKE_INSTALL_BINDIR} /prefix/${NIVLO_HELPERS_DIR})
file(RELATIVE_PATH NIVLO_LIBRARIES_FROM_HELPERS /prefix/${NIVLO_HELPERS_DIR} /prefix/${NIVLO_LIBRARY_DIR})
set(CMAKE_INSTALL_RPATH "$ORIGIN/${NIVLO_LIBRARIES_FROM_PROGRAM}")
