#pragma once

namespace runtime {

/// Whether the program is ending: from then on no event handler runs any more.
[[nodiscard]] bool Ending() noexcept;

/// Ends the program: no further events run; an open menu closes, a window that is being moved goes back, and the
/// message loop ends.
void End() noexcept;

/// Ends the program on the exception that is being handled, as by End; ReportRunTimeError is still to be called. To be
/// called in a catch block. Of several exceptions the first counts. A handler that another one has interrupted, in a
/// menu or while it waited for the shell, goes on after it: it asks Ending before it shows anything.
void EndOnCurrentException() noexcept;

/// Shows the exception that has ended the program, if one has, as a run-time error, number and text, in one message
/// box. To be called once, outside every handler: in the middle of a menu or of a drag the box would not get the mouse.
/// Returns the exit status of the program, 1 after an error and 0 otherwise.
int ReportRunTimeError() noexcept;

}  // namespace runtime
