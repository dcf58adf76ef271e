# What `./dev package` makes with CPack: a Debian package and an archive of the same tree.
set(CPACK_GENERATOR DEB TGZ)
set(CPACK_PACKAGE_VENDOR "The krz developers")
set(CPACK_PACKAGE_CONTACT "The krz developers")
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR}/packages)
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)

set(CPACK_PACKAGING_INSTALL_PREFIX "")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION video)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "look inside QuickTime-style movies and edit them by script")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
  "Tracks, edits, chapters, timecode, metadata and sample tables of .mov, .mp4,
.m4a and .m4v files, inspected and changed without re-encoding: from the
command line, in scripts of a BASIC-family language, and from C and C++.")

# What the files are linked with is found by dpkg-shlibdeps. It cannot see what is opened late:
# - zlib reads compressed movie atoms, PCRE2 is behind RegEx, libpng behind picture files. A script that works on one
#   machine has to work on every other, and all three are there already: FreeType and the base system need them.
# - libedit gives `krz repl` history and completion; without it lines are read plainly, so it is only recommended.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY}
  ${CMAKE_LIBRARY_OUTPUT_DIRECTORY}/krz/Frameworks/ApplicationServices.framework)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "zlib1g, libpcre2-8-0, libpng16-16")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS libedit2)

# Packages whose programs link our libraries depend on this one.
file(WRITE ${CMAKE_BINARY_DIR}/debian/shlibs
  "libtoolbox ${KRZ_INTERFACE} krz (>= ${KRZ_INTERFACE})\nlibkrzruntime ${KRZ_INTERFACE} krz (>= ${KRZ_INTERFACE})\n")
set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA ${CMAKE_BINARY_DIR}/debian/shlibs)

include(CPack)
