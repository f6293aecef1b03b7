# Core of the reader library: session, settings, logging, services, objects, image conversion.
set(ZYR_CORE_SOURCES
  ${CMAKE_CURRENT_LIST_DIR}/CameraService.cpp
  ${CMAKE_CURRENT_LIST_DIR}/ErrorReporter.cpp
  ${CMAKE_CURRENT_LIST_DIR}/ImageProcessingService.cpp
  ${CMAKE_CURRENT_LIST_DIR}/Log.cpp
  ${CMAKE_CURRENT_LIST_DIR}/ObjectRegistry.cpp
  ${CMAKE_CURRENT_LIST_DIR}/ParseService.cpp
  ${CMAKE_CURRENT_LIST_DIR}/ServiceApi.cpp
  ${CMAKE_CURRENT_LIST_DIR}/SessionApi.cpp
  ${CMAKE_CURRENT_LIST_DIR}/ShutdownHooks.cpp
  ${CMAKE_CURRENT_LIST_DIR}/SignalService.cpp
)
