# Precompiled headers of the standard library, Qt and GoogleTest, for builds that are made from nothing. The daily build
# does without them, so that every file has to include what it uses and ccache can serve several checkouts.
if(NOT ZU_PCH)
  function(zu_precompiled)
  endfunction()
  return()
endif()

# One precompiled header serves only what is compiled for the same kind of position; Qt asks for this one.
target_compile_options(zu_compile INTERFACE -fPIC)

set(_std <algorithm> <array> <charconv> <cmath> <cstdint> <cstdio> <cstdlib> <cstring> <filesystem> <fstream> <functional>
  <iterator> <map> <memory> <optional> <set> <span> <sstream> <string> <string_view> <utility> <variant> <vector>)

# zu_pch_carrier(kind LIBS … HEADERS …): compiles the headers once, for all targets of the kind.
function(zu_pch_carrier kind)
  cmake_parse_arguments(P "" "" "LIBS;HEADERS" ${ARGN})
  add_library(zu_pch_${kind} OBJECT EXCLUDE_FROM_ALL ${CMAKE_SOURCE_DIR}/cmake/Empty.cpp)
  target_link_libraries(zu_pch_${kind} PRIVATE zu_compile ${P_LIBS})
  target_precompile_headers(zu_pch_${kind} PRIVATE ${P_HEADERS})
endfunction()

zu_pch_carrier(layer HEADERS ${_std})
if(ZU_QT)
  find_package(Qt6 6.4 REQUIRED COMPONENTS Widgets)
  zu_pch_carrier(layer_qt LIBS Qt6::Widgets HEADERS ${_std} <QtWidgets>)
endif()
if(ZU_TESTS)
  zu_pch_carrier(test LIBS GTest::gtest HEADERS ${_std} <gtest/gtest.h>)
  if(ZU_QT)
    zu_pch_carrier(test_qt LIBS GTest::gtest Qt6::Widgets HEADERS ${_std} <QtWidgets> <gtest/gtest.h>)
  endif()
  foreach(carrier test test_qt)
    if(TARGET zu_pch_${carrier})
      target_compile_options(zu_pch_${carrier} PRIVATE ${ZU_TEST_OPTIONS})
    endif()
  endforeach()
endif()

# zu_precompiled(target layer|test libs…)
function(zu_precompiled target kind)
  if("${ARGN}" MATCHES "Qt6::Widgets")
    target_precompile_headers(${target} REUSE_FROM zu_pch_${kind}_qt)
  else()
    target_precompile_headers(${target} REUSE_FROM zu_pch_${kind})
  endif()
endfunction()
