# Where things are installed, relative to the prefix: the program finds its resources from its
# executable, so that an installed tree runs wherever it stands. The build tree has the same shape.
include(GNUInstallDirs)

# Sets OUT to FOLDER as seen from the prefix.
function(tavin_below_prefix out folder)
  file(RELATIVE_PATH path "${CMAKE_INSTALL_PREFIX}" "${folder}")
  if(IS_ABSOLUTE "${path}" OR path MATCHES "^\\.\\.(/|$)")
    message(FATAL_ERROR "${folder} does not lie below the prefix, ${CMAKE_INSTALL_PREFIX}")
  endif()
  set(${out} "${path}" PARENT_SCOPE)
endfunction()

tavin_below_prefix(TAVIN_BINDIR "${CMAKE_INSTALL_FULL_BINDIR}")
tavin_below_prefix(TAVIN_DATADIR "${CMAKE_INSTALL_FULL_DATADIR}")
tavin_below_prefix(TAVIN_LIBDIR "${CMAKE_INSTALL_FULL_LIBDIR}")
file(RELATIVE_PATH TAVIN_DATA_FROM_BIN "/${TAVIN_BINDIR}" "/${TAVIN_DATADIR}")
file(RELATIVE_PATH TAVIN_LIB_FROM_BIN "/${TAVIN_BINDIR}" "/${TAVIN_LIBDIR}")
set(TAVIN_BUILT_SHARE ${CMAKE_BINARY_DIR}/${TAVIN_DATADIR})
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/${TAVIN_BINDIR})
