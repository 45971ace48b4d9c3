# The precompiled headers of the project, each shared by all targets of its kind: compiling one takes longer than most
# sources do.
#
#   velk_precompiled(windows QT Widgets)    velk_precompiled_windows, of cmake/precompiled/windows.h
#
# A target takes one by target_precompile_headers(TARGET REUSE_FROM velk_precompiled_windows).

function(velk_precompiled kind)
  cmake_parse_arguments(ARG "" "" "QT;LIBS" ${ARGN})
  set(target velk_precompiled_${kind})
  file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/precompiled/${kind}.cpp CONTENT "")
  add_library(${target} OBJECT ${CMAKE_BINARY_DIR}/precompiled/${kind}.cpp)
  list(TRANSFORM ARG_QT PREPEND Qt6::)
  target_link_libraries(${target} PRIVATE ${ARG_QT} ${ARG_LIBS})
  target_precompile_headers(${target} PRIVATE ${CMAKE_SOURCE_DIR}/cmake/precompiled/${kind}.h)
endfunction()

velk_precompiled(logic)
velk_precompiled(windows QT Widgets)
