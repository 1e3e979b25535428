# Survey data files: record formatting, writer, naming, reader.
list(APPEND GC40_CORE_FILES
)
list(APPEND GC40_QT_FILES
)
