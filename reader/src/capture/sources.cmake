# The virtual reader and the capture calls: camera, document feed, snapshots, post-processing.
set(ZYR_CAPTURE_SOURCES
  ${CMAKE_CURRENT_LIST_DIR}/CameraApi.cpp
  ${CMAKE_CURRENT_LIST_DIR}/CaptureSettings.cpp
  ${CMAKE_CURRENT_LIST_DIR}/DeviceConfig.cpp
  ${CMAKE_CURRENT_LIST_DIR}/DocumentFinder.cpp
  ${CMAKE_CURRENT_LIST_DIR}/DocumentFolder.cpp
  ${CMAKE_CURRENT_LIST_DIR}/PostProcessApi.cpp
  ${CMAKE_CURRENT_LIST_DIR}/PostProcessor.cpp
  ${CMAKE_CURRENT_LIST_DIR}/Raster.cpp
  ${CMAKE_CURRENT_LIST_DIR}/RasterOps.cpp
  ${CMAKE_CURRENT_LIST_DIR}/SnapshotComposer.cpp
  ${CMAKE_CURRENT_LIST_DIR}/VirtualReader.cpp
)
