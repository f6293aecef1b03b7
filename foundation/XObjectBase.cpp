#include "XObjectBase.h"

#include "XStringOps.h"

namespace KV {
namespace XLib {

template <typename C> XObjectBase<C>::XObjectBase(const String& name) { SetName(name); }

template <typename C> BaseString<C> XObjectBase<C>::GetLocalName() const { return localName; }

template <typename C> void XObjectBase<C>::SetLocalName(const String& name) { localName = name; }

template <typename C> BaseString<C> XObjectBase<C>::GetPrefix() const { return prefix; }

template <typename C> void XObjectBase<C>::SetPrefix(const String& value) { prefix = value; }

template <typename C> BaseString<C> XObjectBase<C>::GetName() const {
    if (prefix.GetLength() == 0)
        return localName;
    return detail::FromStd(detail::ToStd(prefix) + static_cast<C>(':') + detail::ToStd(localName));
}

template <typename C> void XObjectBase<C>::SetName(const String& name) {
    const std::basic_string<C> text = detail::ToStd(name);
    const size_t colon = text.find(static_cast<C>(':'));
    if (colon == std::basic_string<C>::npos) {
        prefix = String();
        localName = name;
    } else {
        prefix = detail::FromStd(text.substr(0, colon));
        localName = detail::FromStd(text.substr(colon + 1));
    }
}

template <typename C> XObjectBase<C>* XObjectBase<C>::GetParent() const { return parent; }

template <typename C> void XObjectBase<C>::SetParent(XObjectBase* node) { parent = node; }

template <typename C> XObjectBase<C>* XObjectBase<C>::GetLink() const { return link; }

template <typename C> void XObjectBase<C>::SetLink(XObjectBase* node) { link = node; }

template <typename C> bool XObjectBase<C>::IsRoot() const { return parent == nullptr; }

template class XObjectBase<char>;

} // namespace XLib
} // namespace KV
