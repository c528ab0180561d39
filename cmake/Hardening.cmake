# The hardening of Debian's packages, in our own builds too: position-independent programs, tables of the dynamic linker
# that are complete and read-only before the program starts, and, in builds that optimise, a guard on the stack and checks of
# the sizes of buffers that libc functions write to. Sanitizers find the same faults sooner and say more about them.
if(NOT NIVLO_SANITIZE)
  add_link_options($<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>:-pie> LINKER:-z,relro,-z,now,-z,noexecstack)
endif()
if(NOT NIVLO_SANITIZE AND NOT CMAKE_BUILD_TYPE STREQUAL "Debug")
  set(NIVLO_FORTIFIED ON)
  # Not by CMAKE_POSITION_INDEPENDENT_CODE, which would compile static libraries as if they belonged to shared ones.
  add_compile_options($<$<NOT:$<BOOL:$<TARGET_PROPERTY:POSITION_INDEPENDENT_CODE>>>:-fPIE> -fstack-protector-strong
    -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2 -Wformat -Werror=format-security)
endif()
