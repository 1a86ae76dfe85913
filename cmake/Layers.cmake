# The engine's layers, lowest first, and the layers each one builds on directly. The build links
# by this table and the layer check (cmake/LayerCheck.cmake) enforces it on every include, so the
# two cannot drift apart.
set(NUTROVEX_LAYERS core calc storage logbook foods charts controls session forms)
set(NUTROVEX_LAYER_core_USES "")
set(NUTROVEX_LAYER_calc_USES core)
set(NUTROVEX_LAYER_storage_USES core)
set(NUTROVEX_LAYER_logbook_USES calc)
set(NUTROVEX_LAYER_foods_USES logbook)
set(NUTROVEX_LAYER_charts_USES logbook)
set(NUTROVEX_LAYER_controls_USES core)
set(NUTROVEX_LAYER_session_USES storage foods charts controls)
# One form per screen: what each screen shows and does, above the session it works on.
set(NUTROVEX_LAYER_forms_USES session)
# Above the engine: the drawing the program and the tool share, the screens, the tool and the
# program. Only render, ui and app may use Qt.
set(NUTROVEX_LAYER_render_USES charts)
set(NUTROVEX_LAYER_ui_USES forms render)
# The tool's chart command draws through render/ChartPng.h, whose interface is Qt-free; no tool
# file includes Qt itself, and the tool never reaches the screens. Its demo logbook is typed in
# through the screens' forms.
set(NUTROVEX_LAYER_tool_USES forms render)
set(NUTROVEX_LAYER_app_USES ui)
set(NUTROVEX_QT_FOLDERS render ui app)

# Every layer a folder may include: itself and everything below it, however far.
function(nutrovex_layer_closure layer out)
  set(result ${layer})
  set(pending ${NUTROVEX_LAYER_${layer}_USES})
  while(pending)
    list(POP_FRONT pending next)
    if(NOT next IN_LIST result)
      list(APPEND result ${next})
      list(APPEND pending ${NUTROVEX_LAYER_${next}_USES})
    endif()
  endwhile()
  set(${out} ${result} PARENT_SCOPE)
endfunction()

# One static library per engine folder, linking the layers the table names and nothing else.
function(nutrovex_add_layer layer)
  add_library(nutrovex_${layer} STATIC ${ARGN})
  target_include_directories(nutrovex_${layer} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(nutrovex_${layer} PUBLIC nutrovex_common)
  foreach(below IN LISTS NUTROVEX_LAYER_${layer}_USES)
    target_link_libraries(nutrovex_${layer} PUBLIC nutrovex_${below})
  endforeach()
endfunction()
