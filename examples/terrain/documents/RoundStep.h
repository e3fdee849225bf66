#pragma once

namespace terrain {

/// A number that is good to read, 1, 2 or 5 times a power of ten, as large as possible: for the ticks of a
/// scale. @param largest finite, above 0
double round_step(double largest);

/// How many decimals tell the multiples of a step from round_step() apart.
int decimals_of(double step);

} // namespace terrain
