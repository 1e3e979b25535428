# Survey data files: record formatting, writer, naming, reader.
list(APPEND GC40_CORE_FILES
  datafile/data_records.cpp datafile/data_records.h
  datafile/data_file.cpp datafile/data_file.h
  datafile/record_writers.cpp datafile/record_writers.h
  datafile/data_file_naming.cpp datafile/data_file_naming.h
  datafile/data_file_reader.cpp datafile/data_file_reader.h
)
list(APPEND GC40_QT_FILES
  datafile/create_data_file.cpp datafile/create_data_file.h
)
