# Record formatting and data file reading
gc40_add_bench(gc40_datafile_bench ${CMAKE_CURRENT_SOURCE_DIR}/datafile_bench.cpp)
