# The top of the program: start-up, the main window and its menu commands, the
# four setup dialogs, and View Files' export dialog (the screens do not link
# the export library). Nothing else includes from here.
list(APPEND GC40_CORE_FILES
  app/command_line.cpp app/command_line.h
  app/start_up.cpp app/start_up.h
  app/run_start.cpp app/run_start.h
  app/main_menu.cpp app/main_menu.h
  app/title_screen_layout.cpp app/title_screen_layout.h
  app/uptime_guard.cpp app/uptime_guard.h
  app/display_options_model.cpp app/display_options_model.h
  app/gps_port_model.cpp app/gps_port_model.h
  app/logger_setup_model.cpp app/logger_setup_model.h
  app/survey_setup_model.cpp app/survey_setup_model.h
)
list(APPEND GC40_QT_FILES
  app/main_window.cpp app/main_window.h
  app/title_screen_painter.cpp app/title_screen_painter.h
  app/main_commands.cpp app/main_commands.h
  app/simulated_instrument.cpp app/simulated_instrument.h
  app/logger_setup_dialog.cpp app/logger_setup_dialog.h
  app/gps_port_dialog.cpp app/gps_port_dialog.h
  app/survey_setup_dialog.cpp app/survey_setup_dialog.h
  app/display_options_dialog.cpp app/display_options_dialog.h
  app/colour_button.cpp app/colour_button.h
  app/run_setup_dialogs.h
  app/export_dialog.cpp app/export_dialog.h
  app/export_run.cpp app/export_run.h
)
