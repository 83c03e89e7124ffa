# The packages that cpack writes: one .deb and one .tar.gz with everything that is installed, or a .zip
# for Windows.
#
# The owner has not chosen a licence for the project's own code yet, so the packages carry none; what
# they are linked with is listed in docs/third-party.md.
set(CPACK_GENERATOR DEB TGZ)
set(CPACK_PACKAGE_NAME orxprint)
set(CPACK_PACKAGE_VENDOR "the orxprint project")
set(CPACK_PACKAGE_CONTACT "the orxprint project <orxprint@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Draws Encapsulated PostScript through a print interpreter plug-in")
set(CPACK_PACKAGE_DESCRIPTION
  "The interpreter plug-in, the framework library that drives it, headers to write hosts with, and
orxprint, a program that draws EPS files as SVG, PDF or PNG, describes and traces them.")
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/lib)
if(WIN32)
  # All that the program needs, in a folder to be unpacked anywhere.
  set(CPACK_GENERATOR ZIP)
  set(CPACK_PACKAGE_FILE_NAME orxprint-${PROJECT_VERSION}-windows-x64)
endif()
include(CPack)
