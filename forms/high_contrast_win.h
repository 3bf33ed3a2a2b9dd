#pragma once

namespace forms {

/// Whether the user has chosen high contrast on a dark background, where black vanishes.
[[nodiscard]] bool DarkHighContrast() noexcept;

}  // namespace forms
