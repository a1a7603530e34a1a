add_zu_bench(bench_serial SOURCES SerialBench.cpp USES state serial)
