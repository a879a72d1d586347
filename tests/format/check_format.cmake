# Fails when a C++ file of the project differs from the committed .clang-format.
#   cmake -DCLANG_FORMAT=... -DROOT=<source root> -P check_format.cmake
set(files)
foreach(dir src apps tests bench examples fuzz)
  file(GLOB_RECURSE found ${ROOT}/${dir}/*.cpp ${ROOT}/${dir}/*.h)
  list(APPEND files ${found})
endforeach()
list(LENGTH files count)
execute_process(COMMAND ${CLANG_FORMAT} --dry-run --Werror ${files}
                RESULT_VARIABLE result ERROR_VARIABLE errors)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "files differ from .clang-format (clang-format -i fixes them):\n${errors}")
endif()
message(STATUS "${count} files in the committed format")
