// The text port, implemented with ICU, for every system that has no text service of its own.
#pragma once

#include "Ports/Text.h"

#include <memory>

namespace korvane::platform {

class IcuText final : public Text {
public:
    IcuText();
    ~IcuText() override;

    int caseInsensitive(std::string_view left, std::string_view right) override;
    int localizedCaseInsensitive(std::string_view left, std::string_view right) override;
    std::string trimmed(std::string_view text) override;
    std::string firstCharacter(std::string_view text) override;

private:
    struct Services;
    std::unique_ptr<Services> services;  // made when first used, because the language tables are large
};

}  // namespace korvane::platform
