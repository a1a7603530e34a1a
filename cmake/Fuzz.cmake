# Target `fuzzers` builds them all; scripts/fuzz runs them.
add_custom_target(fuzzers)

# add_fuzz_target(fuzz_NAME SOURCES … USES …): a libFuzzer executable, its seeds in tests/fuzz/corpus/NAME.
function(add_fuzz_target name)
  cmake_parse_arguments(F "" "" "SOURCES;USES;LIBS" ${ARGN})
  add_executable(${name} EXCLUDE_FROM_ALL ${F_SOURCES})
  target_link_libraries(${name} PRIVATE zu_compile ${F_LIBS})
  target_link_options(${name} PRIVATE -fsanitize=fuzzer)
  use_layers(${name} ${F_USES})
  add_dependencies(fuzzers ${name})
endfunction()
