# The stub as a bundle without a setup record, which runs where none of the build's packages are.

set(default ON)
if(ZEPHIN_SANITIZE)
  set(default OFF)  # The sanitizers' own libraries must be found as the compiler left it.
endif()
option(ZEPHIN_BUNDLE_LIBRARIES "Install into the bundle every library that it needs" ${default})

install(TARGETS Setup DESTINATION Setup.app/Contents/MacOS)
install(TARGETS ditto expand_beside DESTINATION Setup.app/Contents/Helpers)
configure_file(app/Info.plist ${PROJECT_BINARY_DIR}/Info.plist @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/Info.plist DESTINATION Setup.app/Contents)
install(FILES app/Setup.icns app/Setup.png DESTINATION Setup.app/Contents/Resources)

# The last of all rules, since it looks at what the others have installed.
function(zephin_gather_libraries)
  if(NOT ZEPHIN_BUNDLE_LIBRARIES)
    return()
  endif()
  find_package(Qt6 REQUIRED COMPONENTS Core)
  find_program(ZEPHIN_PYTHON python3 REQUIRED)
  install(CODE "
    execute_process(
      COMMAND \"${ZEPHIN_PYTHON}\" -B \"${PROJECT_SOURCE_DIR}/cmake/bundle/gather.py\"
        \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/Setup.app\"
        \"${QT6_INSTALL_PREFIX}/${QT6_INSTALL_PLUGINS}\"
        \"${QT6_INSTALL_PREFIX}/${QT6_INSTALL_TRANSLATIONS}\"
        \"${QT6_INSTALL_PREFIX}/${QT6_INSTALL_LIBEXECS}/../bin\"
      COMMAND_ERROR_IS_FATAL ANY)")
endfunction()
