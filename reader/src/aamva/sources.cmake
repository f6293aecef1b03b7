# AAMVA parser. The parser proper is a static library of its own, so that tests, the fuzz target
# and the benchmark can reach its classes; the reader library links it and adds the entry point.
add_library(zyr_aamva_parser STATIC
  ${CMAKE_CURRENT_LIST_DIR}/AamvaBodyScanner.cpp
  ${CMAKE_CURRENT_LIST_DIR}/AamvaColourCodes.cpp
  ${CMAKE_CURRENT_LIST_DIR}/AamvaDateReader.cpp
  ${CMAKE_CURRENT_LIST_DIR}/AamvaElementCatalogue.cpp
  ${CMAKE_CURRENT_LIST_DIR}/AamvaHeaderReader.cpp
  ${CMAKE_CURRENT_LIST_DIR}/AamvaIdentityReader.cpp
  ${CMAKE_CURRENT_LIST_DIR}/AamvaIssuerTable.cpp
  ${CMAKE_CURRENT_LIST_DIR}/AamvaMeasureReader.cpp
  ${CMAKE_CURRENT_LIST_DIR}/AamvaNameReader.cpp
  ${CMAKE_CURRENT_LIST_DIR}/AamvaParser.cpp
  ${CMAKE_CURRENT_LIST_DIR}/AamvaRecordBuilder.cpp
  ${CMAKE_CURRENT_LIST_DIR}/AamvaRepairs.cpp
  ${CMAKE_CURRENT_LIST_DIR}/AamvaSubfileAudit.cpp
  ${CMAKE_CURRENT_LIST_DIR}/AamvaText.cpp
)
target_include_directories(zyr_aamva_parser PUBLIC ${CMAKE_CURRENT_LIST_DIR})
target_link_libraries(zyr_aamva_parser PUBLIC zyrreader_headers)
set_target_properties(zyr_aamva_parser PROPERTIES
  POSITION_INDEPENDENT_CODE ON CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
glyphor_warnings(zyr_aamva_parser)

set(ZYR_PARSER_SOURCES ${CMAKE_CURRENT_LIST_DIR}/ParseAamvaApi.cpp)
list(APPEND ZYR_EXTRA_LIBRARIES zyr_aamva_parser)
