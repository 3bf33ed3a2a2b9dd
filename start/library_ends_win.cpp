// The ends of the C++ library that the program replaces by its own. The library's would bring 100 kB along: name
// demangling, both instantiations of its strings, a random device.

#include <bits/functexcept.h>
#include <windows.h>

#include <exception>

#include "runtime/runtime_error.h"

// The library's own handler prints the name of the exception. A program without a console has nowhere to print to, and
// no exception gets this far but by a defect in the destructors.
namespace __gnu_cxx {
void __verbose_terminate_handler() { TerminateProcess(GetCurrentProcess(), 3); }
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
