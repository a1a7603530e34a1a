find_package(GTest REQUIRED)
include(GoogleTest)

# Recordings of real buses live beside the checkout; tests that need them skip where they are absent.
set(ZU_CAPTURES ${CMAKE_SOURCE_DIR}/../shared/captures CACHE PATH "Folder with the recordings of real buses")

# zu_whole_runs(name properties…): the same executable in two halves, which CTest knows with `-C Whole` only: a process
# a case costs more than the cases. Each half writes what became of its cases to <build>/reports; ./test counts those.
function(zu_whole_runs name)
  foreach(index 0 1)
    math(EXPR number "${index} + 1")
    set(entry ${name}.${number}of2)
    add_test(NAME ${entry} CONFIGURATIONS Whole
      COMMAND ${name} --gtest_output=xml:${CMAKE_BINARY_DIR}/reports/${entry}.xml)
    set_tests_properties(${entry} PROPERTIES ${ARGN} TIMEOUT 1500)
    set_property(TEST ${entry} APPEND PROPERTY LABELS whole)
    set_property(TEST ${entry} APPEND PROPERTY ENVIRONMENT GTEST_TOTAL_SHARDS=2 GTEST_SHARD_INDEX=${index})
  endforeach()
endfunction()

# add_zu_test(name SOURCES … USES … [LIBS …] [LABEL fast|slow|ui]): one executable, one CTest entry a case
# beside the two of the whole.
function(add_zu_test name)
  cmake_parse_arguments(T "" "LABEL" "SOURCES;USES;LIBS" ${ARGN})
  if(NOT T_LABEL)
    set(T_LABEL fast)
  endif()
  add_executable(${name} ${T_SOURCES})
  target_link_libraries(${name} PRIVATE zu_compile zu_test_support GTest::gtest_main ${T_LIBS})
  target_compile_options(${name} PRIVATE ${ZU_TEST_OPTIONS})
  use_layers(${name} ${T_USES})
  zu_precompiled(${name} test ${T_LIBS})
  set(properties LABELS ${T_LABEL} TIMEOUT 300)
  if(T_LABEL STREQUAL "ui")
    list(APPEND properties ENVIRONMENT QT_QPA_PLATFORM=offscreen)
  endif()
  if(T_LABEL STREQUAL "slow")
    list(APPEND properties COST 1000) # first, so that none of them is left running alone
  endif()
  zu_whole_runs(${name} ${properties})
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST PROPERTIES ${properties})
endfunction()
