# Gives the installed engine its interpreter, a link to the system's, and its
# compiled modules: the program starts it without permission to write any.
file(MAKE_DIRECTORY ${engine}/python/bin)
file(CREATE_LINK ${python} ${engine}/python/bin/python3 SYMBOLIC)
if(byte_code)
  # By content, not by time: copying a tree may change the times.
  execute_process(
    COMMAND ${python} -m compileall -q --invalidation-mode checked-hash -s "$ENV{DESTDIR}" ${engine}/tavin
    COMMAND_ERROR_IS_FATAL ANY)
endif()
