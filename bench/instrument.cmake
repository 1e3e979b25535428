# Framer and decoder throughput
gc40_add_bench(gc40_instrument_bench ${CMAKE_CURRENT_SOURCE_DIR}/instrument_bench.cpp)
