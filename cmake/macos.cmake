# The application bundle of macOS. Nothing here needs a Mac: the tests make a bundle in the same way.

# The oldest macOS whose C++ library has all of C++23 that is used here.
set(KAVENDRA_MACOS_VERSION 13.3)
if(APPLE AND NOT CMAKE_OSX_DEPLOYMENT_TARGET)
  set(CMAKE_OSX_DEPLOYMENT_TARGET ${KAVENDRA_MACOS_VERSION})
endif()

# kavendra_bundle(PROGRAM): builds a program into bin/PROGRAM.app with Info.plist, icon and built-in items.
function(kavendra_bundle bundle_executable)
  set(resources ${PROJECT_SOURCE_DIR}/resources)
  set(contents ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${bundle_executable}.app/Contents)
  configure_file(${resources}/macos/Info.plist.in ${contents}/Info.plist @ONLY)
  configure_file(${resources}/macos/Built-in.csv ${contents}/Resources/Built-in.csv COPYONLY)

  find_program(RSVG_CONVERT rsvg-convert REQUIRED)
  find_program(ICON_TOOL NAMES iconutil png2icns REQUIRED)
  set(script ${PROJECT_SOURCE_DIR}/tools/make-mac-icon)
  set(drawing ${resources}/icons/kavendra.svg)
  set(icon ${contents}/Resources/kavendra.icns)
  add_custom_command(OUTPUT ${icon} COMMAND ${script} ${drawing} ${icon} DEPENDS ${script} ${drawing} VERBATIM)
  target_sources(${bundle_executable} PRIVATE ${icon})

  set_target_properties(${bundle_executable} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${contents}/MacOS)
  target_compile_definitions(${bundle_executable} PRIVATE KAVENDRA_RESOURCES="../Resources")
endfunction()
