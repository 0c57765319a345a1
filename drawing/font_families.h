#pragma once

#include "drawing/text.h"

namespace drawing {

/// The families that a design is looked for in, the first that the system has, as Pango and CSS both write
/// them.
constexpr const char* families(Design design) {
    switch (design) {
        case Design::rounded:
            return "ui-rounded, system-ui, sans-serif";
        case Design::monospaced:
            return "ui-monospace, monospace";
        case Design::standard:
            break;
    }
    return "system-ui, sans-serif";
}

}  // namespace drawing
