# A Debian package of everything `cmake --install` puts down (program, glyphor-batch, the checker,
# the reader library and its plug-in host, the plug-ins, the SDK, the desktop entry), made from a
# release tree with `cpack -G DEB`. Its dependencies come from dpkg-shlibdeps (package dpkg-dev).
set(CPACK_PACKAGE_NAME glyphor)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "Glyphor")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Test bench for barcode-decoder plug-ins")
set(CPACK_PACKAGE_DESCRIPTION
  "Loads decoder plug-ins (KVDECODE_*.so), runs them on PNG, BMP and JPEG images or captures from a\
 document reader, times them and shows the decoded bytes; parses and exports driver-licence data.\
 Includes glyphor-batch for headless runs, glyphor-plugin-check and the plug-in SDK\
 (find_package(Glyphor), pkg-config glyphor-plugin).")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "Glyphor developers <glyphor@localhost>")
set(CPACK_DEBIAN_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The reader library is in the package itself; dpkg-shlibdeps finds it there.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_BINARY_DIR})
# What building a plug-in against the SDK takes.
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "cmake, pkg-config, g++")
# Decoded Shift_JIS and GB18030 text needs a font with CJK glyphs to be read in the window.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "fonts-wqy-microhei")
set(CPACK_GENERATOR DEB)
include(CPack)
