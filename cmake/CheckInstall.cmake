# Test: installing lays out a working application folder, a valid desktop
# entry and the icons, and installing again keeps the user's database.
#   cmake -DBUILD_DIR=... -DVALIDATE=desktop-file-validate -P CheckInstall.cmake
set(prefix "${BUILD_DIR}/install-check")
file(REMOVE_RECURSE "${prefix}")
macro(install_once)
    execute_process(COMMAND ${CMAKE_COMMAND} --install "${BUILD_DIR}" --prefix "${prefix}"
                    RESULT_VARIABLE rc OUTPUT_QUIET)
    if(NOT rc EQUAL 0)
        message(FATAL_ERROR "install failed: ${rc}")
    endif()
endmacro()
install_once()
set(app "${prefix}/lib/quorvel-alarmclock")
foreach(f "${app}/alarmclock" "${app}/alarmclock-sound" "${app}/alarmclock.mdb" "${app}/alarm.wav" "${app}/backgroundmatrix.bmp"
          "${prefix}/bin/quorvel-alarmclock" "${prefix}/share/icons/hicolor/48x48/apps/quorvel-alarmclock.png"
          "${prefix}/share/icons/hicolor/scalable/apps/quorvel-alarmclock.svg")
    if(NOT EXISTS "${f}")
        message(FATAL_ERROR "missing after install: ${f}")
    endif()
endforeach()
set(entry "${prefix}/share/applications/quorvel-alarmclock.desktop")
file(READ "${entry}" text)
if(NOT text MATCHES "Exec=${app}/alarmclock\n")
    message(FATAL_ERROR "the desktop entry does not start the installed program:\n${text}")
endif()
execute_process(COMMAND ${VALIDATE} "${entry}" RESULT_VARIABLE rc)
if(NOT rc EQUAL 0)
    message(FATAL_ERROR "desktop-file-validate rejected the entry")
endif()
# A user's database survives a second install.
file(WRITE "${app}/alarmclock.mdb" "the user's alarms")
install_once()
file(READ "${app}/alarmclock.mdb" kept)
if(NOT kept STREQUAL "the user's alarms")
    message(FATAL_ERROR "installing again replaced the database")
endif()
file(REMOVE_RECURSE "${prefix}")
