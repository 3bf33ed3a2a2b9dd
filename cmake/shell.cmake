# The Windows program: the thin shell around the portable core, its resources, and Tidewell.exe itself.

find_package(Python3 REQUIRED COMPONENTS Interpreter)

configure_file(${PROJECT_SOURCE_DIR}/resources/Tidewell.manifest ${PROJECT_BINARY_DIR}/generated/Tidewell.manifest @ONLY)

# The icons are made from their text pictures; resource IDI_PHASE0 + n is picture n.
set(icon_folder ${PROJECT_BINARY_DIR}/generated/icons)
set(icons ${icon_folder}/window.ico)
set(phase_icons_rc "")
foreach(index RANGE 27)
  math(EXPR id "100 + ${index}")  # 100: IDI_PHASE0 in resources/resource_ids.h
  string(LENGTH ${index} digits)
  set(number ${index})
  if(digits EQUAL 1)
    set(number 0${index})
  endif()
  list(APPEND icons ${icon_folder}/phase${number}.ico)
  string(APPEND phase_icons_rc "${id} ICON \"phase${number}.ico\"\n")
endforeach()
file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/generated/phase_icons.rc CONTENT "${phase_icons_rc}")
set(icon_sources
  ${PROJECT_SOURCE_DIR}/resources/make_icons.py
  ${PROJECT_SOURCE_DIR}/resources/window_icon.py
  ${PROJECT_SOURCE_DIR}/resources/icons/phases.txt
  ${PROJECT_SOURCE_DIR}/resources/icons/window.txt
)
add_custom_command(
  OUTPUT ${icons}
  COMMAND Python3::Interpreter -B ${PROJECT_SOURCE_DIR}/resources/make_icons.py ${icon_folder}
  DEPENDS ${icon_sources}
  VERBATIM
)

add_library(tidewell_shell STATIC
  forms/clock_win.cpp
  forms/code_page_win.cpp
  forms/controls_win.cpp
  forms/locale_names_win.cpp
  forms/place_win.cpp
  forms/program_folder_win.cpp
  forms/random_file_win.cpp
  forms/replay_win.cpp
  forms/run_time_end_win.cpp
  forms/window_win.cpp
  report/frmMoon.cpp
  report/settings_file_win.cpp
  tray/frmAbout.cpp
  tray/tray_icon_win.cpp
)
target_link_libraries(tidewell_shell PUBLIC tidewell_core comctl32 gdi32 shell32 user32)

enable_language(RC)

# The program's resources, for the program itself and for tests that open its windows.
add_library(tidewell_resources OBJECT resources/Tidewell.rc)
target_link_libraries(tidewell_resources PRIVATE tidewell_options)
set_source_files_properties(resources/Tidewell.rc PROPERTIES
  OBJECT_DEPENDS "${icons};${PROJECT_BINARY_DIR}/generated/Tidewell.manifest;${PROJECT_BINARY_DIR}/generated/version.h"
  INCLUDE_DIRECTORIES "${PROJECT_SOURCE_DIR};${PROJECT_BINARY_DIR}/generated;${icon_folder}"
)

add_executable(Tidewell WIN32 start/main.cpp start/terminate.cpp)
target_link_libraries(Tidewell PRIVATE tidewell_shell tidewell_resources)
target_link_options(Tidewell PRIVATE -municode -s)
# Windows 7 and later; and no table of handlers for structured exceptions, as there are none.
target_link_options(Tidewell PRIVATE -Wl,--major-subsystem-version=6 -Wl,--minor-subsystem-version=1 -Wl,--no-seh)
