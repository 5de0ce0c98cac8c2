#include "Platform/Icu/IcuText.h"

#include <algorithm>
#include <unicode/brkiter.h>
#include <unicode/coll.h>
#include <unicode/locid.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/utf8.h>

namespace korvane::platform {
namespace {

icu::UnicodeString toUnicode(std::string_view text)
{
    return icu::UnicodeString::fromUTF8(icu::StringPiece(text.data(), static_cast<int32_t>(text.size())));
}

bool isBlank(UChar32 character)
{
    return u_isUWhiteSpace(character) != 0 || character == 0x200B;
}

bool isAscii(std::string_view text)
{
    return std::all_of(text.begin(), text.end(), [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
}

int lower(char byte)
{
    return byte >= 'A' && byte <= 'Z' ? byte + ('a' - 'A') : byte;
}

}  // namespace

struct IcuText::Services {
    std::unique_ptr<icu::Collator> collator;
    std::unique_ptr<icu::BreakIterator> characters;
};

IcuText::IcuText() : services(std::make_unique<Services>()) {}
IcuText::~IcuText() = default;

int IcuText::caseInsensitive(std::string_view left, std::string_view right)
{
    if (isAscii(left) && isAscii(right)) {
        const auto size = std::min(left.size(), right.size());
        for (std::size_t i = 0; i < size; ++i)
            if (const int difference = lower(left[i]) - lower(right[i]); difference != 0)
                return difference;
        return left.size() == right.size() ? 0 : (left.size() < right.size() ? -1 : 1);
    }
    return toUnicode(left).caseCompare(toUnicode(right), U_FOLD_CASE_DEFAULT);
}

int IcuText::localizedCaseInsensitive(std::string_view left, std::string_view right)
{
    UErrorCode status = U_ZERO_ERROR;
    if (!services->collator) {
        // When no language is set ("C"), the default would sort by bytes, capitals first.
        const icu::Locale &user = icu::Locale::getDefault();
        const bool hasLanguage = std::string_view(user.getVariant()) != "POSIX";
        services->collator.reset(icu::Collator::createInstance(hasLanguage ? user : icu::Locale::getRoot(), status));
        if (U_FAILURE(status) || !services->collator) {
            services->collator.reset();
            return caseInsensitive(left, right);
        }
        services->collator->setStrength(icu::Collator::SECONDARY);
    }
    return services->collator->compare(toUnicode(left), toUnicode(right), status);
}

std::string IcuText::trimmed(std::string_view text)
{
    const auto *bytes = text.data();
    auto end = static_cast<int32_t>(text.size());
    int32_t begin = 0;
    while (begin < end) {
        int32_t next = begin;
        UChar32 character = 0;
        U8_NEXT(bytes, next, end, character);
        if (character < 0 || !isBlank(character))
            break;
        begin = next;
    }
    while (end > begin) {
        int32_t previous = end;
        UChar32 character = 0;
        U8_PREV(bytes, begin, previous, character);
        if (character < 0 || !isBlank(character))
            break;
        end = previous;
    }
    return std::string(text.substr(static_cast<std::size_t>(begin), static_cast<std::size_t>(end - begin)));
}

std::string IcuText::firstCharacter(std::string_view text)
{
    if (text.empty())
        return {};
    UErrorCode status = U_ZERO_ERROR;
    if (!services->characters) {
        services->characters.reset(icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
        if (U_FAILURE(status))
            services->characters.reset();
    }
    const icu::UnicodeString whole = toUnicode(text);
    int32_t end = whole.moveIndex32(0, 1);
    if (services->characters) {
        services->characters->setText(whole);
        if (const int32_t next = services->characters->next(); next != icu::BreakIterator::DONE)
            end = next;
    }
    std::string result;
    whole.tempSubString(0, end).toUTF8String(result);
    return result;
}

}  // namespace korvane::platform
