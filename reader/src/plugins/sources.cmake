# The decoder plug-in host: loading KVDECODE_*.so plug-ins and running them on images.
set(ZYR_PLUGIN_HOST_SOURCES
  ${CMAKE_CURRENT_LIST_DIR}/InProcessPlugin.cpp
  ${CMAKE_CURRENT_LIST_DIR}/PluginApi.cpp
  ${CMAKE_CURRENT_LIST_DIR}/PluginHost.cpp
  ${CMAKE_CURRENT_LIST_DIR}/SymbolResults.cpp
)
