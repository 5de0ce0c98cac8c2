#include "Platform/Linux/PropertyList.h"

#include <algorithm>
#include <clocale>
#include <cmath>
#include <cstdlib>
#include <locale.h>
#include <plist/plist.h>

namespace korvane::platform {
namespace {

constexpr int deepestNesting = 64;
constexpr std::size_t mostKeys = 50'000, mostTags = 1'000'000, mostCharacterNames = 50'000;

struct PlistDeleter {
    void operator()(void *node) const { plist_free(node); }
};
using PlistOwner = std::unique_ptr<void, PlistDeleter>;

// The library prints and reads numbers with the thread's locale, which may use a comma as the decimal point.
class PlainNumbers {
public:
    PlainNumbers() : plain(newlocale(LC_NUMERIC_MASK, "C", nullptr)), previous(uselocale(plain)) {}
    PlainNumbers(const PlainNumbers &) = delete;
    PlainNumbers &operator=(const PlainNumbers &) = delete;
    ~PlainNumbers()
    {
        uselocale(previous);
        freelocale(plain);
    }

private:
    locale_t plain, previous;
};

// The library frees a tree by recursion, so the depth must be limited before the library sees the text.
bool isShallow(std::string_view xml)
{
    int depth = 0;
    for (auto at = xml.find('<'); at != std::string_view::npos; at = xml.find('<', at + 1)) {
        std::string_view tag = xml.substr(at + 1, 6);
        const bool closes = tag.starts_with('/');
        if (closes)
            tag.remove_prefix(1);
        if (!tag.starts_with("array") && !tag.starts_with("dict"))
            continue;
        if (closes) {
            --depth;
            continue;
        }
        const auto end = xml.find('>', at);
        if (end != std::string_view::npos && xml[end - 1] == '/')
            continue;
        if (++depth > deepestNesting)
            return false;
    }
    return true;
}

// The library accepts a file that was cut off between two elements.
bool isWhole(std::string_view xml)
{
    const auto last = xml.find_last_not_of(" \t\r\n");
    return last != std::string_view::npos && xml.substr(0, last + 1).ends_with("</plist>");
}

std::optional<std::string> readText(plist_t node)
{
    if (node == nullptr || plist_get_node_type(node) != PLIST_STRING)
        return std::nullopt;
    std::uint64_t size = 0;
    const char *text = plist_get_string_ptr(node, &size);
    // Text that a user or another program wrote here needs the same check as text from the setters.
    return text != nullptr ? storableText(std::string_view(text, size)) : std::string();
}

template <typename Visit> void forEachItem(plist_t dictionary, Visit visit)
{
    plist_dict_iter iterator = nullptr;
    plist_dict_new_iter(dictionary, &iterator);
    if (iterator == nullptr)
        return;
    for (;;) {
        char *key = nullptr;
        plist_t value = nullptr;
        plist_dict_next_item(dictionary, iterator, &key, &value);
        if (key == nullptr)
            break;
        if (value != nullptr)
            visit(storableText(key), value);
        std::free(key);
    }
    std::free(iterator);
}

std::optional<std::vector<std::string>> readTexts(plist_t node)
{
    std::vector<std::string> texts;
    const std::uint32_t size = plist_array_get_size(node);
    for (std::uint32_t i = 0; i < size; ++i) {
        auto text = readText(plist_array_get_item(node, i));
        if (!text)
            return std::nullopt;
        texts.push_back(*std::move(text));
    }
    return texts;
}

std::optional<StringMap> readTextMap(plist_t node)
{
    std::optional<StringMap> map = StringMap();
    forEachItem(node, [&map](std::string key, plist_t value) {
        auto text = readText(value);
        if (!text)
            map.reset();
        else if (map)
            map->insert_or_assign(std::move(key), *std::move(text));
    });
    return map;
}

}  // namespace

class ForeignValue {
public:
    explicit ForeignValue(plist_t node) : copy(plist_copy(node)) {}
    plist_t newCopy() const { return plist_copy(copy.get()); }

private:
    PlistOwner copy;
};

namespace {

std::optional<PropertyValue> readValue(plist_t node)
{
    switch (plist_get_node_type(node)) {
    case PLIST_BOOLEAN: {
        std::uint8_t value = 0;
        plist_get_bool_val(node, &value);
        return value != 0;
    }
    case PLIST_UINT: {
        // The library stores negative numbers in the same unsigned field.
        std::uint64_t value = 0;
        plist_get_uint_val(node, &value);
        return static_cast<std::int64_t>(value);
    }
    case PLIST_REAL: {
        double value = 0;
        plist_get_real_val(node, &value);
        if (!std::isfinite(value))
            return std::nullopt;
        return value;
    }
    case PLIST_STRING:
        return readText(node).value_or(std::string());
    case PLIST_ARRAY:
        if (auto texts = readTexts(node))
            return *std::move(texts);
        break;
    case PLIST_DICT:
        if (auto map = readTextMap(node))
            return *std::move(map);
        break;
    case PLIST_DATA: {
        std::uint64_t size = 0;
        const char *bytes = plist_get_data_ptr(node, &size);
        return bytes != nullptr ? Bytes(bytes, bytes + size) : Bytes();
    }
    case PLIST_NONE:
        return std::nullopt;
    default:
        break;
    }
    return std::make_shared<const ForeignValue>(node);
}

struct NodeMaker {
    plist_t operator()(bool value) const { return plist_new_bool(value ? 1 : 0); }
    plist_t operator()(std::int64_t value) const { return plist_new_uint(static_cast<std::uint64_t>(value)); }
    plist_t operator()(double value) const { return plist_new_real(value); }
    plist_t operator()(const std::string &value) const { return plist_new_string(value.c_str()); }
    plist_t operator()(const std::vector<std::string> &value) const
    {
        plist_t array = plist_new_array();
        for (const auto &text : value)
            plist_array_append_item(array, plist_new_string(text.c_str()));
        return array;
    }
    plist_t operator()(const StringMap &value) const
    {
        plist_t dictionary = plist_new_dict();
        for (const auto &[key, text] : value)
            plist_dict_set_item(dictionary, key.c_str(), plist_new_string(text.c_str()));
        return dictionary;
    }
    plist_t operator()(const Bytes &value) const
    {
        // The pointer is never null, because the library copies from it even when there is nothing to copy.
        static constexpr char nothing = 0;
        const char *bytes = value.empty() ? &nothing : reinterpret_cast<const char *>(value.data());
        return plist_new_data(bytes, value.size());
    }
    plist_t operator()(const ForeignValuePtr &value) const { return value->newCopy(); }
};

// The length of the valid UTF-8 sequence at the start of the text; zero for a broken sequence.
std::size_t sequenceLength(std::string_view text)
{
    const auto byte = [text](std::size_t i) { return i < text.size() ? static_cast<unsigned char>(text[i]) : 0u; };
    const auto follows = [&byte](std::size_t i) { return (byte(i) & 0xc0u) == 0x80u; };
    const unsigned first = byte(0);
    if (first < 0x80)
        return 1;
    if (first >= 0xc2 && first <= 0xdf)
        return follows(1) ? 2 : 0;
    if (first >= 0xe0 && first <= 0xef) {
        const bool overlong = first == 0xe0 && byte(1) < 0xa0;
        const bool surrogate = first == 0xed && byte(1) > 0x9f;
        const bool unnamed = first == 0xef && byte(1) == 0xbf && byte(2) >= 0xbe;  // U+FFFE and U+FFFF
        return follows(1) && follows(2) && !overlong && !surrogate && !unnamed ? 3 : 0;
    }
    if (first >= 0xf0 && first <= 0xf4) {
        const bool outside = (first == 0xf0 && byte(1) < 0x90) || (first == 0xf4 && byte(1) > 0x8f);
        return follows(1) && follows(2) && follows(3) && !outside ? 4 : 0;
    }
    return 0;
}

}  // namespace

bool holdsTooMuch(std::string_view xml)
{
    std::size_t keys = 0, tags = 0;
    for (auto at = xml.find('<'); at != std::string_view::npos; at = xml.find('<', at + 1)) {
        keys += xml.substr(at).starts_with("<key") ? 1 : 0;
        if (++tags > mostTags || keys > mostKeys)
            return true;
    }
    return static_cast<std::size_t>(std::count(xml.begin(), xml.end(), '&')) > mostCharacterNames;
}

std::optional<PropertyList> parsePropertyList(std::string_view xml)
{
    if (holdsTooMuch(xml) || !isWhole(xml) || !isShallow(xml))
        return std::nullopt;
    const PlainNumbers plainNumbers;
    plist_t parsed = nullptr;
    plist_from_xml(xml.data(), static_cast<std::uint32_t>(xml.size()), &parsed);
    const PlistOwner root(parsed);
    if (!root || plist_get_node_type(root.get()) != PLIST_DICT)
        return std::nullopt;
    PropertyList list;
    forEachItem(root.get(), [&list](std::string key, plist_t node) {
        if (auto value = readValue(node))
            list.insert_or_assign(std::move(key), *std::move(value));
    });
    return list;
}

std::string writePropertyList(const PropertyList &list)
{
    const PlainNumbers plainNumbers;
    const PlistOwner root(plist_new_dict());
    for (const auto &[key, value] : list)
        plist_dict_set_item(root.get(), key.c_str(), std::visit(NodeMaker(), value));
    char *text = nullptr;
    std::uint32_t size = 0;
    plist_to_xml(root.get(), &text, &size);
    std::string xml;
    if (text != nullptr)
        xml.assign(text, size);
    plist_to_xml_free(text);
    return xml;
}

std::string storableText(std::string_view text)
{
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const std::size_t length = sequenceLength(text);
        const auto first = static_cast<unsigned char>(text[0]);
        if (length == 0)
            result += "\xef\xbf\xbd";
        else if (first == '\t' || first == '\n' || (first >= 0x20 && first != 0x7f))
            result += text.substr(0, length);
        text.remove_prefix(length == 0 ? 1 : length);
    }
    return result;
}

}  // namespace korvane::platform
