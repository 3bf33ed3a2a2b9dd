#pragma once

namespace tidewell {

/// To be called first. A malloc that fails before ends the program, since the start-up code of the library does not ask
/// what it got. The thread's first exception needs memory that all later ones share: it is thrown here.
void PrepareForExceptions() noexcept;

/// Ends the program at once, from wherever it is, with the box of run-time error 7: memory is lacking even for the
/// exception that would tell of it.
[[noreturn]] void EndWithoutMemory() noexcept;

}  // namespace tidewell
