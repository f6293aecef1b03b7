// Writes a parsed record as an XML document: Header, Parsed and Items under the root AAMVAData.
#ifndef GLYPHOR_AAMVA_XML_EXPORT_H
#define GLYPHOR_AAMVA_XML_EXPORT_H

#include "ZyrReaderLowLevelAPI.h"

#include <memory>
#include <string>

namespace KV {
namespace XLib {
template <typename C> class XDocumentBase;
}
} // namespace KV

class AAMVAXmlExport {
public:
    using Document = KV::XLib::XDocumentBase<char>;

    // The document tree. The element set is part of the format: the header's jurisdiction version
    // is spelled "JurisdicationVersion", and there is no country, suffix, raw data or description.
    static std::unique_ptr<Document> BuildDocument(const AAMVARecord& record);

    // Writes the file, replacing any earlier one. On failure returns false and sets *error to
    // "Failed to save data as XML to " + path.
    static bool Save(const AAMVARecord& record, const std::string& path, std::string* error);
};

#endif
