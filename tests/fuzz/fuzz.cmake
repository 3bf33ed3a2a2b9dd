# The fuzz targets (libFuzzer, so clang only). As tests they always use the same random numbers and take a few seconds.
# To fuzz longer and keep the inputs found in FOLDER: build/clang/tests/number_format_fuzz -max_total_time=120 FOLDER

set(fuzz_folder ${CMAKE_CURRENT_LIST_DIR})

# The core again, instrumented for the fuzzer. clang's "undefined" leaves out float-cast-overflow.
set(fuzz_sanitizers -fsanitize=fuzzer-no-link,address,undefined,float-cast-overflow -fno-sanitize-recover=all
                    -fno-omit-frame-pointer)
get_target_property(core_sources tidewell_core SOURCES)
add_library(tidewell_core_fuzzed STATIC ${core_sources})
target_compile_options(tidewell_core_fuzzed PUBLIC ${fuzz_sanitizers} -O1)
target_link_options(tidewell_core_fuzzed PUBLIC -fsanitize=fuzzer,address,undefined)
target_link_libraries(tidewell_core_fuzzed PUBLIC tidewell_options)

# Builds <name>_fuzz.cpp and runs it as a test.
function(tidewell_fuzz_target name longest_input)
  add_executable(${name}_fuzz ${fuzz_folder}/${name}_fuzz.cpp)
  target_include_directories(${name}_fuzz PRIVATE ${fuzz_folder}/..)
  target_link_libraries(${name}_fuzz PRIVATE tidewell_core_fuzzed)
  add_test(NAME fuzz.${name} COMMAND ${name}_fuzz -runs=10000 -seed=1 -timeout=20 -max_len=${longest_input}
                                     -len_control=0 -artifact_prefix=${name}_fuzz-)
endfunction()

tidewell_fuzz_target(moon_report 22)
tidewell_fuzz_target(number_format 9)
tidewell_fuzz_target(settings_record 1024)
