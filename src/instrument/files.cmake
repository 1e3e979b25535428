# Instrument link: serial port set-up, record framer, decoder.
list(APPEND GC40_CORE_FILES
  instrument/port_settings.cpp instrument/port_settings.h
)
list(APPEND GC40_QT_FILES
  instrument/serial_ports.cpp instrument/serial_ports.h
)
