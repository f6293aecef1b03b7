#include "XEscaping.h"

#include "XStringOps.h"

namespace KV {
namespace XLib {

namespace {

// Replaces every occurrence of find, resuming the search after the inserted text.
template <typename C>
std::basic_string<C> ReplaceAll(const std::basic_string<C>& text, const std::basic_string<C>& find,
                                const std::basic_string<C>& with) {
    std::basic_string<C> out;
    out.reserve(text.size());
    size_t from = 0;
    for (size_t hit = text.find(find); hit != std::basic_string<C>::npos; hit = text.find(find, from)) {
        out.append(text, from, hit - from);
        out += with;
        from = hit + find.size();
    }
    out.append(text, from, std::basic_string<C>::npos);
    return out;
}

const char* const entities[][2] = {
    {"&", "&amp;"}, {">", "&gt;"}, {"<", "&lt;"}, {"\"", "&quot;"}, {"'", "&apos;"},
};

} // namespace

template <typename C> BaseString<C> EscapeText(const BaseString<C>& text) {
    std::basic_string<C> out = detail::ToStd(text);
    for (const auto& entity : entities)
        out = ReplaceAll(out, detail::Lit<C>(entity[0]), detail::Lit<C>(entity[1]));
    return detail::FromStd(out);
}

template <typename C> BaseString<C> UnescapeText(const BaseString<C>& text) {
    std::basic_string<C> out = detail::ToStd(text);
    for (const auto& entity : entities)
        out = ReplaceAll(out, detail::Lit<C>(entity[1]), detail::Lit<C>(entity[0]));
    return detail::FromStd(out);
}

template BaseString<char> EscapeText<char>(const BaseString<char>&);
template BaseString<char> UnescapeText<char>(const BaseString<char>&);

} // namespace XLib
} // namespace KV
