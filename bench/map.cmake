# The View Files map of an eight-hour survey, drawn as the screen draws it.
# Its own main: drawing text needs a GUI application first.
add_executable(gc40_map_bench ${CMAKE_CURRENT_SOURCE_DIR}/map_bench.cpp)
target_link_libraries(gc40_map_bench PRIVATE gc40draw gc40harness benchmark::benchmark)
