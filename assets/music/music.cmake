# assets/music/a.abc -> data/sound/a.ogg
set(renderMusic ${PROJECT_SOURCE_DIR}/tools/music/render.sh)
file(GLOB tunes CONFIGURE_DEPENDS RELATIVE ${CMAKE_CURRENT_SOURCE_DIR}/music music/*.abc)
foreach(tune ${tunes})
  string(REGEX REPLACE "[.]abc$" ".ogg" ogg ${dataFolder}/sound/${tune})
  add_custom_command(
    OUTPUT ${ogg}
    COMMAND ${renderMusic} ${CMAKE_CURRENT_SOURCE_DIR}/music/${tune} ${ogg}
    DEPENDS ${renderMusic} ${CMAKE_CURRENT_SOURCE_DIR}/music/${tune}
    COMMENT "Playing ${tune}"
    VERBATIM)
  list(APPEND dataFiles ${ogg})
endforeach()
