# The Debian package, built from a configured build folder with
#   cpack -G DEB
# It installs under /usr; the program then keeps each user's database in
# their own data folder, since nobody may write to /usr/lib/quorvel-alarmclock.

# Debian compresses manual pages and changelogs with gzip -9n (no name, no
# time stamp, so the package is reproducible).
set(ALARMCLOCK_PACKAGING_DIR ${CMAKE_BINARY_DIR}/packaging)
file(MAKE_DIRECTORY ${ALARMCLOCK_PACKAGING_DIR})
foreach(pair "quorvel-alarmclock.1|quorvel-alarmclock.1.gz" "changelog|changelog.gz")
    string(REPLACE "|" ";" pair "${pair}")
    list(GET pair 0 source)
    list(GET pair 1 target)
    add_custom_command(OUTPUT ${ALARMCLOCK_PACKAGING_DIR}/${target}
                       COMMAND gzip -9n -c ${CMAKE_SOURCE_DIR}/packaging/${source} > ${ALARMCLOCK_PACKAGING_DIR}/${target}
                       DEPENDS ${CMAKE_SOURCE_DIR}/packaging/${source} VERBATIM)
    list(APPEND ALARMCLOCK_PACKAGING_FILES ${ALARMCLOCK_PACKAGING_DIR}/${target})
endforeach()
add_custom_target(packaging_files ALL DEPENDS ${ALARMCLOCK_PACKAGING_FILES})

install(FILES ${CMAKE_SOURCE_DIR}/packaging/quorvel-alarmclock.metainfo.xml DESTINATION share/metainfo)
install(FILES ${ALARMCLOCK_PACKAGING_DIR}/quorvel-alarmclock.1.gz DESTINATION share/man/man1)
install(FILES ${CMAKE_SOURCE_DIR}/packaging/copyright ${ALARMCLOCK_PACKAGING_DIR}/changelog.gz
        DESTINATION share/doc/quorvel-alarmclock)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME quorvel-alarmclock)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "Quorvel Alarm Clock maintainers <maintainers@users.noreply.c-seed-bf455f5f.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "desktop alarm clock with thirteen alarms")
# CPack puts the summary first and indents these lines itself.
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION "Each alarm row has a date (or none, for a daily alarm), a time, a
description, a web address and a sound. Rows count down to their moment and
ring on the second, with a flashing button and a desktop notification to
stop them. The program lives in the tray and can start at login.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Loaded as a plugin at run time, so dpkg-shlibdeps cannot see it: the SQLite
# driver of Qt Sql (the X11 window system plugin comes with libqt6gui6).
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libqt6sql6-sqlite, libcap2-bin")
# The postinst gives the wake-up helper cap_wake_alarm (setcap, from libcap2-bin).
set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA ${CMAKE_SOURCE_DIR}/packaging/postinst)
# Arial's metric-compatible stand-in, and Qt's Wayland plugin, without which
# the program runs through XWayland in a Wayland session.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "fonts-liberation, qt6-wayland")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_STRIP_FILES ON)
include(CPack)

find_program(LINTIAN lintian)
find_program(APPSTREAMCLI appstreamcli)
find_program(DPKG_SHLIBDEPS dpkg-shlibdeps)
# Not in the sanitizer build: its program would depend on the sanitizer runtimes.
if(ALARMCLOCK_TESTS AND NOT ALARMCLOCK_SANITIZE AND LINTIAN AND APPSTREAMCLI AND DPKG_SHLIBDEPS
   AND DESKTOP_FILE_VALIDATE)
    add_test(NAME debian_package COMMAND ${CMAKE_SOURCE_DIR}/cmake/check-package.sh ${CMAKE_BINARY_DIR})
    set_tests_properties(debian_package PROPERTIES TIMEOUT 300)
endif()
