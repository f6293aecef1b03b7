# The decoder plug-in host: loading KVDECODE_*.so plug-ins and running them on images, each in a
# plug-in host process of its own (pluginhost/) unless its settings ask for the calling process.
set(ZYR_PLUGIN_HOST_SOURCES
  ${CMAKE_CURRENT_LIST_DIR}/FrameChannel.cpp
  ${CMAKE_CURRENT_LIST_DIR}/HostMessages.cpp
  ${CMAKE_CURRENT_LIST_DIR}/HostProcess.cpp
  ${CMAKE_CURRENT_LIST_DIR}/InProcessPlugin.cpp
  ${CMAKE_CURRENT_LIST_DIR}/IsolatedPlugin.cpp
  ${CMAKE_CURRENT_LIST_DIR}/IsolationSettings.cpp
  ${CMAKE_CURRENT_LIST_DIR}/PluginApi.cpp
  ${CMAKE_CURRENT_LIST_DIR}/PluginHost.cpp
  ${CMAKE_CURRENT_LIST_DIR}/ProcessSpawner.cpp
  ${CMAKE_CURRENT_LIST_DIR}/SharedImageBuffer.cpp
  ${CMAKE_CURRENT_LIST_DIR}/SymbolResults.cpp
  ${CMAKE_CURRENT_LIST_DIR}/WireBuffer.cpp
)
# What the plug-in host executable shares with the library.
set(ZYR_PLUGIN_PROCESS_SOURCES
  ${CMAKE_CURRENT_LIST_DIR}/FrameChannel.cpp
  ${CMAKE_CURRENT_LIST_DIR}/HostMessages.cpp
  ${CMAKE_CURRENT_LIST_DIR}/InProcessPlugin.cpp
  ${CMAKE_CURRENT_LIST_DIR}/SharedImageBuffer.cpp
  ${CMAKE_CURRENT_LIST_DIR}/WireBuffer.cpp
)
