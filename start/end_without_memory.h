#pragma once

namespace tidewell {

/// Ends the program at once, from wherever it is, with the box of run-time error 7: memory is lacking even for the
/// exception that would tell of it.
[[noreturn]] void EndWithoutMemory() noexcept;

}  // namespace tidewell
