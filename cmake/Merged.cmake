# Compiles the sources of a target several at a time (VELK_MERGE, on in the presets that tests run in): templates and
# headers that they share are then compiled once.
#
#   velk_merge(velk_log   ${CMAKE_SOURCE_DIR}/src)                   all .cpp of the target below that include path
#   velk_merge(shell_tests ... ALONE shell/serial_port_test.cpp)     without this one, whose names others have too
#
# The merged files name the sources by include path, so that clones share what the compiler cache holds.

# More would compile faster from empty, but slower after a change of one of them.
set(VELK_MERGED_SIZE 8)

function(velk_merge target root)
  if(NOT VELK_MERGE)
    return()
  endif()
  cmake_parse_arguments(ARG "" "" "ALONE" ${ARGN})
  get_target_property(sources ${target} SOURCES)
  list(TRANSFORM sources PREPEND ${CMAKE_CURRENT_SOURCE_DIR}/ REGEX "^[^/]")
  list(FILTER sources INCLUDE REGEX "^${root}/.*\\.cpp$")
  list(TRANSFORM ARG_ALONE PREPEND ${root}/)
  list(REMOVE_ITEM sources ${ARG_ALONE})
  set_source_files_properties(${sources} PROPERTIES HEADER_FILE_ONLY ON)

  list(LENGTH sources count)
  math(EXPR parts "(${count} + ${VELK_MERGED_SIZE} - 1) / ${VELK_MERGED_SIZE}")
  # Equal shares, so that no part is much longer than another.
  set(end 0)
  foreach(part RANGE 1 ${parts})
    set(start ${end})
    math(EXPR end "${count} * ${part} / ${parts}")
    math(EXPR share "${end} - ${start}")
    list(SUBLIST sources ${start} ${share} together)
    list(TRANSFORM together REPLACE "^${root}/(.*)$" "#include \"\\1\"\n")
    list(JOIN together "" content)
    set(merged ${CMAKE_CURRENT_BINARY_DIR}/merged/${target}_${part}.cpp)
    file(CONFIGURE OUTPUT ${merged} CONTENT "${content}" @ONLY)
    set_source_files_properties(${merged} PROPERTIES SKIP_AUTOGEN ON)
    target_sources(${target} PRIVATE ${merged})
  endforeach()
endfunction()
