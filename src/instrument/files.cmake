# Instrument link: serial port set-up, record framer, decoder.
list(APPEND GC40_CORE_FILES
  instrument/port_settings.cpp instrument/port_settings.h
  instrument/record_framer.cpp instrument/record_framer.h
  instrument/reading_decoder.cpp instrument/reading_decoder.h
)
list(APPEND GC40_QT_FILES
  instrument/serial_ports.cpp instrument/serial_ports.h
  instrument/port_reader.cpp instrument/port_reader.h
  instrument/instrument_reader.cpp instrument/instrument_reader.h
)
