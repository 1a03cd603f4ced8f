#include "value_scale.hpp"

#include <algorithm>
#include <cmath>
#include <limits>

namespace vorm::evaluation {

ValueScale::ValueScale(const SignalDrawing& signal, const std::vector<double>& values) {
    if (signal.kind == DrawingKind::Switch) {
        return;
    }
    if (signal.kind == DrawingKind::Levels) {
        greatest_ = std::max(1.0, static_cast<double>(signal.levels.size()) - 1);
        return;
    }
    double least = std::numeric_limits<double>::infinity();
    double greatest = -least;
    for (const double value : values) {
        if (std::isfinite(value)) {
            least = std::min(least, value);
            greatest = std::max(greatest, value);
        }
    }
    if (least <= greatest) {
        const double margin = least < greatest ? 0 : std::max(std::abs(least) / 10, 1.0);
        least_ = std::max(least - margin, std::numeric_limits<double>::lowest());
        greatest_ = std::min(greatest + margin, std::numeric_limits<double>::max());
    }
}

// Halves, since the greatest doubles are too far apart.
double ValueScale::share(double value) const {
    return std::clamp((value / 2 - least_ / 2) / (greatest_ / 2 - least_ / 2), 0.0, 1.0);
}

}  // namespace vorm::evaluation
