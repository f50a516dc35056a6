# assets/fonts/*.font -> data/sample.fnt and a texture for each, from the outlines that Debian installs.
file(GLOB fonts CONFIGURE_DEPENDS ${CMAKE_CURRENT_LIST_DIR}/*.font)
add_custom_command(
  OUTPUT ${dataFolder}/sample.fnt
  COMMAND forge font ${dataFolder} ${fonts} --outlines ${RUSTPIKE_OUTLINES}
          --depfile ${CMAKE_CURRENT_BINARY_DIR}/fonts.d
  DEPENDS forge ${fonts}
  DEPFILE ${CMAKE_CURRENT_BINARY_DIR}/fonts.d
  COMMENT "Drawing fonts"
  VERBATIM)
list(APPEND dataFiles ${dataFolder}/sample.fnt)
