# The Windows shell in its own process: real windows, real files, the real shell call. Run under Wine.
add_executable(shell_tests
  shell/clock_and_locale_test.cpp
  shell/frmAbout_test.cpp
  shell/frmMoon_test.cpp
  shell/picture_test.cpp
  shell/random_file_test.cpp
  shell/settings_file_test.cpp
  shell/window_test.cpp
)
target_link_libraries(shell_tests PRIVATE tidewell_shell tidewell_resources GTest::gtest_main)
add_test(NAME shell_tests COMMAND shell_tests)
