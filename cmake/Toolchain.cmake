# Compiler flags, the same for every target of the project.

find_program(CCACHE ccache)
if(CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER
      ${CMAKE_COMMAND} -E env
      CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime ${CCACHE})
endif()

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion -Wold-style-cast
                    -Wnon-virtual-dtor -Woverloaded-virtual -Wimplicit-fallthrough -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  add_compile_options(-Wduplicated-cond -Wlogical-op -Wuseless-cast)
  # Nobody puts other functions in the place of ours: those of one source may be inlined, as clang does anyway.
  add_compile_options(-fno-semantic-interposition)
  if(CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # With -O2 and up it sees overlaps and overruns in additions of std::string where there are none.
    add_compile_options(-Wno-restrict -Wno-stringop-overflow -Wno-array-bounds)
  endif()
else()
  # A precompiled header has to be told apart by its content, not by its date, or ccache never finds it. What it
  # instantiates of its templates, the sources that use it don't have to.
  add_compile_options(-Xclang -fno-pch-timestamp -fpch-instantiate-templates)
endif()

# A precompiled header serves only what is compiled in the same way, and Qt asks for this way.
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

if(VELK_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()

if(VELK_FUZZ)
  # The fuzzer follows the branches of the code under test, so all libraries are compiled for it.
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()

if(VELK_HARDEN)
  add_compile_options(-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=3 -fstack-protector-strong -fstack-clash-protection
                      -D_GLIBCXX_ASSERTIONS)
  include(CheckPIESupported)
  check_pie_supported()
  add_link_options(-Wl,-z,relro -Wl,-z,now)
endif()
