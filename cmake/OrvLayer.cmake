# One library target per layer. A layer's sources are every .cpp file of its folder, so adding a
# file needs no edit here; a layer without sources yet is an interface target that only passes on
# its dependencies.
function(orv_layer name)
  cmake_parse_arguments(ARG "" "" "DEPENDS;PRIVATE_DEPENDS" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp")
  file(GLOB headers CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.h")
  if(sources)
    add_library(${name} STATIC ${sources} ${headers})
    target_include_directories(${name} PUBLIC
      $<BUILD_INTERFACE:${CMAKE_CURRENT_SOURCE_DIR}>
      $<INSTALL_INTERFACE:include/orv>)
    target_link_libraries(${name} PUBLIC ${ARG_DEPENDS} PRIVATE ${ARG_PRIVATE_DEPENDS})
    set(scope PUBLIC)
  else()
    add_library(${name} INTERFACE)
    target_include_directories(${name} INTERFACE
      $<BUILD_INTERFACE:${CMAKE_CURRENT_SOURCE_DIR}>
      $<INSTALL_INTERFACE:include/orv>)
    target_link_libraries(${name} INTERFACE ${ARG_DEPENDS})
  endif()
  add_library(orv::${name} ALIAS ${name})
  install(TARGETS ${name} EXPORT orvTargets ARCHIVE DESTINATION lib)
  install(FILES ${headers} DESTINATION include/orv)
endfunction()
