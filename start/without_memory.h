#pragma once

namespace tidewell {

/// Call it before anything can throw. It throws the thread's first exception, which needs memory that later ones share.
/// Until then, a failing malloc ends the program: the library's start-up code does not check what it got.
void PrepareForExceptions() noexcept;

/// Ends the program at once with the box of run-time error 7: there is no memory even for an exception.
[[noreturn]] void EndWithoutMemory() noexcept;

}  // namespace tidewell
