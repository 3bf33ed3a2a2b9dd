#include "tray/icon_number.h"

#include <algorithm>
#include <array>

#include "resources/resource_ids.h"
#include "runtime/number_format.h"

namespace mMoon {

namespace {

/// The icons' lower limits on the phase scale, from icon 28 down to icon 1, on purpose irregular. The limit itself
/// belongs to the icon below.
constexpr auto kIconLimits = std::to_array<double>(
    {198.22, 194.27, 188.2, 180.56, 171.0, 161.0, 150.58, 140.0, 129.61, 120.87, 112.81, 106.6, 102.36, 100.238,
     99.66,  97.44,  93.18, 86.89,  78.75, 69.96, 59.4,   48.87, 38.43,  28.13,  19.31,  11.2,  5.68,   1.73});
static_assert(kIconLimits.size() == PHASE_PICTURES);

}  // namespace

void PhaseToIconNumber(double value) {
  const auto* const limit =
      std::find_if(kIconLimits.begin(), kIconLimits.end(), [value](double lower) { return value > lower; });
  IconNumber = static_cast<float>(kIconLimits.end() - limit);
}

}  // namespace mMoon

namespace tidewell {

std::int16_t IcoNumFromIconNumber() { return runtime::LeadingInteger(runtime::FormatNumber(mMoon::IconNumber, L"00")); }

}  // namespace tidewell
