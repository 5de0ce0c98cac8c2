#include "Platform/X11/CompoundText.h"

#include <cstdint>
#include <glib.h>
#include <memory>

namespace korvane::platform::x11 {
namespace {

constexpr char escape = '\x1b';

struct CharacterSet {
    std::string encoding;  // the name in the system's converter; empty if the character set is unknown
    bool twoBytes = false;
};

// Character sets with 96 characters in the upper half: the parts of ISO 8859 by their final byte.
CharacterSet upperHalf(char final)
{
    switch (final) {
    case 'A':
        return {"ISO-8859-1"};
    case 'B':
        return {"ISO-8859-2"};
    case 'C':
        return {"ISO-8859-3"};
    case 'D':
        return {"ISO-8859-4"};
    case 'F':
        return {"ISO-8859-7"};
    case 'G':
        return {"ISO-8859-6"};
    case 'H':
        return {"ISO-8859-8"};
    case 'L':
        return {"ISO-8859-5"};
    case 'M':
        return {"ISO-8859-9"};
    case 'b':
        return {"ISO-8859-15"};
    default:
        return {};
    }
}

CharacterSet twoByteSet(char final)
{
    switch (final) {
    case 'A':
        return {"GB2312", true};
    case 'B':
        return {"EUC-JP", true};
    case 'C':
        return {"EUC-KR", true};
    default:
        return {"", true};
    }
}

std::string converted(std::string bytes, const std::string &encoding)
{
    if (encoding.empty() || bytes.empty())
        return {};
    gsize length = 0;
    const std::unique_ptr<char, decltype(&g_free)> text(
        g_convert_with_fallback(bytes.data(), static_cast<gssize>(bytes.size()), "UTF-8", encoding.c_str(), "?",
                                nullptr, &length, nullptr),
        g_free);
    return text ? std::string(text.get(), length) : std::string();
}

class Reader {
public:
    explicit Reader(std::string_view bytes) : rest(bytes) {}

    std::string read()
    {
        std::string text;
        while (!rest.empty()) {
            if (rest.front() == escape)
                text += announcement();
            else
                text += segment();
        }
        return text;
    }

private:
    // The bytes in the same half, up to the next announcement.
    std::string segment()
    {
        const bool upper = (rest.front() & 0x80) != 0;
        std::size_t length = 0;
        while (length < rest.size() && rest[length] != escape && ((rest[length] & 0x80) != 0) == upper)
            ++length;
        std::string bytes(rest.substr(0, length));
        rest.remove_prefix(length);
        const CharacterSet &set = upper ? right : left;
        if (!upper && set.encoding == "ASCII")
            return bytes;
        if (set.twoBytes)
            for (char &byte : bytes)
                byte = static_cast<char>(byte | 0x80);
        return converted(std::move(bytes), set.encoding);
    }

    // An announcement has intermediate bytes and then a final byte.
    std::string announcement()
    {
        rest.remove_prefix(1);
        std::size_t length = 0;
        while (length < rest.size() && rest[length] >= 0x20 && rest[length] < 0x30)
            ++length;
        if (length >= rest.size()) {
            rest = {};
            return {};
        }
        const auto kind = rest.substr(0, length);
        const char final = rest[length];
        rest.remove_prefix(length + 1);
        if (kind == "(")
            left = {"ASCII"};
        else if (kind == ")")
            right = final == 'I' ? CharacterSet{"JIS_X0201"} : CharacterSet{};
        else if (kind == "-")
            right = upperHalf(final);
        else if (kind == "$(" || kind == "$")
            left = twoByteSet(final);
        else if (kind == "$)")
            right = twoByteSet(final);
        else if (kind == "%" && final == 'G')
            return utf8();
        else if (kind == "%/")
            skipExtended();
        return {};
    }

    std::string utf8()
    {
        constexpr std::string_view end = "\x1b%@";
        const auto length = std::min(rest.find(end), rest.size());
        std::string text(rest.substr(0, length));
        rest.remove_prefix(std::min(rest.size(), length + end.size()));
        return text;
    }

    // The length is in two bytes with seven bits each.
    void skipExtended()
    {
        if (rest.size() < 2) {
            rest = {};
            return;
        }
        const auto length = static_cast<std::size_t>((rest[0] & 0x7f) * 128 + (rest[1] & 0x7f));
        rest.remove_prefix(std::min(rest.size(), length + 2));
    }

    std::string_view rest;
    CharacterSet left{"ASCII"}, right{"ISO-8859-1"};
};

}  // namespace

std::string compoundTextToUtf8(std::string_view bytes)
{
    return Reader(bytes).read();
}

}  // namespace korvane::platform::x11
