# Half of the time that the compiler takes goes to the headers of the standard library, Qt and
# GoogleTest, once for each source. Here they are parsed once for each of three sets of flags. A
# release does without, and so shows whether each file includes what it uses.
if(NOT OSTREL_PRECOMPILE)
  function(ostrel_precompile target set)
  endfunction()
  return()
endif()

# Where a library wants other flags the compiler parses for itself.
set(CMAKE_PCH_WARN_INVALID OFF)

set(standard <algorithm> <array> <chrono> <cmath> <filesystem> <fstream> <functional> <map>
    <memory> <optional> <random> <set> <span> <string> <string_view> <tuple> <utility> <variant>
    <vector> <nlohmann/json.hpp>)
set(qt <QApplication> <QDBusArgument> <QDBusConnection> <QDBusMessage> <QDBusPendingCallWatcher>
    <QDBusServiceWatcher> <QDBusVirtualObject> <QFile> <QKeyEvent> <QLabel> <QMenu> <QPainter>
    <QPainterPath> <QProcess> <QScreen> <QSocketNotifier> <QTimer> <QVariantMap> <QWidget> <QWindow>)

# A set is good for a target that defines at least what it does: so it takes no library's definitions.
function(add_precompiled set)
  cmake_parse_arguments(arg "" "" "HEADERS;LIBRARIES;DEFINITIONS" ${ARGN})
  set(target ostrel_precompiled_${set})
  file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/precompiled/${set}.cpp CONTENT "")
  add_library(${target} OBJECT ${CMAKE_BINARY_DIR}/precompiled/${set}.cpp)
  target_link_libraries(${target} PRIVATE ${arg_LIBRARIES})
  foreach(library nlohmann_json::nlohmann_json Qt6::Widgets Qt6::DBus)
    target_include_directories(${target} SYSTEM PRIVATE
      $<TARGET_PROPERTY:${library},INTERFACE_INCLUDE_DIRECTORIES>)
  endforeach()
  target_compile_definitions(${target} PRIVATE ${arg_DEFINITIONS})
  target_compile_options(${target} PRIVATE -fPIC)
  target_precompile_headers(${target} PRIVATE ${arg_HEADERS})
endfunction()

add_precompiled(core HEADERS ${standard} LIBRARIES ostrel_flags ostrel_sanitizers)
add_precompiled(qt HEADERS ${standard} ${qt} LIBRARIES ostrel_flags ostrel_sanitizers
                DEFINITIONS QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII)
if(OSTREL_TESTS)
  add_precompiled(tests HEADERS ${standard} ${qt} <gtest/gtest.h>
                  LIBRARIES ostrel_flags GTest::gtest DEFINITIONS QT_NO_KEYWORDS QT_NO_VERSION_TAGGING)
endif()

# ostrel_precompile(TARGET SET): TARGET's sources begin with what SET (core, qt, tests) has parsed.
# g++ then no longer knows that a false alarm of its own is about the standard library's strings.
function(ostrel_precompile target set)
  target_compile_options(${target} PRIVATE -fPIC -Wno-array-bounds -Wno-restrict)
  if(set STREQUAL tests)
    target_compile_definitions(${target} PRIVATE QT_NO_VERSION_TAGGING) # not all of them link Qt
  endif()
  target_precompile_headers(${target} REUSE_FROM ostrel_precompiled_${set})
endfunction()
