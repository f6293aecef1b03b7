#pragma once

#include "PtrList.h"
#include "XAttributeBase.h"
#include "XObjectBase.h"

namespace KV {
namespace XLib {

// An element with attributes, child elements and text. It owns its children and attributes and
// deletes them with itself. Text is held unescaped; the escaped flag chooses how it is written:
// escaped (true, the default) or as a CDATA section (false). An element that has text is written
// with its text only: its children are then not written.
template <typename C> class XElementBase : public XObjectBase<C> {
public:
    using String = BaseString<C>;

    explicit XElementBase(const String& name);

    int GetNodeType() const override;
    void Write(String& out, const XWriteOptions& options) const override;
    String ToString() const override;
    virtual ~XElementBase();

    virtual bool HasNoChildren() const;
    virtual bool IsTextEscaped() const;
    virtual bool HasText() const;
    // The stored (unescaped) text.
    virtual String GetRawText() const;
    // The text as written between the tags: escaped when the flag is set, raw otherwise.
    virtual String GetText() const;
    // escaped true: the text is unescaped before it is stored. false: stored as given, written as CDATA.
    virtual void SetText(const String& text, bool escaped);
    virtual void AppendText(const String& text, bool escaped);
    // Appends the XML of e at the given depth (TABs before its lines when indenting).
    virtual void WriteElement(String& out, const XElementBase* e, const XWriteOptions& options,
                              int depth) const;
    virtual int ChildCount() const;
    virtual int AttributeCount() const;
    // Inserts at position (appends when position is negative or past the end), sets the parent,
    // and takes ownership.
    virtual void AddAttribute(XAttributeBase<C>* attribute, int position = -1);
    virtual void AddChild(XElementBase* element, int position = -1);
    // The first attribute of that name gets the value (unescaped on the way in); one is added
    // when there is none.
    virtual void SetAttribute(const String& name, const String& value);
    // The first child element of that name gets SetText(text, escaped); one is added when none.
    virtual void SetChildText(const String& name, const String& text, bool escaped);
    // Writes the node to file with CR LF after every non-empty line. False when the file cannot be
    // opened or written; never throws.
    virtual bool SaveToFile(const String& file, const XWriteOptions& options) const;
    virtual bool SaveToFile(const String& file) const;

    // Children and attributes in document order (null until the first is added).
    XElementBase* GetChild(int index) const;
    XAttributeBase<C>* GetAttribute(int index) const;
    XElementBase* FindChild(const String& name) const;
    XAttributeBase<C>* FindAttribute(const String& name) const;

private:
    String text;
    bool textEscaped = true;
    PtrList<XElementBase>* children = nullptr;        // owned
    PtrList<XAttributeBase<C>>* attributes = nullptr; // owned
};

} // namespace XLib
} // namespace KV
