#include "views/Camera.h"

#include <cmath>

namespace terrain {

Camera between(const Camera& from, const Camera& to, double part)
{
    // By equal factors, or the beginning would seem faster than the end.
    const double scale = from.scale * std::pow(to.scale / from.scale, part);
    const double whole_change = 1 / from.scale - 1 / to.scale;
    // In step with the lengths, so that a point that both cameras show at the same place stays there.
    const double left = whole_change == 0 ? 1 - part : (1 / scale - 1 / to.scale) / whole_change;
    return {scale, to.centre + (from.centre - to.centre) * left};
}

} // namespace terrain
