// The ends of the C++ library that the program replaces by its own. The library's would bring 100 kB along: name
// demangling, both instantiations of its strings, a random device.

#include <bits/functexcept.h>

#include <exception>

#include "runtime/runtime_error.h"
#include "start/end_without_memory.h"

// The libraries end a process silently if there is no memory for an exception: they abort where the thread's exception
// state is made, and terminate where the exception itself is. No other cause leads here.
extern "C" void abort() { tidewell::EndWithoutMemory(); }
namespace __gnu_cxx {
void __verbose_terminate_handler() { tidewell::EndWithoutMemory(); }
}  // namespace __gnu_cxx

// What the containers and strings throw, as the run-time errors that it ends in.
namespace std {

using runtime::ErrorNumber;
using runtime::RuntimeError;

void __throw_bad_alloc() { throw RuntimeError(ErrorNumber::OutOfMemory); }
void __throw_bad_array_new_length() { throw RuntimeError(ErrorNumber::OutOfMemory); }
void __throw_length_error(const char* /*text*/) { throw RuntimeError(ErrorNumber::OutOfMemory); }
void __throw_logic_error(const char* /*text*/) { throw RuntimeError(ErrorNumber::InternalError); }
void __throw_out_of_range_fmt(const char* /*format*/, ...) { throw RuntimeError(ErrorNumber::InternalError); }

}  // namespace std
