# Export: readings as point features in GIS formats. A library of its own, the
# only one that links GDAL; the core never includes it.
set(GC40_EXPORT_FILES
  export/feature_table.cpp export/feature_table.h
  export/crs.cpp export/crs.h
  export/feature_writer.cpp export/feature_writer.h
  export/xyz_writer.cpp export/xyz_writer.h
  export/gdal_errors.h
  export/reading_columns.cpp export/reading_columns.h
  export/readings_export.cpp export/readings_export.h
)
