# Copies the sample disc into a Windows build's disc/ folder, with TOVELSETUP.EXE in its
# root and TOVELFAKESETUP.EXE under the name of every product setup: on the sample disc those
# are Linux launchers of the stand-in setup (#!/bin/sh), which Windows cannot start.
#
#   cmake -DSOURCE=examples/disc -DDEST=build-win/disc -DSETUP=TOVELSETUP.EXE
#         -DFAKESETUP=TOVELFAKESETUP.EXE -P cmake/WindowsDisc.cmake
file(REMOVE_RECURSE "${DEST}")
file(COPY "${SOURCE}/" DESTINATION "${DEST}")
file(GLOB_RECURSE files LIST_DIRECTORIES false "${DEST}/*")
set(launchers 0)
foreach(file IN LISTS files)
  file(READ "${file}" start LIMIT 16)
  string(FIND "${start}" "#!/bin/sh" at)
  if(at EQUAL 0)
    configure_file("${FAKESETUP}" "${file}" COPYONLY)
    math(EXPR launchers "${launchers} + 1")
  endif()
endforeach()
if(launchers EQUAL 0)
  message(FATAL_ERROR "WindowsDisc: no product setup launcher found below ${SOURCE}")
endif()
configure_file("${SETUP}" "${DEST}/TOVELSETUP.EXE" COPYONLY)
