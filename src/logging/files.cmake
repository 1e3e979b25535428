# Logging screen: run state machine, status display, live profile, lines,
# stations and comments.
list(APPEND GC40_CORE_FILES
  logging/line_station_model.cpp logging/line_station_model.h
  logging/profile_scale_model.cpp logging/profile_scale_model.h
)
list(APPEND GC40_QT_FILES
  logging/line_station_dialogs.h
  logging/new_line_dialog.cpp
  logging/new_station_dialog.cpp
  logging/comment_dialog.cpp
  logging/profile_scale_dialog.cpp
)
