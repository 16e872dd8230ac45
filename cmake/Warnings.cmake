add_compile_options(-Wall -Wextra -Wpedantic -Wshadow
                    "$<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor;-Woverloaded-virtual>")
option(TAVIN_WERROR "Treat warnings as errors" OFF)
if(TAVIN_WERROR)
  add_compile_options(-Werror)
endif()
