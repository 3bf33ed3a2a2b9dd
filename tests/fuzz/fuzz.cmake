# Fuzzing of the portable code with libFuzzer and the sanitizers. Each target gives only results or the named run-time
# errors, whatever the input. The tests here are short runs with a fixed seed over the corpus; for a long one start the
# program by hand: build/clang/tests/fuzz_report -max_total_time=600 tests/fuzz/corpus/report
set(fuzz_flags -fsanitize=address,undefined -fno-sanitize-recover=all -O1)

# The core's own sources once more, since fuzzing needs them instrumented.
get_target_property(core_sources tidewell_core SOURCES)
list(TRANSFORM core_sources PREPEND ${PROJECT_SOURCE_DIR}/)
add_library(tidewell_fuzzed_core STATIC ${core_sources})
target_link_libraries(tidewell_fuzzed_core PUBLIC tidewell_options)
target_compile_options(tidewell_fuzzed_core PUBLIC ${fuzz_flags} -fsanitize=fuzzer-no-link)

function(tidewell_fuzz name)
  add_executable(fuzz_${name} fuzz/${name}_fuzz.cpp)
  target_link_libraries(fuzz_${name} PRIVATE tidewell_fuzzed_core)
  target_link_options(fuzz_${name} PRIVATE ${fuzz_flags} -fsanitize=fuzzer)
  target_include_directories(fuzz_${name} PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
  add_test(NAME fuzz.${name}
    COMMAND fuzz_${name} -runs=20000 -seed=1 -max_len=512 -timeout=20 -verbosity=0
            ${CMAKE_CURRENT_SOURCE_DIR}/fuzz/corpus/${name})
  set_tests_properties(fuzz.${name} PROPERTIES LABELS fuzz)
endfunction()

tidewell_fuzz(calendar)
tidewell_fuzz(drawing)
tidewell_fuzz(numbers)
tidewell_fuzz(records)
tidewell_fuzz(report)
