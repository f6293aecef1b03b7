#include "XDocumentBase.h"

#include "XStringOps.h"

namespace KV {
namespace XLib {

template <typename C> XDocumentBase<C>::XDocumentBase(const String& rootName) : XElementBase<C>(rootName) {}

template <typename C> int XDocumentBase<C>::GetNodeType() const { return XNodeDocument; }

template <typename C> void XDocumentBase<C>::Write(String& out, const XWriteOptions& options) const {
    const C quote = static_cast<C>(options.quote);
    const std::basic_string<C> lineBreak = options.noLineBreaks ? std::basic_string<C>() : detail::Lit<C>("\r\n");
    std::basic_string<C> head = detail::Lit<C>("<?xml version=") + quote + detail::Lit<C>("1.0") + quote +
                                detail::Lit<C>("?>") + lineBreak;
    if (docType.GetLength() != 0)
        head += detail::Lit<C>("<!") + detail::ToStd(docType) + static_cast<C>('>') + lineBreak;
    detail::Append(out, head);
    this->WriteElement(out, this, options, 0);
}

template <typename C> void XDocumentBase<C>::SetDocType(const String& text) { docType = text; }

template class XDocumentBase<char>;

} // namespace XLib
} // namespace KV
