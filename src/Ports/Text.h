// Operations that need the Unicode tables: comparing without regard to case, trimming, the characters a person sees.
#pragma once

#include <string>
#include <string_view>

namespace korvane::platform {

class Text {
public:
    virtual ~Text() = default;
    // Negative, zero or positive.
    virtual int caseInsensitive(std::string_view left, std::string_view right) = 0;
    // The same, in the order of the user's language.
    virtual int localizedCaseInsensitive(std::string_view left, std::string_view right) = 0;
    // Without Unicode white space and newlines at both ends.
    virtual std::string trimmed(std::string_view text) = 0;
    // The first character as a person sees it; empty for empty text.
    virtual std::string firstCharacter(std::string_view text) = 0;
};

}  // namespace korvane::platform
