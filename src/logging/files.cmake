# Logging screen: run state machine, status display, live profile, lines,
# stations and comments.
list(APPEND GC40_CORE_FILES
  logging/run_state.cpp logging/run_state.h
  logging/command_keys.cpp logging/command_keys.h
  logging/reading_decision.cpp logging/reading_decision.h
  logging/logging_texts.h
  logging/logging_view.h
  logging/logging_session.cpp logging/logging_session.h
  logging/run_start.cpp logging/run_start.h
  logging/line_station_model.cpp logging/line_station_model.h
  logging/profile_scale_model.cpp logging/profile_scale_model.h
  logging/status_texts.cpp logging/status_texts.h
  logging/status_layout.cpp logging/status_layout.h
  logging/profile_plot.cpp logging/profile_plot.h
)
list(APPEND GC40_QT_FILES
  logging/line_station_dialogs.h
  logging/new_line_dialog.cpp
  logging/new_station_dialog.cpp
  logging/comment_dialog.cpp
  logging/profile_scale_dialog.cpp
  logging/status_panel.cpp logging/status_panel.h
  logging/field_text.cpp logging/field_text.h
  logging/profile_view.cpp logging/profile_view.h
  logging/logging_links.cpp logging/logging_links.h
  logging/logging_window.cpp logging/logging_window.h
)
