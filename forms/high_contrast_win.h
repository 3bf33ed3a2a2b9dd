#pragma once

namespace forms {

/// Whether the user has chosen high contrast on a dark background, on which what is drawn in black vanishes.
[[nodiscard]] bool DarkHighContrast() noexcept;

}  // namespace forms
