# Fails when a source file includes a folder above its own layer, or when the engine includes Qt.
# Run as: cmake -DSOURCE_DIR=<tree holding src/> -P LayerCheck.cmake
cmake_minimum_required(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/Layers.cmake)
if(NOT SOURCE_DIR)
  message(FATAL_ERROR "LayerCheck: SOURCE_DIR is not set")
endif()

set(folders ${NUTROVEX_LAYERS} render ui tool app)
set(known_prefixes ${folders})
set(violations 0)
set(checked 0)
foreach(folder IN LISTS folders)
  nutrovex_layer_closure(${folder} allowed)
  file(GLOB_RECURSE files RELATIVE ${SOURCE_DIR} ${SOURCE_DIR}/src/${folder}/*.h
       ${SOURCE_DIR}/src/${folder}/*.cpp)
  list(SORT files)
  foreach(file IN LISTS files)
    math(EXPR checked "${checked} + 1")
    file(STRINGS ${SOURCE_DIR}/${file} includes REGEX "^[ \t]*#[ \t]*include[ \t]*[\"<]")
    foreach(line IN LISTS includes)
      string(REGEX REPLACE "^[ \t]*#[ \t]*include[ \t]*[\"<]([^\">]*)[\">].*$" "\\1" target
                           "${line}")
      if(target MATCHES "^([A-Za-z]+)/")
        set(prefix ${CMAKE_MATCH_1})
        if(prefix IN_LIST known_prefixes AND NOT prefix IN_LIST allowed)
          message(SEND_ERROR "${file}: includes ${target}, but ${folder} may use only: "
                             "${allowed}")
          math(EXPR violations "${violations} + 1")
        endif()
      endif()
      if(target MATCHES "^Q[A-Za-z]*(/|$)" AND NOT folder IN_LIST NUTROVEX_QT_FOLDERS)
        message(SEND_ERROR "${file}: includes ${target}, but only ${NUTROVEX_QT_FOLDERS} may "
                           "use Qt")
        math(EXPR violations "${violations} + 1")
      endif()
    endforeach()
  endforeach()
endforeach()

if(violations GREATER 0)
  message(FATAL_ERROR "LayerCheck: ${violations} include(s) break the layer order")
endif()
message(STATUS "LayerCheck: ${checked} files keep to their layers")
