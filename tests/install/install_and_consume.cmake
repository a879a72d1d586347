# cmake -P script: install, then build and run the consumer against the install tree only, and
# check that the consumer needs nothing of the stand-alone objects, the store or the package.
file(REMOVE_RECURSE "${WORK_DIR}")
set(prefix "${WORK_DIR}/prefix")

function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT rc EQUAL 0)
    message(FATAL_ERROR "Failed (${rc}): ${ARGN}\n${out}\n${err}")
  endif()
  set(run_output "${out}" PARENT_SCOPE)
  message("${out}")
endfunction()

run(${CMAKE_COMMAND} --install "${BUILD_DIR}" --prefix "${prefix}")

# One translation unit per installed header.
set(include_root "${prefix}/include/ZebSubmittalControls")
file(GLOB_RECURSE headers RELATIVE "${include_root}" "${include_root}/*.h")
if(NOT headers)
  message(FATAL_ERROR "No headers installed under ${include_root}")
endif()
set(checks)
foreach(header ${headers})
  string(MAKE_C_IDENTIFIER "${header}" name)
  set(check "${WORK_DIR}/headers/${name}.cpp")
  file(WRITE "${check}" "#include <${header}>\n")
  list(APPEND checks "${check}")
endforeach()
list(LENGTH headers header_count)
message("installed headers: ${header_count}")

run(${CMAKE_COMMAND} -S "${CONSUMER_SOURCE}" -B "${WORK_DIR}/build" -G "${GENERATOR}"
    "-DCMAKE_PREFIX_PATH=${prefix}" "-DCMAKE_CXX_FLAGS=${CONSUMER_FLAGS}"
    "-DCMAKE_EXE_LINKER_FLAGS=${CONSUMER_FLAGS}" "-DZEB_HEADER_CHECKS=${checks}")
run(${CMAKE_COMMAND} --build "${WORK_DIR}/build")
run("${WORK_DIR}/build/zeb-consumer")

# What the consumer needs, directly (readelf) and in all (ldd).
set(consumer "${WORK_DIR}/build/zeb-consumer")
run(readelf -d "${consumer}")
set(direct "${run_output}")
run(ldd "${consumer}")
set(all "${run_output}")
foreach(wanted libZebSubCtl libZebObjectsContracts)
  if(NOT direct MATCHES "NEEDED.*\\[${wanted}\\.so")
    message(FATAL_ERROR "The consumer does not link ${wanted}:\n${direct}")
  endif()
endforeach()
foreach(unwanted libZebObjects\\. libZebObjectsRules libZebStore libZebPackage)
  if(direct MATCHES "${unwanted}" OR all MATCHES "${unwanted}")
    message(FATAL_ERROR "The consumer links ${unwanted}:\n${direct}\n${all}")
  endif()
endforeach()
if(NOT all MATCHES "libZebSubCtl\\.so[^\n]*=> ${prefix}")
  message(FATAL_ERROR "The consumer does not load the installed controls:\n${all}")
endif()
message("consumer links only the controls and the contracts")
