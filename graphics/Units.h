// The two units in which coordinates can leave the library, chosen by the environment variable
// "ORXPrintOpenPSToMM": millimetres, or PostScript units when it is exactly "0".
#pragma once

namespace orxeps {

// 25.4 / 72 in single precision.
inline constexpr float kMillimetresPerUnit = 0.35277778F;

// Asks the environment each time.
[[nodiscard]] bool UnitsAreMillimetres() noexcept;

}  // namespace orxeps
