# The end-to-end tests: pytest drives the Tidewell.exe of preset windows on a virtual screen.

# Debian installs pytest for its own Python only.
find_program(TIDEWELL_E2E_PYTHON python3 PATHS /usr/bin NO_DEFAULT_PATH REQUIRED
             DOC "A Python with pytest")

add_test(NAME e2e COMMAND ${TIDEWELL_E2E_PYTHON} -B -m pytest ${CMAKE_CURRENT_LIST_DIR})
set_tests_properties(e2e PROPERTIES LABELS e2e RUN_SERIAL ON TIMEOUT 3600)
