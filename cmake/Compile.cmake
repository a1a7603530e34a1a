# One interface target carries what every translation unit is compiled with.
add_library(zu_compile INTERFACE)
target_compile_options(zu_compile INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
if(ZU_WERROR)
  target_compile_options(zu_compile INTERFACE -Werror)
endif()
if(ZU_SANITIZE)
  set(_sanitizers -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_compile_options(zu_compile INTERFACE ${_sanitizers})
  target_link_options(zu_compile INTERFACE ${_sanitizers})
endif()
# The libraries are what the sanitizers examine. A test's own code is not optimised and not asked for null pointers (which
# fault anyway), alignment and types: it compiles in half the time.
set(ZU_TEST_OPTIONS)
if(ZU_SANITIZE)
  set(ZU_TEST_OPTIONS -O0 -fno-sanitize=null,alignment,vptr)
endif()
if(ZU_FUZZ)
  set(_fuzz -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all)
  target_compile_options(zu_compile INTERFACE ${_fuzz})
  target_link_options(zu_compile INTERFACE ${_fuzz})
endif()

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM AND NOT ZU_PCH) # what a precompiled header served is not cached
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE_PROGRAM})
endif()
