# assets/sounds/NAME.sound -> data/sound/NAME.wav, and NAME_2.wav to NAME_5.wav where a recipe has more takes
file(GLOB recipes CONFIGURE_DEPENDS ${CMAKE_CURRENT_LIST_DIR}/*.sound)
file(GLOB parts CONFIGURE_DEPENDS ${CMAKE_CURRENT_LIST_DIR}/*.inc)
foreach(recipe ${recipes})
  # A recipe says how many files it makes; ask again when it changes.
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${recipe})
  file(STRINGS ${recipe} takes REGEX "^;= takes ")
  string(REGEX REPLACE "^;= takes *" "" takes "${takes}")
  cmake_path(GET recipe STEM LAST_ONLY name)
  set(takeFiles ${dataFolder}/sound/${name}.wav)
  if(takes GREATER 1)
    foreach(take RANGE 2 ${takes})
      list(APPEND takeFiles ${dataFolder}/sound/${name}_${take}.wav)
    endforeach()
  endif()
  add_custom_command(
    OUTPUT ${takeFiles}
    COMMAND ${CMAKE_CURRENT_LIST_DIR}/render.sh ${recipe} ${dataFolder}/sound
    DEPENDS ${recipe} ${parts} ${CMAKE_CURRENT_LIST_DIR}/render.sh
    COMMENT "Playing ${name}"
    VERBATIM)
  list(APPEND dataFiles ${takeFiles})
endforeach()

# Menus ask for this one in two spellings, and file names here tell them apart.
add_custom_command(
  OUTPUT ${dataFolder}/sound/dropBalloon.wav
  COMMAND ${CMAKE_COMMAND} -E copy ${dataFolder}/sound/dropballoon.wav ${dataFolder}/sound/dropBalloon.wav
  DEPENDS ${dataFolder}/sound/dropballoon.wav
  COMMENT "Copying dropBalloon"
  VERBATIM)
list(APPEND dataFiles ${dataFolder}/sound/dropBalloon.wav)
