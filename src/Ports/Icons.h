// Pictures that do not belong to a running application.
#pragma once

#include "Ports/Values/Image.h"

#include <string_view>

namespace korvane::platform {

class Icons {
public:
    virtual ~Icons() = default;
    // This program's own icon; never null.
    virtual ImagePtr ownIcon() = 0;
    // A symbol of the system by its name; null for an unknown name. The symbol "app" must exist.
    virtual ImagePtr symbol(std::string_view name) = 0;
};

}  // namespace korvane::platform
