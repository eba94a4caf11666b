# cmake -DBENCH=<orvella_bench> -P run_bench.cmake: runs each mode on tiny images. The figures are not judged, but they
# must be there, in the JSON file as in the table.
set(file bench_test.json)

function(run mode figure)
  file(REMOVE ${file})
  execute_process(COMMAND ${BENCH} ${mode} --quick --json ${file} ${ARGN}
                  OUTPUT_VARIABLE printed ERROR_VARIABLE error RESULT_VARIABLE result)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "orvella_bench ${mode} ends with ${result}: ${error}")
  endif()
  file(READ ${file} json)
  string(JSON rows LENGTH "${json}")
  string(REGEX MATCHALL "\n\\| " lines "${printed}") # all but the header
  list(LENGTH lines lines)
  if(NOT rows EQUAL lines OR rows EQUAL 0)
    message(FATAL_ERROR "orvella_bench ${mode}: ${rows} rows in the JSON file, ${lines} in the table")
  endif()
  math(EXPR last "${rows} - 1")
  foreach(row RANGE ${last})
    string(JSON value GET "${json}" ${row} ${figure})
    if(NOT value GREATER 0)
      string(JSON name GET "${json}" ${row} conversion)
      message(FATAL_ERROR "orvella_bench ${mode}: ${name} has a ${figure} of ${value}")
    endif()
  endforeach()
endfunction()

run(table nsPerPixel --size 64x16)
run(linearity nsPerPixel --size 64x16)
run(scaling speedUp --size 64x16)

execute_process(COMMAND ${BENCH} --size nonsense RESULT_VARIABLE result ERROR_QUIET)
if(NOT result EQUAL 2)
  message(FATAL_ERROR "orvella_bench takes a size that is none")
endif()
