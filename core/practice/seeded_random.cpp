#include "core/practice/seeded_random.h"

namespace tapcore {
namespace {

__extension__ using Product = unsigned __int128;

std::uint64_t lowHalf(Product product) { return static_cast<std::uint64_t>(product); }
std::uint64_t highHalf(Product product) { return static_cast<std::uint64_t>(product >> 64); }

}  // namespace

std::uint64_t SeededRandom::next() {
    state += 0x9E3779B97F4A7C15;
    std::uint64_t z = state;
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EB;
    return z ^ (z >> 31);
}

std::uint64_t SeededRandom::below(std::uint64_t bound) {
    Product product = Product{next()} * bound;
    if (lowHalf(product) < bound) {
        const std::uint64_t rejected = (0 - bound) % bound;  // (2^64 - bound) mod bound
        while (lowHalf(product) < rejected) product = Product{next()} * bound;
    }
    return highHalf(product);
}

}  // namespace tapcore
