#pragma once

#include <string>

namespace tapcore {

/// What the error of a call says; "" without an error.
template <class Error>
std::string messageOf(auto call) {
    try {
        (void)call();
    } catch (const Error& error) {
        return error.what();
    }
    return "";
}

}  // namespace tapcore
