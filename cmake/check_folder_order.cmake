# Fails when a source file includes a header from a folder above its own, so
# the folders keep depending one way: each may use only those before it.
# APART lists pairs "a>b" of folders where a may not include from b although
# the order would let it (the terminal front end stays off the screens' parts).
# Run as: cmake -DROOT=src -DORDER="base;settings;..." -DFILES="a;b" -DSTAMP=path
#               [-DAPART="a>b;..."] -P check_folder_order.cmake
foreach(file IN LISTS FILES)
  file(RELATIVE_PATH relative "${ROOT}" "${file}")
  string(REGEX REPLACE "/.*" "" folder "${relative}")
  list(FIND ORDER "${folder}" own_rank)
  if(own_rank EQUAL -1)
    message(FATAL_ERROR "${file}: folder '${folder}' has no place in the folder order: ${ORDER}")
  endif()
  file(STRINGS "${file}" includes REGEX "^[ \t]*#[ \t]*include[ \t]*\"[a-z_]+/")
  foreach(include IN LISTS includes)
    string(REGEX REPLACE "^[^\"]*\"([a-z_]+)/.*" "\\1" used "${include}")
    list(FIND ORDER "${used}" used_rank)
    list(FIND APART "${folder}>${used}" apart)
    if(NOT apart EQUAL -1)
      message(FATAL_ERROR "${file}: '${folder}' may not include from '${used}' (${include})")
    endif()
    if(used_rank GREATER own_rank)
      string(REPLACE ";" " < " order_text "${ORDER}")
      message(FATAL_ERROR "${file}: '${folder}' may not include from '${used}', which is above "
                          "it (${include}). Folders depend downward only: ${order_text}")
    endif()
  endforeach()
endforeach()
file(TOUCH "${STAMP}")
