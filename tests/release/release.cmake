# The release tests: they make two releases from the sources as they are, and check the files.

add_test(NAME release
  COMMAND ${TIDEWELL_E2E_PYTHON} -B -m pytest ${CMAKE_CURRENT_LIST_DIR}
)
set_tests_properties(release PROPERTIES LABELS release RUN_SERIAL ON TIMEOUT 3600)
