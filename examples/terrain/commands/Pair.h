#pragma once

namespace terrain {

/// Two numbers that the processor reckons with at once, each as it would alone: the type that g++ and clang
/// have for it, on any machine.
typedef double Pair __attribute__((vector_size(2 * sizeof(double))));
/// What comparing pairs gives: all bits set where it is so, none elsewhere.
typedef long long PairBits __attribute__((vector_size(2 * sizeof(long long))));

/// The numbers where the bits are set, 0 elsewhere.
inline Pair where(const PairBits& bits, const Pair& numbers)
{
    return reinterpret_cast<Pair>(bits & reinterpret_cast<PairBits>(numbers));
}

/// One number where the bits are set, the other elsewhere.
inline Pair either(const PairBits& bits, const Pair& one, const Pair& other)
{
    return reinterpret_cast<Pair>(
        (bits & reinterpret_cast<PairBits>(one)) | (~bits & reinterpret_cast<PairBits>(other)));
}

} // namespace terrain
