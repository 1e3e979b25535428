# The whole gc40 program from outside: latency, CPU against a plain copier,
# start-up, Monitor GPS and the field-day soak (scripts/soak.sh).
add_executable(gc40_e2e_bench
  ${CMAKE_CURRENT_SOURCE_DIR}/e2e/main.cpp
  ${CMAKE_CURRENT_SOURCE_DIR}/e2e/data_file_watch.cpp
  ${CMAKE_CURRENT_SOURCE_DIR}/e2e/feeds.cpp
  ${CMAKE_CURRENT_SOURCE_DIR}/e2e/gc40_rig.cpp
  ${CMAKE_CURRENT_SOURCE_DIR}/e2e/measurements.cpp
  ${CMAKE_CURRENT_SOURCE_DIR}/e2e/paced_source.cpp
  ${CMAKE_CURRENT_SOURCE_DIR}/e2e/process_usage.cpp
  ${CMAKE_CURRENT_SOURCE_DIR}/e2e/pty_feed.cpp
  ${CMAKE_CURRENT_SOURCE_DIR}/e2e/soak.cpp)
target_include_directories(gc40_e2e_bench PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
target_link_libraries(gc40_e2e_bench PRIVATE gc40sim gc40harness)
target_compile_definitions(gc40_e2e_bench PRIVATE GC40_BINARY="$<TARGET_FILE:gc40>")
add_dependencies(gc40_e2e_bench gc40)
