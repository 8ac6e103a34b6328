include(CMakePackageConfigHelpers)
install(TARGETS orv EXPORT orvTargets)
install(EXPORT orvTargets NAMESPACE orv:: DESTINATION lib/cmake/orv)
configure_package_config_file(cmake/orvConfig.cmake.in
  "${CMAKE_CURRENT_BINARY_DIR}/orvConfig.cmake" INSTALL_DESTINATION lib/cmake/orv)
write_basic_package_version_file("${CMAKE_CURRENT_BINARY_DIR}/orvConfigVersion.cmake"
  COMPATIBILITY SameMajorVersion)
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/orvConfig.cmake"
              "${CMAKE_CURRENT_BINARY_DIR}/orvConfigVersion.cmake" DESTINATION lib/cmake/orv)
