# Registers the cases of Python test files as CTest tests, one each. Like gtest_discover_tests with PRE_TEST, they
# are collected when ctest runs, so that a new case needs no new configuration.
#
#   quarn_discover_pytest(GROUP FILES PATH... [LAUNCHER COMMAND...] [PROPERTIES NAME VALUE...])
#
# FILES are files or folders relative to the root folder. The case `test_b` of `test_a.py` becomes the test
# `GROUP.test_a.test_b` with the label GROUP. LAUNCHER runs in front of every case, not in front of the collection.
# A file that cannot be collected becomes the failing test `GROUP.collection`.

# Debian's Python, whose pytest is installed, not another one that comes first in the path.
set(QUARN_PYTHON /usr/bin/python3 -B)

function(quarn_discover_pytest group)
  cmake_parse_arguments(PARSE_ARGV 1 tests "" "" "FILES;LAUNCHER;PROPERTIES")
  set(script ${CMAKE_CURRENT_BINARY_DIR}/${group}-pytest.cmake)
  set(cases ${CMAKE_CURRENT_BINARY_DIR}/${group}-pytest-cases.cmake)
  list(APPEND tests_PROPERTIES LABELS ${group} WORKING_DIRECTORY ${CMAKE_SOURCE_DIR}
    # A run of one case ends with this line when the case was skipped.
    SKIP_REGULAR_EXPRESSION "1 skipped in ")
  set(run ${tests_LAUNCHER} ${QUARN_PYTHON} -m pytest)
  set(collect ${QUARN_PYTHON} ${CMAKE_SOURCE_DIR}/cmake/collect_pytest.py ${group} ${cases} ${tests_FILES})
  foreach(list IN ITEMS run collect tests_PROPERTIES)
    list(TRANSFORM ${list} REPLACE "(.+)" "[==[\\1]==]")
    list(JOIN ${list} " " ${list})
  endforeach()
  configure_file(${CMAKE_SOURCE_DIR}/cmake/PythonTests.cmake.in ${script} @ONLY)
  set_property(DIRECTORY APPEND PROPERTY TEST_INCLUDE_FILES ${script})
endfunction()
