#include "XAttributeBase.h"

#include "XEscaping.h"

namespace KV {
namespace XLib {

template <typename C> XAttributeBase<C>::XAttributeBase(const String& name) : XObjectBase<C>(name) {}

template <typename C>
XAttributeBase<C>::XAttributeBase(const String& name, const String& text) : XObjectBase<C>(name) {
    SetValue(text);
}

template <typename C> int XAttributeBase<C>::GetNodeType() const {
    return XNodeAttribute;
}

template <typename C> void XAttributeBase<C>::Write(String& out, const XWriteOptions& options) const {
    const C quote = static_cast<C>(options.quote);
    out += this->GetName();
    out += static_cast<C>('=');
    out += quote;
    out += EscapeText(value);
    out += quote;
}

template <typename C> BaseString<C> XAttributeBase<C>::ToString() const {
    XWriteOptions options;
    options.indentWithTabs = false;
    String out;
    Write(out, options);
    return out;
}

template <typename C> bool XAttributeBase<C>::HasValue() const {
    return !value.IsEmpty();
}

template <typename C> BaseString<C> XAttributeBase<C>::GetValue() const {
    return value;
}

template <typename C> void XAttributeBase<C>::SetValue(const String& text) {
    value = UnescapeText(text);
}

template class XAttributeBase<char>;

} // namespace XLib
} // namespace KV
