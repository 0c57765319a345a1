#pragma once

#include <memory>

namespace tapcore {

/// What an `Owned` does with its object in the end.
template <auto release>
struct Release {
    void operator()(auto* object) const { release(object); }
};

/// An object of a C library, given back by the library's own function: `Owned<DIR, ::closedir>`.
template <class Object, auto release>
using Owned = std::unique_ptr<Object, Release<release>>;

}  // namespace tapcore
