# Opening and splitting a recorded file in the viewer
gc40_add_bench(gc40_viewer_bench ${CMAKE_CURRENT_SOURCE_DIR}/viewer_bench.cpp)
