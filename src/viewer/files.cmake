# File viewer: the line index files and the View Files screen with its profile.
list(APPEND GC40_CORE_FILES
  viewer/line_index_files.cpp viewer/line_index_files.h
  viewer/line_view.cpp viewer/line_view.h
  viewer/viewer_texts.cpp viewer/viewer_texts.h
  viewer/viewer_keys.cpp viewer/viewer_keys.h
)
# The map, the profile and their pictures, drawn alike on the screen and by r40.
list(APPEND GC40_DRAW_FILES
  viewer/profile_painter.cpp viewer/profile_painter.h
  viewer/map_painter.cpp viewer/map_painter.h
  viewer/survey_pictures.cpp viewer/survey_pictures.h
)
list(APPEND GC40_QT_FILES
  viewer/survey_file_loader.cpp viewer/survey_file_loader.h
  viewer/line_index_store.cpp viewer/line_index_store.h
  viewer/view_curve.cpp viewer/view_curve.h
  viewer/survey_map.cpp viewer/survey_map.h
  viewer/view_files_window.cpp viewer/view_files_window.h
)
