#include "AAMVAXmlExport.h"

#include "AAMVAFields.h"
#include "AAMVAFormat.h"
#include "XDocumentBase.h"

#include <algorithm>
#include <exception>

namespace {

using Element = KV::XLib::XElementBase<char>;
using String = Element::String;

String Str(const std::string& s) {
    return String(s.c_str(), static_cast<int>(s.size()));
}

Element* AddContainer(Element& parent, const char* name) {
    Element* child = new Element(String(name));
    parent.AddChild(child);
    return child;
}

// Text goes in unescaped and is written escaped, so an entity already in the data is not doubled.
// XML has no NUL character, so a NUL byte (a NUL ShortSex) is left out.
void AddLeaf(Element& parent, const std::string& name, std::string text) {
    text.erase(std::remove(text.begin(), text.end(), '\0'), text.end());
    Element* leaf = new Element(Str(name));
    leaf->SetText(Str(text), true);
    parent.AddChild(leaf);
}

} // namespace

std::unique_ptr<AAMVAXmlExport::Document> AAMVAXmlExport::BuildDocument(const AAMVARecord& r) {
    std::unique_ptr<Document> root(new Document(String("AAMVAData")));

    Element* header = AddContainer(*root, "Header");
    AddLeaf(*header, "FileType", AAMVA_FIELD(r.FileType));
    AddLeaf(*header, "IIN", AAMVA_FIELD(r.IIN));
    AddLeaf(*header, "IssuerName", AAMVA_FIELD(r.IssuerName));
    AddLeaf(*header, "Version", AAMVAFormat::Number(r.Version));
    AddLeaf(*header, "JurisdicationVersion", AAMVAFormat::Number(r.JurisdictionVersion));

    Element* parsed = AddContainer(*root, "Parsed");
    for (const AAMVARow& row : AAMVAFields::Identity(r)) {
        if (row.name == "AddressCountry" || row.name == "NameSuffix")
            continue;
        AddLeaf(*parsed, row.name, row.value);
    }

    Element* items = AddContainer(*root, "Items");
    for (const AAMVARow& row : AAMVAFields::DataItems(r)) {
        Element* item = AddContainer(*items, "Item");
        AddLeaf(*item, "ID", row.id);
        AddLeaf(*item, "Name", row.name);
        AddLeaf(*item, "Value", row.value);
    }
    return root;
}

bool AAMVAXmlExport::Save(const AAMVARecord& record, const std::string& path, std::string* error) {
    bool saved = false;
    try {
        saved = BuildDocument(record)->SaveToFile(Str(path));
    } catch (const std::exception&) {
        saved = false;
    }
    if (!saved && error != nullptr)
        *error = "Failed to save data as XML to " + path;
    return saved;
}
