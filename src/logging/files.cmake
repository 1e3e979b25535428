# Logging screen: run state machine, status display, live profile, lines,
# stations and comments.
list(APPEND GC40_CORE_FILES
  logging/status_texts.cpp logging/status_texts.h
  logging/status_layout.cpp logging/status_layout.h
  logging/profile_plot.cpp logging/profile_plot.h
)
list(APPEND GC40_QT_FILES
  logging/status_panel.cpp logging/status_panel.h
  logging/profile_view.cpp logging/profile_view.h
  # The battery field's source; reads /sys, so it stays out of the core.
  platform/battery.cpp platform/battery.h
)
