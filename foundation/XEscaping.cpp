#include "XEscaping.h"

namespace KV {
namespace XLib {

namespace {

// In replacement order: "&" must go first when escaping so the other entities stay intact.
const char* const entities[][2] = {
    {"&", "&amp;"}, {">", "&gt;"}, {"<", "&lt;"}, {"\"", "&quot;"}, {"'", "&apos;"},
};

// Widens an ASCII literal to the character type.
template <typename C> BaseString<C> Ascii(const char* text) {
    BaseString<C> out;
    for (; *text; ++text)
        out.Append(static_cast<C>(*text));
    return out;
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
