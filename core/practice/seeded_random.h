#pragma once

#include <cstdint>
#include <limits>

namespace tapcore {

/// The trainer's only source of chance: SplitMix64 (Steele, Lea, Flood: "Fast splittable pseudorandom number
/// generators", 2014). A seed gives the same numbers on every machine, for ever. Fits wherever the standard
/// library takes a generator; of its distributions only `below` gives the same everywhere.
struct SeededRandom {
    using result_type = std::uint64_t;

    std::uint64_t state = 0;

    explicit SeededRandom(std::uint64_t seed) : state(seed) {}

    std::uint64_t next();
    /// A number drawn evenly from [0, bound), by Lemire's multiplication with rejection ("Fast random integer
    /// generation in an interval", 2019). `bound` is at least 1.
    std::uint64_t below(std::uint64_t bound);

    static constexpr result_type min() { return 0; }
    static constexpr result_type max() { return std::numeric_limits<result_type>::max(); }
    result_type operator()() { return next(); }

    bool operator==(const SeededRandom&) const = default;
};

}  // namespace tapcore
