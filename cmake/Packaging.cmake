# `make package`: a Debian package of whatever the build tree holds, made with
# CPack from the install rules. Run-time dependencies come from the shared
# libraries the program and the unit library link (dpkg-shlibdeps), plus the
# font the widgets draw with, which nothing links.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME quorvane-widgets)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "Quorvane")
set(CPACK_PACKAGE_CONTACT "Quorvane Widgets developers <widgets@quorvane.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Quorvane food-diary widgets and their Linux widget host")
set(CPACK_PACKAGE_DESCRIPTION
    "The home-screen and lock-screen widgets of the Quorvane food diary: calories against the day's goal, \
carbohydrates, fat and protein against theirs, and water drunk today. The qrv-widgets program plays \
the phone's widget host: it reads the store the app shares with its widgets, asks the widgets for \
their timelines, draws every widget in every size to PNG and SVG, serves them live in a browser and \
runs the log-water button.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS fonts-inter)
# quorvane-widgets_VERSION_ARCH.deb
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
include(CPack)
