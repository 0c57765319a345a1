// In place of layer.cpp where gtk-layer-shell is missing.

#include <memory>

#include "app/desktop/desktop_surface.h"

namespace tappora {

std::unique_ptr<DesktopSurface> layerSurface() { return nullptr; }

}  // namespace tappora
