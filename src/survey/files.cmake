# Survey geometry shared by View Files and the export: recorded files split
# into survey lines, readings joined to GPS fixes, and the lag estimate.
list(APPEND GC40_CORE_FILES
  survey/survey_lines.cpp survey/survey_lines.h
)
