// The program's own icon and the symbols, as pictures for the records.
#pragma once

#include "Ports/Icons.h"

#include <map>
#include <string>

namespace korvane::platform {

class QtIcons final : public Icons {
public:
    // 128 pixels square.
    ImagePtr ownIcon() override;
    // White, 64 pixels square. The same picture at every call.
    ImagePtr symbol(std::string_view name) override;

private:
    ImagePtr own;
    std::map<std::string, ImagePtr, std::less<>> symbols;
};

}  // namespace korvane::platform
