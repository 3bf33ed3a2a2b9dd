# The Windows program: the shell around the portable core, the resources, and Tidewell.exe.

find_package(Python3 REQUIRED COMPONENTS Interpreter)

set(generated ${PROJECT_BINARY_DIR}/generated)
configure_file(resources/Tidewell.manifest ${generated}/Tidewell.manifest @ONLY)

# The icons, made from text pictures. Resource IDI_PHASE0 + n is picture n.
set(icon_folder ${generated}/icons)
set(icons ${icon_folder}/window.ico)
set(phase_icons_rc "")
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/resources/resource_ids.h)
file(STRINGS ${PROJECT_SOURCE_DIR}/resources/resource_ids.h pictures REGEX "PHASE_PICTURES")
string(REGEX MATCH "[0-9]+" pictures "${pictures}")
math(EXPR last_picture "${pictures} - 1")
foreach(index RANGE ${last_picture})
  string(REGEX REPLACE "^(.)$" "0\\1" number ${index})
  list(APPEND icons ${icon_folder}/phase${number}.ico)
  string(APPEND phase_icons_rc "IDI_PHASE0 + ${index} ICON \"phase${number}.ico\"\n")
endforeach()
file(CONFIGURE OUTPUT ${generated}/phase_icons.rc CONTENT "${phase_icons_rc}")
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
  forms/controls_win.cpp
  forms/drawing_list_win.cpp
  forms/fitted_label_win.cpp
  forms/high_contrast_win.cpp
  forms/place_win.cpp
  forms/window_win.cpp
  report/frmMoon.cpp
  report/settings_file_win.cpp
  runtime/clock_win.cpp
  runtime/code_page_win.cpp
  runtime/locale_names_win.cpp
  runtime/program_folder_win.cpp
  runtime/random_file_win.cpp
  runtime/program_end_win.cpp
  tray/frmAbout.cpp
  tray/tray_icon.cpp  # portable, but calls the Windows half, which its test replaces
  tray/tray_icon_win.cpp
)
target_link_libraries(tidewell_shell PUBLIC tidewell_core comctl32 gdi32 shell32 user32)
tidewell_tidy(tidewell_shell)

enable_language(RC)

# For the program and for tests that open its windows.
add_library(tidewell_resources OBJECT resources/Tidewell.rc)
target_link_libraries(tidewell_resources PRIVATE tidewell_options)
set(resource_inputs ${icons} ${generated}/Tidewell.manifest ${generated}/phase_icons.rc ${generated}/version.h
                    ${PROJECT_SOURCE_DIR}/resources/resource_ids.h)
set_source_files_properties(resources/Tidewell.rc PROPERTIES
  OBJECT_DEPENDS "${resource_inputs}"
  INCLUDE_DIRECTORIES "${PROJECT_SOURCE_DIR};${generated};${icon_folder}"
)

add_executable(Tidewell WIN32 start/main_win.cpp start/library_failures_win.cpp)
target_link_libraries(Tidewell PRIVATE tidewell_shell tidewell_resources)
tidewell_tidy(Tidewell)
target_link_options(Tidewell PRIVATE
  -municode $<$<NOT:$<CONFIG:Debug>>:-s>
  -Wl,-Map,Tidewell.map  # for the bill of materials
  -Wl,--no-seh           # there are no handlers of structured exceptions
  -Wl,--tsaware          # otherwise a terminal server redirects our folders
  -Wl,--wrap=malloc      # see start/library_failures_win.cpp
  -Wl,--major-subsystem-version=6 -Wl,--minor-subsystem-version=1)  # Windows 7 and later
