# Logging screen: run state machine, status display, live profile, lines,
# stations and comments.
list(APPEND GC40_CORE_FILES
)
list(APPEND GC40_QT_FILES
)
