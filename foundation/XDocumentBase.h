#pragma once

#include "XElementBase.h"

namespace KV {
namespace XLib {

// The document node, which is also the root element: its name is the root tag. Written as the
// declaration <?xml version="1.0"?>, an optional "<!doctype>" line, then the root element.
template <typename C> class XDocumentBase : public XElementBase<C> {
public:
    using String = BaseString<C>;

    explicit XDocumentBase(const String& rootName);

    int GetNodeType() const override;
    void Write(String& out, const XWriteOptions& options) const override;
    // The text between "<!" and ">"; no line is written while it is empty.
    virtual void SetDocType(const String& text);
    String GetDocType() const { return docType; }

private:
    String docType;
};

} // namespace XLib
} // namespace KV
