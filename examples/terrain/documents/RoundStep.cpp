#include "documents/RoundStep.h"

#include <algorithm>
#include <cmath>

namespace terrain {

namespace {

const double s_rounding = 1 + 1e-9; // 1000 must not become 500

} // namespace

double round_step(double largest)
{
    const double power = std::pow(10, std::floor(std::log10(largest)));
    for (const double factor : {5, 2}) {
        if (factor * power <= largest * s_rounding) {
            return factor * power;
        }
    }
    return power;
}

int decimals_of(double step)
{
    return std::max(0, -static_cast<int>(std::floor(std::log10(step * s_rounding))));
}

} // namespace terrain
