# Instrument link: serial port set-up, record framer, decoder.
list(APPEND GC40_CORE_FILES
  instrument/record_framer.cpp instrument/record_framer.h
  instrument/reading_decoder.cpp instrument/reading_decoder.h
)
list(APPEND GC40_QT_FILES
)
