# Draws data/icons/*.svg and builds them into a target as resources :/icons/NAME_PERCENT.argb.
#
#   velk_icons(velk_shell)

# Scales of the screen; the largest one also serves window managers, which like their icons large.
set(VELK_ICON_SCALES 100 150 200 400)

function(velk_icons target)
  file(GLOB pictures CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/data/icons/*.svg)
  set(folder ${CMAKE_CURRENT_BINARY_DIR}/icons)
  file(MAKE_DIRECTORY ${folder})
  set(drawn "")
  set(rows "")
  foreach(picture ${pictures})
    get_filename_component(name ${picture} NAME_WE)
    foreach(scale ${VELK_ICON_SCALES})
      list(APPEND drawn ${folder}/${name}_${scale}.argb)
      string(APPEND rows "<file>${name}_${scale}.argb</file>\n")
    endforeach()
  endforeach()
  file(CONFIGURE OUTPUT ${folder}/icons.qrc CONTENT "<RCC><qresource prefix=\"/icons\">\n${rows}</qresource></RCC>\n")

  add_executable(velk_draw_icons ${CMAKE_SOURCE_DIR}/data/draw_icons.cpp)
  target_link_libraries(velk_draw_icons PRIVATE Qt6::Gui Qt6::Svg)
  # A sanitizer would report what the toolkit never frees as a failure of the build.
  add_custom_command(
    OUTPUT ${drawn}
    COMMAND ${CMAKE_COMMAND} -E env ASAN_OPTIONS=detect_leaks=0 $<TARGET_FILE:velk_draw_icons> ${folder} ${pictures}
            ${VELK_ICON_SCALES}
    DEPENDS velk_draw_icons ${pictures}
    COMMENT "Drawing the icons"
    VERBATIM)
  add_custom_command(
    OUTPUT ${folder}/qrc_icons.cpp
    COMMAND Qt6::rcc --name icons --output ${folder}/qrc_icons.cpp ${folder}/icons.qrc
    DEPENDS ${drawn} ${folder}/icons.qrc
    VERBATIM)
  target_sources(${target} PRIVATE ${folder}/qrc_icons.cpp)
  set_source_files_properties(${folder}/qrc_icons.cpp PROPERTIES SKIP_AUTOGEN ON SKIP_PRECOMPILE_HEADERS ON)
endfunction()
