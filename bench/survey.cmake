# Readings joined to GPS fixes, and the lag estimate, over a day's survey
gc40_add_bench(gc40_survey_bench ${CMAKE_CURRENT_SOURCE_DIR}/survey_bench.cpp)
