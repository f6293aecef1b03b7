#include "XEscaping.h"

#include <string>

namespace KV {
namespace XLib {

namespace {

// In replacement order: "&" must go first when escaping so the other entities stay intact.
const char* const entities[][2] = {
    {"&", "&amp;"}, {">", "&gt;"}, {"<", "&lt;"}, {"\"", "&quot;"}, {"'", "&apos;"},
};

// Widens an ASCII literal to the character type.
template <typename C> BaseString<C> Ascii(const char* text) {
    const std::basic_string<C> units(text, text + std::char_traits<char>::length(text));
    return BaseString<C>(units.c_str(), static_cast<int>(units.size()));
}

} // namespace

template <typename C> BaseString<C> EscapeText(const BaseString<C>& text) {
    BaseString<C> out(text);
    for (const auto& entity : entities)
        out.Replace(Ascii<C>(entity[0]), Ascii<C>(entity[1]));
    return out;
}

template <typename C> BaseString<C> UnescapeText(const BaseString<C>& text) {
    BaseString<C> out(text);
    for (const auto& entity : entities)
        out.Replace(Ascii<C>(entity[1]), Ascii<C>(entity[0]));
    return out;
}

template BaseString<char> EscapeText<char>(const BaseString<char>&);
template BaseString<char> UnescapeText<char>(const BaseString<char>&);

} // namespace XLib
} // namespace KV
