# GPS link: line assembler, checksum and fields, what the status screen shows,
# and the Monitor GPS screen.
list(APPEND GC40_CORE_FILES
  gps/nmea.cpp gps/nmea.h
  gps/gps_line_assembler.cpp gps/gps_line_assembler.h
  gps/gps_status.cpp gps/gps_status.h
  gps/gps_monitor.cpp gps/gps_monitor.h
)
list(APPEND GC40_QT_FILES
  gps/gps_reader.cpp gps/gps_reader.h
  gps/gps_line_list.cpp gps/gps_line_list.h
  gps/gps_message_dialog.cpp gps/gps_message_dialog.h
  gps/monitor_gps_window.cpp gps/monitor_gps_window.h
)
