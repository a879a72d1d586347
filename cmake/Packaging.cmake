# The Debian package: everything `cmake --install` installs, under /usr, with its dependencies
# computed from the binaries (dpkg-shlibdeps). `cpack -G DEB` in the build folder makes it.
set(CPACK_PACKAGE_NAME "zeb-workbench")
set(CPACK_PACKAGE_VENDOR "ZebSubmittalControls")
set(CPACK_PACKAGE_CONTACT "ZebSubmittalControls <packages@zebsubmittalcontrols.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "submittal workstation for lighting sales offices")
set(CPACK_PACKAGE_DESCRIPTION
    "The submittal workstation of a lighting sales office: the office's jobs in one store (a file \
or a PostgreSQL database shared by every workstation), each job's cover letter, bill of \
materials, labels and line items on pages, and the submittal package written as one PDF file. \
Also holds the submittal controls' libraries, headers and Qt Designer plugin for host programs.")
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_PACKAGING_INSTALL_PREFIX "/usr")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION "misc")
set(CPACK_DEBIAN_PACKAGE_PRIORITY "optional")
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "https://zebsubmittalcontrols.org")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The package's own libraries satisfy its programs' needs for them.
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
# What Qt loads at run time, which dpkg-shlibdeps cannot see: the office file's database driver
# and the window system's plugins. The font the package is drawn with, and the server's driver.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libqt6sql6-sqlite, qt6-qpa-plugins")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "fonts-dejavu-core, libqt6sql6-psql")
include(CPack)
