# Survey geometry shared by View Files and the export: recorded files split
# into survey lines, readings joined to GPS fixes, the lag estimate, and the
# export's last choices (FLDINI/EXPORT.INI).
list(APPEND GC40_CORE_FILES
  survey/survey_lines.cpp survey/survey_lines.h
  survey/survey_time.cpp survey/survey_time.h
  survey/receiver_sentences.cpp survey/receiver_sentences.h
  survey/file_scan.cpp survey/file_scan.h
  survey/fix_track.cpp survey/fix_track.h
  survey/reading_positions.cpp survey/reading_positions.h
  survey/neighbour_grid.cpp survey/neighbour_grid.h
  survey/lag_estimate.cpp survey/lag_estimate.h
  survey/export_choices.cpp survey/export_choices.h
)
