# An eight-hour survey with 1 Hz GPS exported to a GeoPackage
gc40_add_bench(gc40_export_bench ${CMAKE_CURRENT_SOURCE_DIR}/export_bench.cpp)
target_link_libraries(gc40_export_bench PRIVATE gc40export gc40harness)
