#pragma once

#include "BaseString.h"
#include "XWriteOptions.h"

#include <string>

namespace KV {
namespace XLib {

// Node kinds returned by GetNodeType().
enum XNodeType { XNodeAttribute = 1, XNodeElement = 2, XNodeDocument = 3 };

// A named node of the XML tree. Names are "prefix:local" when a prefix is set.
// Nodes are never deleted through this type (elements own their children and attributes as their
// concrete types), so the destructor is protected and not virtual.
template <typename C> class XObjectBase {
public:
    using String = BaseString<C>;

    XObjectBase(const XObjectBase&) = delete;
    XObjectBase& operator=(const XObjectBase&) = delete;

    virtual int GetNodeType() const = 0;
    virtual String GetLocalName() const;
    virtual void SetLocalName(const String& name);
    virtual String GetPrefix() const;
    virtual void SetPrefix(const String& prefix);
    // "prefix:local" when the prefix is not empty, otherwise the local name.
    virtual String GetName() const;
    // Splits at the first ":" into prefix and local name; without one the prefix becomes empty.
    virtual void SetName(const String& name);
    virtual XObjectBase* GetParent() const;
    virtual void SetParent(XObjectBase* node);
    // A free link to another node for callers' own bookkeeping; the writer ignores it.
    virtual XObjectBase* GetLink() const;
    virtual void SetLink(XObjectBase* node);
    virtual bool IsRoot() const;
    // Appends the node's XML text to out.
    virtual void Write(String& out, const XWriteOptions& options) const = 0;
    virtual String ToString() const = 0;

protected:
    explicit XObjectBase(const String& name);
    ~XObjectBase() = default;

    // An ASCII literal in the node's character type.
    static String Literal(const char* ascii) {
        const std::basic_string<C> units(ascii, ascii + std::char_traits<char>::length(ascii));
        return String(units.c_str(), static_cast<int>(units.size()));
    }
    // CR LF, or nothing when the options turn line breaks off.
    static String LineEnd(const XWriteOptions& options) {
        return options.noLineBreaks ? String() : Literal("\r\n");
    }

private:
    String localName;
    String prefix;
    XObjectBase* link = nullptr;
    XObjectBase* parent = nullptr; // null for a root
};

} // namespace XLib
} // namespace KV
