# cmake -P script: builds the Debian package of BUILD_DIR into OUT_DIR.
file(REMOVE_RECURSE "${OUT_DIR}")
file(MAKE_DIRECTORY "${OUT_DIR}")
# gzip keeps the debug build's package quick to make; the release package keeps CPack's default.
execute_process(COMMAND cpack -G DEB --config "${BUILD_DIR}/CPackConfig.cmake" -B "${OUT_DIR}"
                        -D CPACK_DEBIAN_COMPRESSION_TYPE=gzip
                RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
if(NOT rc EQUAL 0)
  message(FATAL_ERROR "cpack -G DEB failed (${rc}):\n${out}\n${err}")
endif()
file(GLOB debs "${OUT_DIR}/*.deb")
list(LENGTH debs count)
if(NOT count EQUAL 1)
  message(FATAL_ERROR "expected one package in ${OUT_DIR}, found ${count}: ${debs}\n${out}")
endif()
message("${debs}")
