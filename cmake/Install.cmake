# What `cmake --install` lays out, all in this one place. The tree can be moved: every part finds the others by paths
# relative to its own file, and so do the CMake package and the .pc files.
include(CMakePackageConfigHelpers)

set(krz_headers ${CMAKE_INSTALL_INCLUDEDIR}/krz)
set(krz_libraries ${CMAKE_INSTALL_LIBDIR}/krz)
set(krz_package ${CMAKE_INSTALL_LIBDIR}/cmake/krz)

# The command; the libraries that programs link; what is loaded at run time.
install(TARGETS krz RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(TARGETS toolbox krzruntime toolbox_headers plugin_abi EXPORT krz
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(TARGETS plugin krz_command LIBRARY DESTINATION ${krz_libraries})
install(TARGETS application_services_framework
  LIBRARY DESTINATION ${krz_libraries}/Frameworks/ApplicationServices.framework)
install(TARGETS carbon_framework LIBRARY DESTINATION ${krz_libraries}/Frameworks/Carbon.framework)

# Headers: krz/toolbox is an include folder of its own, so that names like Carbon/Carbon.h do not spread.
install(DIRECTORY toolbox/include/ DESTINATION ${krz_headers}/toolbox)
install(FILES plugin/include/krz/abi.h runtime/export.h runtime/runtime.h runtime/value.h runtime/language/script.h
  runtime/language/session.h DESTINATION ${krz_headers})

# find_package(krz) gives krz::runtime and krz::toolbox; pkg-config knows krz-runtime and krz-toolbox.
install(EXPORT krz FILE krzTargets.cmake NAMESPACE krz:: DESTINATION ${krz_package})
configure_package_config_file(cmake/krzConfig.cmake.in ${CMAKE_BINARY_DIR}/krzConfig.cmake
  INSTALL_DESTINATION ${krz_package})
write_basic_package_version_file(${CMAKE_BINARY_DIR}/krzConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_BINARY_DIR}/krzConfig.cmake ${CMAKE_BINARY_DIR}/krzConfigVersion.cmake
  DESTINATION ${krz_package})
file(RELATIVE_PATH krz_prefix_from_pc /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
foreach(name krz-runtime krz-toolbox)
  configure_file(cmake/${name}.pc.in ${CMAKE_BINARY_DIR}/${name}.pc @ONLY)
  install(FILES ${CMAKE_BINARY_DIR}/${name}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endforeach()

# For people. Manual pages and completions are installed where the build has made them: man/*.1, and in completions/
# the zsh function `_krz` and the bash file.
install(FILES README.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY docs examples editors DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY ${CMAKE_BINARY_DIR}/man/ DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 OPTIONAL
  FILES_MATCHING PATTERN "*.1")
install(DIRECTORY ${CMAKE_BINARY_DIR}/completions/ DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions OPTIONAL
  FILES_MATCHING PATTERN "_*")
install(DIRECTORY ${CMAKE_BINARY_DIR}/completions/ DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions
  OPTIONAL PATTERN "_*" EXCLUDE)
