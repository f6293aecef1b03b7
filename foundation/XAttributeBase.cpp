#include "XAttributeBase.h"

#include "XEscaping.h"
#include "XStringOps.h"

namespace KV {
namespace XLib {

template <typename C> XAttributeBase<C>::XAttributeBase(const String& name) : XObjectBase<C>(name) {}

template <typename C>
XAttributeBase<C>::XAttributeBase(const String& name, const String& text) : XObjectBase<C>(name) {
    SetValue(text);
}

template <typename C> int XAttributeBase<C>::GetNodeType() const { return XNodeAttribute; }

template <typename C> void XAttributeBase<C>::Write(String& out, const XWriteOptions& options) const {
    const C quote = static_cast<C>(options.quote);
    std::basic_string<C> piece = detail::ToStd(this->GetName());
    piece += static_cast<C>('=');
    piece += quote;
    piece += detail::ToStd(EscapeText(value));
    piece += quote;
    detail::Append(out, piece);
}

template <typename C> BaseString<C> XAttributeBase<C>::ToString() const {
    XWriteOptions options;
    options.indentWithTabs = false;
    String out;
    Write(out, options);
    return out;
}

template <typename C> bool XAttributeBase<C>::HasValue() const { return value.GetLength() != 0; }

template <typename C> BaseString<C> XAttributeBase<C>::GetValue() const { return value; }

template <typename C> void XAttributeBase<C>::SetValue(const String& text) { value = UnescapeText(text); }

template class XAttributeBase<char>;

} // namespace XLib
} // namespace KV
