# Compiler flags of everything that is ours; other people's headers are system headers.
add_library(ostrel_flags INTERFACE)
target_compile_options(ostrel_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast
  -Wnon-virtual-dtor -Woverloaded-virtual -Wimplicit-fallthrough -Werror
  # g++ 12 sees overlapping copies in "text" + std::string where there are none (GCC bug 105651).
  $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
# What is looked at is the code; its tests would take twice as long to compile. So would the code
# with the checks of every pointer, whose faults the address sanitizer sees when they do harm.
add_library(ostrel_sanitizers INTERFACE)
if(OSTREL_SANITIZE)
  target_compile_options(ostrel_sanitizers INTERFACE
    -fsanitize=${OSTREL_SANITIZE} -fno-sanitize=alignment,null,object-size,pointer-overflow,vptr
    -fno-omit-frame-pointer -fno-sanitize-recover=all
    -Wno-maybe-uninitialized) # they make g++ see what is not there
  add_link_options(-fsanitize=${OSTREL_SANITIZE})
endif()

# ostrel_subsystem(FOLDER [USES folder...] [LIBRARIES lib...] [PRIVATE_LIBRARIES lib...] [QT])
#
# Makes src/FOLDER a library with an include root that holds this one folder: includes are written
# from src/ ("core/engine/timer_engine.h"), yet reach only FOLDER and what it USES.
function(ostrel_subsystem folder)
  cmake_parse_arguments(arg "QT" "" "USES;LIBRARIES;PRIVATE_LIBRARIES" ${ARGN})
  string(REPLACE "/" "_" name ${folder})
  set(source ${CMAKE_SOURCE_DIR}/src/${folder})
  set(root ${CMAKE_BINARY_DIR}/roots/${name})
  cmake_path(GET folder PARENT_PATH parent)
  file(MAKE_DIRECTORY ${root}/${parent})
  file(CREATE_LINK ${source} ${root}/${folder} SYMBOLIC)

  file(GLOB sources CONFIGURE_DEPENDS ${source}/*.cpp)
  set(uses ${arg_USES})
  list(TRANSFORM uses REPLACE "/" "_")
  list(TRANSFORM uses PREPEND "ostrel_")

  if(sources)
    add_library(ostrel_${name} STATIC ${sources})
    set(scope PUBLIC)
    target_link_libraries(ostrel_${name} PRIVATE ostrel_flags ostrel_sanitizers
                          ${arg_PRIVATE_LIBRARIES})
    if(arg_QT)
      set_target_properties(ostrel_${name} PROPERTIES AUTOMOC ON)
      target_compile_definitions(ostrel_${name} PRIVATE QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII)
      ostrel_precompile(ostrel_${name} qt)
    else()
      ostrel_precompile(ostrel_${name} core)
    endif()
  else()
    add_library(ostrel_${name} INTERFACE)
    set(scope INTERFACE)
  endif()
  target_include_directories(ostrel_${name} ${scope} ${root})
  target_link_libraries(ostrel_${name} ${scope} ${uses} ${arg_LIBRARIES})
endfunction()
