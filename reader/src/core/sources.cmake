# Core of the reader library: session, settings, logging, services, objects, image conversion.
set(ZYR_CORE_SOURCES
  ${CMAKE_CURRENT_LIST_DIR}/DefaultFolders.cpp
  ${CMAKE_CURRENT_LIST_DIR}/ErrorReporter.cpp
  ${CMAKE_CURRENT_LIST_DIR}/ImageConvertApi.cpp
  ${CMAKE_CURRENT_LIST_DIR}/IniReader.cpp
  ${CMAKE_CURRENT_LIST_DIR}/LibraryImage.cpp
  ${CMAKE_CURRENT_LIST_DIR}/Log.cpp
  ${CMAKE_CURRENT_LIST_DIR}/ObjectRegistry.cpp
  ${CMAKE_CURRENT_LIST_DIR}/ReaderService.cpp
  ${CMAKE_CURRENT_LIST_DIR}/ServiceApi.cpp
  ${CMAKE_CURRENT_LIST_DIR}/SessionApi.cpp
  ${CMAKE_CURRENT_LIST_DIR}/SettingsApi.cpp
  ${CMAKE_CURRENT_LIST_DIR}/SettingsLoader.cpp
  ${CMAKE_CURRENT_LIST_DIR}/ShutdownHooks.cpp
)
