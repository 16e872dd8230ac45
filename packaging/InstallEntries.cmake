get_filename_component(prefix "${CMAKE_INSTALL_PREFIX}" ABSOLUTE)
# Links of tools/link-entries into a build folder: to what they lead to counts as installed already.
foreach(folder IN ITEMS applications dbus-1/services icons/hicolor)
  file(GLOB_RECURSE ours "$ENV{DESTDIR}${prefix}/share/${folder}/app.tavin.Tavin*")
  foreach(entry IN LISTS ours)
    if(IS_SYMLINK "${entry}")
      file(REMOVE "${entry}")
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
