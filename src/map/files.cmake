# The survey map of View Files and r40 plot: readings placed in metres, the
# colour bar, the view's fit, pan and zoom, the dots one per pixel, the scale
# bar and the tap. The drawing itself is the screens' and r40's.
list(APPEND GC40_CORE_FILES
  map/map_readings.cpp map/map_readings.h
  map/map_colours.cpp map/map_colours.h
  map/map_view.cpp map/map_view.h
  map/map_drawing.cpp map/map_drawing.h
  map/map_texts.cpp map/map_texts.h
)
