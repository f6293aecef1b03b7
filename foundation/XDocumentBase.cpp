#include "XDocumentBase.h"

namespace KV {
namespace XLib {

template <typename C> XDocumentBase<C>::XDocumentBase(const String& rootName) : XElementBase<C>(rootName) {}

template <typename C> int XDocumentBase<C>::GetNodeType() const {
    return XNodeDocument;
}

template <typename C> void XDocumentBase<C>::Write(String& out, const XWriteOptions& options) const {
    const C quote = static_cast<C>(options.quote);
    const String lineBreak = this->LineEnd(options);
    out += this->Literal("<?xml version=");
    out += quote;
    out += this->Literal("1.0");
    out += quote;
    out += this->Literal("?>");
    out += lineBreak;
    if (!docType.IsEmpty()) {
        out += this->Literal("<!");
        out += docType;
        out += static_cast<C>('>');
        out += lineBreak;
    }
    this->WriteElement(out, this, options, 0);
}

template <typename C> void XDocumentBase<C>::SetDocType(const String& text) {
    docType = text;
}

template class XDocumentBase<char>;

} // namespace XLib
} // namespace KV
