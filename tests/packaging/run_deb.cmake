# cmake -P script: unpacks the package in OUT_DIR into a scratch root, runs the workbench from
# there and checks what the package says it depends on.
file(GLOB debs "${OUT_DIR}/*.deb")
list(LENGTH debs count)
if(NOT count EQUAL 1)
  message(FATAL_ERROR "expected one package in ${OUT_DIR}, found ${count}")
endif()
set(root "${OUT_DIR}/root")
file(REMOVE_RECURSE "${root}")

function(run out)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE rc OUTPUT_VARIABLE text ERROR_VARIABLE err)
  if(NOT rc EQUAL 0)
    message(FATAL_ERROR "Failed (${rc}): ${ARGN}\n${text}\n${err}")
  endif()
  set(${out} "${text}" PARENT_SCOPE)
endfunction()

run(ignored dpkg-deb -x "${debs}" "${root}")
# Everything is installed under /usr; nothing of the source or build tree comes along.
file(GLOB top RELATIVE "${root}" "${root}/*")
if(NOT top STREQUAL "usr")
  message(FATAL_ERROR "the package holds more than /usr: ${top}")
endif()
foreach(file usr/bin/zeb-workbench
             usr/share/applications/org.zebsubmittalcontrols.Workbench.desktop
             usr/share/icons/hicolor/scalable/apps/org.zebsubmittalcontrols.Workbench.svg
             usr/share/metainfo/org.zebsubmittalcontrols.Workbench.metainfo.xml
             usr/share/man/man1/zeb-workbench.1)
  if(NOT EXISTS "${root}/${file}")
    message(FATAL_ERROR "the package lacks /${file}")
  endif()
endforeach()

# The program finds its libraries in the unpacked tree (RUNPATH), not in the build folder.
run(version env -u LD_LIBRARY_PATH "${root}/usr/bin/zeb-workbench" --version)
run(built "${PROGRAM}" --version)
if(NOT version STREQUAL built OR NOT version MATCHES "^zeb-workbench [0-9]")
  message(FATAL_ERROR "the unpacked zeb-workbench --version answered \"${version}\", the built one \"${built}\"")
endif()
run(ldd ldd "${root}/usr/bin/zeb-workbench")
string(REGEX MATCH "libZebSubCtl[^\n]*" subctl "${ldd}")
if(NOT subctl MATCHES "=> ${root}/usr/")
  message(FATAL_ERROR "libZebSubCtl does not come from the unpacked package: ${subctl}")
endif()

run(depends dpkg-deb -f "${debs}" Depends)
foreach(library libqt6widgets6 libqt6gui6 libqt6core6 libqt6sql6 libqt6sql6-sqlite libqpdf libpq5)
  if(NOT depends MATCHES "(^|, )${library}[a-z0-9]*( |,|$)")
    message(FATAL_ERROR "Depends names no ${library}: ${depends}")
  endif()
endforeach()
run(section dpkg-deb -f "${debs}" Package Section Maintainer)
message("${section}Depends: ${depends}")
