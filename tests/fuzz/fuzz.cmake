# The fuzz target (libFuzzer, so clang only). As a test it always uses the same random numbers and takes a few seconds.
# To fuzz longer and keep the inputs found in FOLDER: build/clang/tests/moon_report_fuzz -max_total_time=120 FOLDER

get_target_property(core_sources tidewell_core SOURCES)
add_executable(moon_report_fuzz ${CMAKE_CURRENT_LIST_DIR}/moon_report_fuzz.cpp ${core_sources})
target_include_directories(moon_report_fuzz PRIVATE ${CMAKE_CURRENT_LIST_DIR}/..)
# clang's "undefined" leaves out float-cast-overflow.
target_compile_options(moon_report_fuzz PRIVATE -fsanitize=fuzzer,address,undefined,float-cast-overflow
                       -fno-sanitize-recover=all -fno-omit-frame-pointer -O1)
target_link_options(moon_report_fuzz PRIVATE -fsanitize=fuzzer,address,undefined)
target_link_libraries(moon_report_fuzz PRIVATE tidewell_options)
add_test(NAME fuzz.moon_report COMMAND moon_report_fuzz -runs=10000 -seed=1 -timeout=20 -max_len=28 -len_control=0
                                       -artifact_prefix=moon_report_fuzz-)
