# The fuzz targets (libFuzzer, so clang only). As tests they start from the inputs of corpus.txt, always use the same
# random numbers and take a few seconds. To fuzz longer and keep new inputs in the folder FOUND:
#   build/clang/tests/fuzz_calendar -max_total_time=120 FOUND build/clang/tests/corpus/calendar

set(fuzz_folder ${CMAKE_CURRENT_LIST_DIR})

set(corpus ${CMAKE_CURRENT_BINARY_DIR}/corpus)
add_custom_command(
  OUTPUT ${corpus}.made
  COMMAND ${Python3_EXECUTABLE} -B ${fuzz_folder}/make_corpus.py ${corpus}
  COMMAND ${CMAKE_COMMAND} -E touch ${corpus}.made
  DEPENDS ${fuzz_folder}/make_corpus.py ${fuzz_folder}/corpus.txt
  VERBATIM
)
add_custom_target(fuzz_corpus ALL DEPENDS ${corpus}.made)

# The core again, instrumented for the fuzzer. clang's "undefined" leaves out float-cast-overflow.
set(fuzz_sanitizers -fsanitize=fuzzer-no-link,address,undefined,float-cast-overflow -fno-sanitize-recover=all
                    -fno-omit-frame-pointer)
get_target_property(core_sources tidewell_core SOURCES)
get_target_property(core_folder tidewell_core SOURCE_DIR)
list(TRANSFORM core_sources PREPEND ${core_folder}/)
add_library(tidewell_core_fuzzed STATIC ${core_sources})
target_compile_options(tidewell_core_fuzzed PUBLIC ${fuzz_sanitizers} -O1)
target_link_options(tidewell_core_fuzzed PUBLIC -fsanitize=fuzzer,address,undefined)
target_link_libraries(tidewell_core_fuzzed PUBLIC tidewell_options)

# Builds <name>_fuzz.cpp and runs it as a test.
function(tidewell_fuzz_target name longest_input)
  add_executable(fuzz_${name} ${fuzz_folder}/${name}_fuzz.cpp)
  target_include_directories(fuzz_${name} PRIVATE ${fuzz_folder}/..)
  target_link_libraries(fuzz_${name} PRIVATE tidewell_core_fuzzed)
  # A list of files, since the fuzzer would write new inputs into a folder.
  add_test(NAME fuzz.${name} COMMAND fuzz_${name} -runs=10000 -seed=1 -timeout=20 -max_len=${longest_input}
                                     -seed_inputs=@${corpus}/${name}.list -artifact_prefix=fuzz_${name}-)
endfunction()

tidewell_fuzz_target(calendar 36)
tidewell_fuzz_target(date_value 28)
tidewell_fuzz_target(moon_report 22)
tidewell_fuzz_target(number_format 9)
tidewell_fuzz_target(positions 26)
tidewell_fuzz_target(settings_record 1024)
