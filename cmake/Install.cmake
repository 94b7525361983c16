# Installing lays out the application folder (the program with its data
# beside it, as it expects) under PREFIX/lib/quorvel-alarmclock, a launcher
# link in PREFIX/bin, a desktop entry (written by the install script) and the
# icon theme files. The folder
# must be writable by the user: the database lives in it.
set(ALARMCLOCK_INSTALL_APP_DIR lib/quorvel-alarmclock)

install(TARGETS alarmclock RUNTIME DESTINATION ${ALARMCLOCK_INSTALL_APP_DIR})
install(TARGETS alarmclock-sound RUNTIME DESTINATION ${ALARMCLOCK_INSTALL_APP_DIR})

configure_file(${CMAKE_SOURCE_DIR}/cmake/InstallData.cmake.in ${CMAKE_BINARY_DIR}/InstallData.cmake @ONLY)
install(SCRIPT ${CMAKE_BINARY_DIR}/InstallData.cmake)

install(DIRECTORY ${ALARMCLOCK_ICON_DIR}/ DESTINATION share/icons/hicolor)
install(FILES ${CMAKE_SOURCE_DIR}/assets/quorvel-alarmclock.svg DESTINATION share/icons/hicolor/scalable/apps)

find_program(DESKTOP_FILE_VALIDATE desktop-file-validate)
if(ALARMCLOCK_TESTS AND DESKTOP_FILE_VALIDATE)
    add_test(NAME install_layout
             COMMAND ${CMAKE_COMMAND} -DBUILD_DIR=${CMAKE_BINARY_DIR} -DVALIDATE=${DESKTOP_FILE_VALIDATE}
                     -P ${CMAKE_SOURCE_DIR}/cmake/CheckInstall.cmake)
endif()
