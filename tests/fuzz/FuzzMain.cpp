#include <cstdio>
#include <cstdlib>

#include "FuzzEntries.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string problem = zu::test::ZU_FUZZ_ENTRY({data, size});
    if (problem.empty()) return 0;
    std::fprintf(stderr, "%s\n", problem.c_str());
    std::abort();
}
