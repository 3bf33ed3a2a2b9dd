#pragma once

#include <cstdint>

namespace runtime {

/// The 16-bit boolean of records and module variables: -1 and 0.
using Boolean = std::int16_t;
inline constexpr Boolean True = -1;
inline constexpr Boolean False = 0;

}  // namespace runtime
