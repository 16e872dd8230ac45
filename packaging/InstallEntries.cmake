get_filename_component(prefix "${CMAKE_INSTALL_PREFIX}" ABSOLUTE)
set(TAVIN_EXECUTABLE "${prefix}/bin/tavin")
foreach(entry IN ITEMS share/applications/app.tavin.Tavin.desktop
                       share/dbus-1/services/app.tavin.Tavin.service)
  get_filename_component(name ${entry} NAME)
  get_filename_component(folder ${entry} DIRECTORY)
  configure_file("${templates}/${name}.in" "${generated}/${name}" @ONLY)
  file(INSTALL "${generated}/${name}" DESTINATION "${prefix}/${folder}")
endforeach()
