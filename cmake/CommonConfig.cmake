# Settings every target shares: the language standard and the warnings. No fused
# multiply-adds: the formulas round at fixed single and double precision points.
add_library(nutrovex_common INTERFACE)
target_compile_features(nutrovex_common INTERFACE cxx_std_20)
set(CMAKE_CXX_EXTENSIONS OFF)
target_compile_options(nutrovex_common INTERFACE -Wall -Wextra -Wpedantic -Wshadow
                                                 -ffp-contract=off)
if(NUTROVEX_WERROR)
  target_compile_options(nutrovex_common INTERFACE -Werror)
  # GCC 12 warns falsely about std::string internals at -O3.
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(nutrovex_common INTERFACE -Wno-error=restrict)
  endif()
endif()

# Qt strictness for the Qt targets only.
add_library(nutrovex_qt_strict INTERFACE)
target_compile_definitions(nutrovex_qt_strict INTERFACE QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII
                                                       QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
                                                       QT_NO_KEYWORDS)

# Rebuilds across several checkouts share compiled objects when ccache is there.
find_program(NUTROVEX_CCACHE ccache)
if(NUTROVEX_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER "${NUTROVEX_CCACHE}")
endif()
