# cmake -P script: the manual renders, and its OPTIONS name exactly the options PROGRAM --help
# lists.
execute_process(COMMAND "${PROGRAM}" --help RESULT_VARIABLE rc OUTPUT_VARIABLE help ERROR_VARIABLE err)
if(NOT rc EQUAL 0)
  message(FATAL_ERROR "${PROGRAM} --help failed (${rc}): ${err}")
endif()
set(from_help "")
string(REPLACE "\n" ";" lines "${help}")
foreach(line IN LISTS lines)
  # "  -h, --help   Displays ..." and "  --db <file or location>   Open ..."
  if(line MATCHES "^  (-[a-zA-Z], )?--([a-z][a-z-]*)")
    list(APPEND from_help "${CMAKE_MATCH_2}")
  endif()
endforeach()

# The manual renders without a complaint of the formatter.
execute_process(COMMAND man --warnings=w -l "${MANPAGE}" RESULT_VARIABLE rc OUTPUT_VARIABLE rendered
                ERROR_VARIABLE warnings)
if(NOT rc EQUAL 0 OR NOT warnings STREQUAL "" OR NOT rendered MATCHES "EXIT STATUS")
  message(FATAL_ERROR "man -l ${MANPAGE} (${rc}):\n${warnings}")
endif()

file(READ "${MANPAGE}" man)
string(FIND "${man}" "\n.SH OPTIONS\n" start)
if(start LESS 0)
  message(FATAL_ERROR "${MANPAGE} has no OPTIONS section")
endif()
string(SUBSTRING "${man}" ${start} -1 man)
string(SUBSTRING "${man}" 13 -1 rest)
string(FIND "${rest}" "\n.SH " end)
string(SUBSTRING "${rest}" 0 ${end} options)
set(from_man "")
string(REPLACE "\n" ";" lines "${options}")
set(term FALSE)
foreach(line IN LISTS lines)
  # Each option is the first line of a .TP paragraph: .B \-\-list, .BI \-\-db " file", .BR \-h ", " \-\-help
  if(term AND line MATCHES "^\\.B[IR]? ")
    string(REGEX MATCHALL "\\\\-\\\\-[a-z][a-z\\\\-]*" names "${line}")
    foreach(name IN LISTS names)
      string(REPLACE "\\-" "-" name "${name}")
      string(REGEX REPLACE "^--" "" name "${name}")
      list(APPEND from_man "${name}")
    endforeach()
  endif()
  set(term FALSE)
  if(line STREQUAL ".TP")
    set(term TRUE)
  endif()
endforeach()

list(SORT from_help)
list(SORT from_man)
set(missing ${from_help})
list(REMOVE_ITEM missing ${from_man})
set(extra ${from_man})
list(REMOVE_ITEM extra ${from_help})
if(missing OR extra OR NOT from_help)
  message(FATAL_ERROR "the manual and --help differ.\n"
                      "  in --help, not in the manual: ${missing}\n"
                      "  in the manual, not in --help: ${extra}\n"
                      "  --help: ${from_help}\n  manual: ${from_man}")
endif()
message("the manual describes all ${from_help}")
