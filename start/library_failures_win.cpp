// The failures of the C and C++ libraries, replaced by our own. Theirs would bring 100 kB along (name demangling, both
// instantiations of strings, a random device) and end the process silently.

#include <bits/functexcept.h>

#include <cstddef>
#include <exception>

#include "runtime/runtime_error.h"
#include "start/without_memory.h"

using runtime::ErrorNumber;
using runtime::RuntimeError;

namespace {

bool prepared = false;

}  // namespace

void tidewell::PrepareForExceptions() noexcept {
  try {
    throw RuntimeError(ErrorNumber::OutOfMemory);
  } catch (const RuntimeError&) {
    prepared = true;
  }
}

// The linker's option --wrap=malloc gives these names.
// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
extern "C" void* __real_malloc(std::size_t size);
extern "C" [[gnu::used]] void* __wrap_malloc(std::size_t size) {
  void* const memory = __real_malloc(size);
  if (memory == nullptr && !prepared) {
    tidewell::EndWithoutMemory();
  }
  return memory;
}
// NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)

// Without memory for an exception the libraries abort (for the thread's exception state) or terminate (for the
// exception itself). Nothing else should lead here.
extern "C" void abort() { tidewell::EndWithoutMemory(); }
namespace __gnu_cxx {
void __verbose_terminate_handler() { tidewell::EndWithoutMemory(); }
}  // namespace __gnu_cxx

// What the containers and strings throw, as run-time errors. The names and signatures are the library's, so clang-tidy
// is off here.
namespace std {  // NOLINT(cert-dcl58-cpp)

void __throw_bad_alloc() { throw RuntimeError(ErrorNumber::OutOfMemory); }
void __throw_bad_array_new_length() { throw RuntimeError(ErrorNumber::OutOfMemory); }
void __throw_length_error(const char* /*text*/) { throw RuntimeError(ErrorNumber::OutOfMemory); }
void __throw_logic_error(const char* /*text*/) { throw RuntimeError(ErrorNumber::InternalError); }
// NOLINTNEXTLINE(cert-dcl50-cpp)
void __throw_out_of_range_fmt(const char* /*format*/, ...) { throw RuntimeError(ErrorNumber::InternalError); }

}  // namespace std
