# Instrument link: serial port set-up, record framer, decoder.
list(APPEND GC40_CORE_FILES
)
list(APPEND GC40_QT_FILES
)
