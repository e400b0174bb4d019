// The order of versions, as people read them.
#pragma once

#include <string_view>

namespace corvane {

// Negative, 0 or positive, as `a` is older than `b`, the same or newer. The numbers in the texts
// are compared one by one, whatever stands between them: 17.0.9 < 17.0.10, 1.8.0_51 < 1.8.0_402,
// and 17 is the same as 17.0.0. A word for a build in front of the release (ea, alpha, beta, rc,
// internal, snapshot, in either case) makes a version older than the one without it: 21-ea < 21.
// Other words say nothing: 17.0.10+7-LTS is the same as 17.0.10+7.
int compareVersions(std::string_view a, std::string_view b) noexcept;

}  // namespace corvane
