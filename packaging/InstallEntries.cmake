get_filename_component(prefix "${CMAKE_INSTALL_PREFIX}" ABSOLUTE)
# The links that tools/link-entries has made into a build folder make way: to CMake, what they lead to
# counts as installed already. The search follows no link of the user's.
cmake_policy(SET CMP0009 NEW)
set(share "$ENV{DESTDIR}${prefix}/share")
foreach(folder IN ITEMS applications dbus-1/services icons/hicolor)
  file(GLOB_RECURSE entries RELATIVE "${share}" "${share}/${folder}/app.tavin.Tavin*")
  foreach(entry IN LISTS entries)
    if(IS_SYMLINK "${share}/${entry}")
      file(READ_SYMLINK "${share}/${entry}" target)
      if(target MATCHES "/share/${entry}$")
        file(REMOVE "${share}/${entry}")
      endif()
    endif()
  endforeach()
endforeach()
set(TAVIN_EXECUTABLE "${prefix}/bin/tavin")
# KWin compares it with the running program's, which has no links in it. What is staged for another
# place has its own there.
if("$ENV{DESTDIR}" STREQUAL "")
  file(REAL_PATH "${TAVIN_EXECUTABLE}" TAVIN_EXECUTABLE)
endif()
foreach(entry IN ITEMS share/applications/app.tavin.Tavin.desktop
                       share/dbus-1/services/app.tavin.Tavin.service)
  get_filename_component(name ${entry} NAME)
  get_filename_component(folder ${entry} DIRECTORY)
  configure_file("${templates}/${name}.in" "${generated}/${name}" @ONLY)
  file(INSTALL "${generated}/${name}" DESTINATION "${prefix}/${folder}")
endforeach()
