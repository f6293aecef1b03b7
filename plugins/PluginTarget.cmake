# Builds plugins/<Name>/ as KVDECODE_<Name>.so next to its default settings file, in the build's
# plug-in folder and in the installed one.
function(glyphor_add_plugin name)
  set(target KVDECODE_${name})
  add_library(${target} MODULE ${ARGN})
  target_link_libraries(${target} PRIVATE glyphor_plugin_kit)
  set_target_properties(${target} PROPERTIES
    PREFIX ""
    LIBRARY_OUTPUT_DIRECTORY ${GLYPHOR_PLUGIN_OUTPUT_DIR}
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON)
  target_link_options(${target} PRIVATE -Wl,--no-undefined)
  glyphor_warnings(${target})
  set(ini "#KVDECODE_${name}.ini")
  # Copied at configure time (a build rule cannot name a file starting with "#"); editing the
  # source file re-runs the configuration.
  configure_file(${CMAKE_CURRENT_SOURCE_DIR}/${ini} ${GLYPHOR_PLUGIN_OUTPUT_DIR}/${ini} COPYONLY)
  install(TARGETS ${target} LIBRARY DESTINATION ${GLYPHOR_INSTALL_PLUGIN_DIR})
  install(FILES ${CMAKE_CURRENT_SOURCE_DIR}/${ini} DESTINATION ${GLYPHOR_INSTALL_PLUGIN_DIR})
endfunction()
