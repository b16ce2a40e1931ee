# The program for a Linux desktop, and where its parts are installed.
ostrel_subsystem(screens/linux USES screens LIBRARIES Qt6::DBus PRIVATE_LIBRARIES PkgConfig::XCB QT)
ostrel_subsystem(platform/linux USES platform/calendar platform/notifications platform/loop
                 LIBRARIES Qt6::Gui Qt6::DBus PRIVATE_LIBRARIES PkgConfig::XCB QT)
qt_add_resources(desktop_entry packaging/desktop_entry.qrc OPTIONS --no-compress)
target_sources(ostrel_platform_linux PRIVATE ${desktop_entry})
ostrel_subsystem(platform/pulse PRIVATE_LIBRARIES PkgConfig::SNDFILE PkgConfig::PULSE)
ostrel_subsystem(app/desktop USES app/control app/shell screens/linux platform/linux QT)
target_compile_definitions(ostrel_app_desktop PRIVATE OSTREL_VERSION="${PROJECT_VERSION}")

add_executable(ostrel src/app/main.cpp)
target_link_libraries(ostrel PRIVATE ostrel_app_desktop ostrel_flags)
target_compile_definitions(ostrel PRIVATE OSTREL_VERSION="${PROJECT_VERSION}")
set_target_properties(ostrel PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR})

# What Ostrel starts to play a chime. It and the sounds lie beside the program here, in libexec and
# share of an installation.
add_executable(ostrel-play src/app/play_main.cpp)
target_link_libraries(ostrel-play PRIVATE ostrel_platform_pulse ostrel_flags)
set_target_properties(ostrel-play PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR})
add_dependencies(ostrel ostrel-play)
file(CREATE_LINK ${CMAKE_SOURCE_DIR}/resources/sounds ${CMAKE_BINARY_DIR}/sounds SYMBOLIC)
install(TARGETS ostrel DESTINATION bin)
install(TARGETS ostrel-play DESTINATION libexec/ostrel)
install(FILES packaging/org.ostrel.Ostrel.desktop DESTINATION share/applications)
install(FILES resources/icons/ostrel.svg DESTINATION share/icons/hicolor/scalable/apps)
configure_file(docs/ostrel.1.in ostrel.1 @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/ostrel.1 DESTINATION share/man/man1)
install(FILES packaging/completions/ostrel.bash RENAME ostrel DESTINATION share/bash-completion/completions)
install(FILES packaging/completions/_ostrel DESTINATION share/zsh/site-functions)
install(FILES packaging/completions/ostrel.fish DESTINATION share/fish/vendor_completions.d)
install(DIRECTORY resources/sounds DESTINATION share/ostrel FILES_MATCHING PATTERN "*.aiff")
