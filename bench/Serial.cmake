add_zu_bench(bench_serial SOURCES SerialBench.cpp USES state serial)
add_zu_bench(bench_serial_lists SOURCES SerialListBench.cpp USES state serial display)
