# What a folder of src/ or tests/ says in its CMakeLists.txt.
#
#   velk_library(log USES velk_model QT Core LIBS SQLite::SQLite3)     all .cpp of src/log and its sub-rooms
#   velk_windows(log USES velk_log)                                    all .cpp and .ui of src/log/windows
#   velk_tests(log USES velk_log)                                      all *_test.cpp of tests/log, and SOURCES;
#                                                                      with SHARDS 3, run as three tests side by side
#   velk_translations(velk ${CMAKE_CURRENT_BINARY_DIR})                the two translation databases in that folder

include(Merged)
include(Precompiled)

function(velk_target_common target)
  cmake_parse_arguments(ARG "" "" "USES;QT;LIBS" ${ARGN})
  target_include_directories(${target} PUBLIC ${CMAKE_SOURCE_DIR}/src)
  list(TRANSFORM ARG_QT PREPEND Qt6::)
  target_link_libraries(${target} PUBLIC ${ARG_USES} ${ARG_QT} ${ARG_LIBS})
endfunction()

function(velk_library folder)
  set(dir ${CMAKE_SOURCE_DIR}/src/${folder})
  file(GLOB sources CONFIGURE_DEPENDS ${dir}/*.cpp ${dir}/*.h ${dir}/*/*.cpp ${dir}/*/*.h)
  list(FILTER sources EXCLUDE REGEX "/windows/")
  add_library(velk_${folder} STATIC ${sources})
  velk_target_common(velk_${folder} ${ARGN})
  velk_merge(velk_${folder} ${CMAKE_SOURCE_DIR}/src)
  target_precompile_headers(velk_${folder} REUSE_FROM velk_precompiled_logic)
endfunction()

function(velk_windows folder)
  set(dir ${CMAKE_SOURCE_DIR}/src/${folder}/windows)
  file(GLOB sources CONFIGURE_DEPENDS ${dir}/*.cpp ${dir}/*.h ${dir}/*.ui)
  add_library(velk_${folder}_windows STATIC ${sources})
  velk_target_common(velk_${folder}_windows QT Widgets ${ARGN})
  set_target_properties(velk_${folder}_windows PROPERTIES AUTOMOC ON AUTOUIC ON)
  velk_merge(velk_${folder}_windows ${CMAKE_SOURCE_DIR}/src)
  target_precompile_headers(velk_${folder}_windows REUSE_FROM velk_precompiled_windows)
endfunction()

function(velk_tests folder)
  cmake_parse_arguments(ARG "" "SHARDS" "SOURCES;ALONE;USES;QT" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/${folder}/*_test.cpp)
  add_executable(${folder}_tests ${sources} ${ARG_SOURCES})
  velk_target_common(${folder}_tests USES velk_test_support ${ARG_USES} QT ${ARG_QT})
  target_include_directories(${folder}_tests PRIVATE ${CMAKE_SOURCE_DIR}/tests)
  velk_merge(${folder}_tests ${CMAKE_SOURCE_DIR}/tests ALONE ${ARG_ALONE})
  target_precompile_headers(${folder}_tests REUSE_FROM velk_precompiled_tests)
  if(NOT ARG_SHARDS)
    set(ARG_SHARDS 1)
  endif()
  foreach(shard RANGE 1 ${ARG_SHARDS})
    set(name ${folder})
    if(ARG_SHARDS GREATER 1)
      string(APPEND name "_${shard}")
    endif()
    math(EXPR index "${shard} - 1")
    add_test(NAME ${name} COMMAND ${folder}_tests)
    set_tests_properties(${name} PROPERTIES TIMEOUT 600 ENVIRONMENT
                         "QT_QPA_PLATFORM=offscreen;GTEST_TOTAL_SHARDS=${ARG_SHARDS};GTEST_SHARD_INDEX=${index}")
  endforeach()
endfunction()

# Puts the two translation databases into a folder, for `target` to find. A file that the user put there stays until
# the texts of data/ change.
function(velk_translations target folder)
  find_package(Python3 REQUIRED COMPONENTS Interpreter)
  set(script ${CMAKE_SOURCE_DIR}/scripts/make_translations)
  file(GLOB tables CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/data/captions/*.tsv ${CMAKE_SOURCE_DIR}/data/messages/*.tsv)
  set(databases "${folder}/VELK Translation Data.mdb" "${folder}/VELKMESSAGES.MDB")
  add_custom_command(
    OUTPUT ${databases}
    COMMAND ${Python3_EXECUTABLE} -B ${script} ${CMAKE_SOURCE_DIR}/data ${folder}
    DEPENDS ${script} ${tables}
    COMMENT "Making the translation databases of ${target}"
    VERBATIM)
  add_custom_target(${target}_translations DEPENDS ${databases})
  add_dependencies(${target} ${target}_translations)
endfunction()
