# The Windows program: the shell around the portable core, the resources, and Tidewell.exe.

find_package(Python3 REQUIRED COMPONENTS Interpreter)

set(generated ${PROJECT_BINARY_DIR}/generated)
configure_file(resources/Tidewell.manifest ${generated}/Tidewell.manifest @ONLY)

# The icons and their resource script, made from text pictures.
set(icons ${generated}/icons)
file(GLOB icon_sources CONFIGURE_DEPENDS resources/*.py resources/icons/*.txt)
add_custom_command(
  OUTPUT ${icons}/phase_icons.rc
  COMMAND Python3::Interpreter -B ${PROJECT_SOURCE_DIR}/resources/make_icons.py ${icons}
  DEPENDS ${icon_sources}
  VERBATIM
)

add_library(tidewell_shell STATIC ${shell_sources})
target_link_libraries(tidewell_shell PUBLIC tidewell_core comctl32 gdi32 shell32 user32)
tidewell_tidy(tidewell_shell)

enable_language(RC)

# For the program and for tests that open its windows.
add_library(tidewell_resources OBJECT resources/Tidewell.rc)
target_link_libraries(tidewell_resources PRIVATE tidewell_options)
set(resource_inputs ${icons}/phase_icons.rc ${generated}/Tidewell.manifest ${generated}/version.h
                    ${PROJECT_SOURCE_DIR}/resources/resource_ids.h)
set_source_files_properties(resources/Tidewell.rc PROPERTIES
  OBJECT_DEPENDS "${resource_inputs}"
  INCLUDE_DIRECTORIES "${PROJECT_SOURCE_DIR};${generated};${icons}"
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
