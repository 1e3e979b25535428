# Shared screen pieces: layout sizes and the window's scale, key codes, colour
# conversion, the dialog base with its drop-down rules, the warning box, and
# long work on a thread of its own behind a progress dialog.
list(APPEND GC40_CORE_FILES
  ui/combo_selection.cpp ui/combo_selection.h
  ui/window_geometry.cpp ui/window_geometry.h
)
list(APPEND GC40_QT_FILES
  ui/key_codes.cpp ui/key_codes.h
  ui/setup_dialog.cpp ui/setup_dialog.h
  ui/warning_box.cpp ui/warning_box.h
  ui/background_task.cpp ui/background_task.h
  ui/screen_layout.cpp ui/screen_layout.h
)
# Drawing with Qt's GUI module alone, which r40 and the benchmarks draw with
# too: colour conversion, and the application a program without windows needs.
list(APPEND GC40_DRAW_FILES
  ui/colour.cpp ui/colour.h
  ui/offscreen_gui.cpp ui/offscreen_gui.h
)
