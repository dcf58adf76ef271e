# krz_sources(VARIABLE FOLDER...): every C++ source below the folders, found again when one is added.
function(krz_sources variable)
  set(patterns)
  foreach(folder ${ARGN})
    list(APPEND patterns ${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*.cpp)
  endforeach()
  file(GLOB_RECURSE found CONFIGURE_DEPENDS ${patterns})
  set(${variable} ${found} PARENT_SCOPE)
endfunction()
