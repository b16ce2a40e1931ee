# The program for a Mac: an application bundle, and the sources that speak to the frameworks.
# ostrel_macos_sources() comes after the subsystem platform/macos, ostrel_macos_bundle() after the
# program. Elsewhere both do nothing.

# Those whose symbols the sources use; scripts/check-macos-frameworks compares the two.
set(OSTREL_MACOS_FRAMEWORKS
  AppKit AVFoundation Carbon CoreFoundation CoreGraphics Foundation IOKit ServiceManagement
  UserNotifications)
set(OSTREL_MACOS_IDENTIFIER org.ostrel.Ostrel)
if(APPLE)
  enable_language(OBJCXX)
endif()

# What Objective-C there is belongs to one subsystem, under automatic reference counting.
function(ostrel_macos_sources)
  if(NOT APPLE)
    return()
  endif()
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/src/platform/macos/*.mm)
  target_sources(ostrel_platform_macos PRIVATE ${sources})
  # Headers parsed ahead for C++ are none for Objective-C++; its own extensions are not pedantic.
  set_source_files_properties(${sources} PROPERTIES SKIP_PRECOMPILE_HEADERS ON
    COMPILE_OPTIONS "-fobjc-arc;-fvisibility=hidden;-Wno-pedantic;-Wunguarded-availability")
  set_target_properties(ostrel_platform_macos PROPERTIES OBJCXX_STANDARD 20
    OBJCXX_STANDARD_REQUIRED ON OBJCXX_EXTENSIONS OFF)
  foreach(framework ${OSTREL_MACOS_FRAMEWORKS})
    target_link_libraries(ostrel_platform_macos PUBLIC "-framework ${framework}")
  endforeach()
endfunction()

# TARGET as Ostrel.app, with the sounds and the icon in its Resources.
function(ostrel_macos_bundle target)
  if(NOT APPLE)
    return()
  endif()
  set(icon ${CMAKE_BINARY_DIR}/ostrel.icns)
  add_custom_command(OUTPUT ${icon}
    COMMAND ${CMAKE_SOURCE_DIR}/packaging/macos/make-icon $<TARGET_FILE:ostrel_icon_painter>
            ${CMAKE_SOURCE_DIR}/resources/icons/ostrel.svg ${icon}
    DEPENDS ${CMAKE_SOURCE_DIR}/packaging/macos/make-icon ostrel_icon_painter
            ${CMAKE_SOURCE_DIR}/resources/icons/ostrel.svg
    VERBATIM)
  add_executable(ostrel_icon_painter ${CMAKE_SOURCE_DIR}/packaging/macos/icon_painter.cpp)
  target_link_libraries(ostrel_icon_painter PRIVATE ostrel_flags Qt6::Gui Qt6::Svg)

  set(localizations "")
  file(GLOB texts RELATIVE ${CMAKE_SOURCE_DIR}/resources/texts CONFIGURE_DEPENDS
       ${CMAKE_SOURCE_DIR}/resources/texts/*.json)
  foreach(text ${texts})
    cmake_path(GET text STEM language)
    string(APPEND localizations "\t\t<string>${language}</string>\n")
  endforeach()
  # The generator fills in the rest, the name of the executable.
  configure_file(${CMAKE_SOURCE_DIR}/packaging/macos/Info.plist.in ${CMAKE_BINARY_DIR}/Info.plist.in
                 @ONLY)

  file(GLOB sounds CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/resources/sounds/*.aiff)
  target_sources(${target} PRIVATE ${sounds} ${icon})
  set_source_files_properties(${sounds} ${icon} PROPERTIES MACOSX_PACKAGE_LOCATION Resources)
  set_target_properties(${target} PROPERTIES MACOSX_BUNDLE ON OUTPUT_NAME Ostrel
    MACOSX_BUNDLE_INFO_PLIST ${CMAKE_BINARY_DIR}/Info.plist.in)
  install(TARGETS ${target} BUNDLE DESTINATION .)
endfunction()
