# Fails when a file of the standard-C++ core includes a Qt header.
# Run as: cmake -DFILES="a;b" -DSTAMP=path -P check_no_qt_includes.cmake
foreach(file IN LISTS FILES)
  file(STRINGS "${file}" qt_includes REGEX "^[ \t]*#[ \t]*include[ \t]*[<\"](Q|qt)")
  if(qt_includes)
    list(GET qt_includes 0 first)
    message(FATAL_ERROR "${file}: the core is standard C++ only, but it has: ${first}")
  endif()
endforeach()
file(TOUCH "${STAMP}")
