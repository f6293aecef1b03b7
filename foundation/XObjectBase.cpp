#include "XObjectBase.h"

namespace KV {
namespace XLib {

template <typename C> XObjectBase<C>::XObjectBase(const String& name) {
    SetName(name);
}

template <typename C> BaseString<C> XObjectBase<C>::GetLocalName() const {
    return localName;
}

template <typename C> void XObjectBase<C>::SetLocalName(const String& name) {
    localName = name;
}

template <typename C> BaseString<C> XObjectBase<C>::GetPrefix() const {
    return prefix;
}

template <typename C> void XObjectBase<C>::SetPrefix(const String& value) {
    prefix = value;
}

template <typename C> BaseString<C> XObjectBase<C>::GetName() const {
    if (prefix.IsEmpty())
        return localName;
    String name(prefix);
    name += static_cast<C>(':');
    name += localName;
    return name;
}

template <typename C> void XObjectBase<C>::SetName(const String& name) {
    const int colon = name.Find(static_cast<C>(':'));
    if (colon < 0) {
        prefix = String();
        localName = name;
    } else {
        prefix = name.SubString(0, colon);
        localName = name.SubString(colon + 1);
    }
}

template <typename C> XObjectBase<C>* XObjectBase<C>::GetParent() const {
    return parent;
}

template <typename C> void XObjectBase<C>::SetParent(XObjectBase* node) {
    parent = node;
}

template <typename C> XObjectBase<C>* XObjectBase<C>::GetLink() const {
    return link;
}

template <typename C> void XObjectBase<C>::SetLink(XObjectBase* node) {
    link = node;
}

template <typename C> bool XObjectBase<C>::IsRoot() const {
    return parent == nullptr;
}

template class XObjectBase<char>;

} // namespace XLib
} // namespace KV
