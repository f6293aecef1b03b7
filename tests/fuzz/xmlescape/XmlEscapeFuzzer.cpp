// Escaping must give text any XML parser decodes back to the input; unescaping must be defined
// for any text; and writing elements with arbitrary names, text and options must not fail.
#include "BaseString.h"
#include "XDocumentBase.h"
#include "XEscaping.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <string>

using namespace KV::XLib;

namespace {

using String = KV::BaseString<char>;

String Make(const std::string& s) {
    return String(s.c_str(), static_cast<int>(s.size()));
}

std::string Std(const String& s) {
    return std::string(s.GetBuffer(), static_cast<size_t>(s.Length()));
}

void Check(bool condition) {
    if (!condition)
        std::abort();
}

// Standard XML decoding of the five predefined entities, one pass, as a parser does it.
std::string ParserDecode(const std::string& text) {
    static const std::string names[][2] = {
        {"&amp;", "&"}, {"&gt;", ">"}, {"&lt;", "<"}, {"&quot;", "\""}, {"&apos;", "'"}};
    std::string out;
    for (size_t i = 0; i < text.size();) {
        const auto* entity = std::find_if(std::begin(names), std::end(names),
                                          [&](auto& e) { return text.compare(i, e[0].size(), e[0]) == 0; });
        Check(text[i] != '&' || entity != std::end(names)); // a bare "&" is not well-formed
        out += text[i] == '&' ? (*entity)[1] : std::string(1, text[i]);
        i += text[i] == '&' ? (*entity)[0].size() : 1;
    }
    return out;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size > 4096)
        return 0;
    const std::string input(reinterpret_cast<const char*>(data), size);
    const String text = Make(input);

    const std::string escaped = Std(EscapeText(text));
    Check(escaped.find_first_of("<>\"'") == std::string::npos);
    Check(ParserDecode(escaped) == input);

    const std::string unescaped = Std(UnescapeText(text));
    Check(unescaped.size() <= input.size());
    if (input.find('&') == std::string::npos) {
        Check(unescaped == input);
        Check(Std(UnescapeText(EscapeText(text))) == input);
    }

    // A tree of elements named and filled from the input must write out in full.
    if (size < 2)
        return 0;
    XWriteOptions options;
    options.noLineBreaks = data[0] & 1;
    options.quote = (data[0] & 4) ? U'\'' : U'"';
    const std::string name = input.substr(2, data[1] % (size - 1));
    XDocumentBase<char> doc(Make(name));
    doc.SetAttribute(Make("a"), Make(input));
    doc.SetChildText(Make(name), Make(input), !(data[0] & 8));
    String out;
    doc.Write(out, options);
    const std::string xml = Std(out);
    const char quote = static_cast<char>(options.quote);
    const std::string value = Std(EscapeText(doc.GetAttribute(0)->GetValue()));
    Check(xml.find(std::string(" a=") + quote + value + quote) != std::string::npos);
    return 0;
}
