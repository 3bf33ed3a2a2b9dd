#pragma once

#include "runtime/runtime_error.h"

namespace runtime {

/// Whether the program is ending: from then on no event handler starts.
[[nodiscard]] bool Ending() noexcept;

/// Ends the program: no more handlers start, an open menu closes, a window that is being moved goes back, and the
/// message loop ends.
void End() noexcept;

/// Like End, and remembers the error for ReportRuntimeError. Of several errors the first counts. An interrupted handler
/// resumes afterwards, so it must check Ending before it shows anything.
void EndOn(ErrorNumber number) noexcept;

/// EndOn for the current exception. To be called in a catch block.
void EndOnCurrentException() noexcept;

/// Shows the error that has ended the program, if one has, in one message box. To be called once, outside every
/// handler: in the middle of a menu or of a drag the box would not get the mouse. If the system refuses the box,
/// FatalAppExit shows the error and ends the process.
/// Returns the exit status of the program, 1 after an error and 0 otherwise.
int ReportRuntimeError() noexcept;

}  // namespace runtime
