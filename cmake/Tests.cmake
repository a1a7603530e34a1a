find_package(GTest REQUIRED)
include(GoogleTest)

# Recordings of real buses live beside the checkout; tests that need them skip where they are absent.
set(ZU_CAPTURES ${CMAKE_SOURCE_DIR}/../shared/captures CACHE PATH "Folder with the recordings of real buses")

# add_zu_test(name SOURCES … USES … [LIBS …] [LABEL fast|slow|ui]): one executable, one CTest entry a case.
function(add_zu_test name)
  cmake_parse_arguments(T "" "LABEL" "SOURCES;USES;LIBS" ${ARGN})
  if(NOT T_LABEL)
    set(T_LABEL fast)
  endif()
  add_executable(${name} ${T_SOURCES})
  target_link_libraries(${name} PRIVATE zu_compile zu_test_support GTest::gtest_main ${T_LIBS})
  use_layers(${name} ${T_USES})
  set(properties LABELS ${T_LABEL} TIMEOUT 300)
  if(T_LABEL STREQUAL "ui")
    list(APPEND properties ENVIRONMENT QT_QPA_PLATFORM=offscreen)
  endif()
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST PROPERTIES ${properties})
endfunction()
