#include "XElementBase.h"

#include "FileTruncate.h"
#include "XEscaping.h"

#include <fcntl.h>
#include <string>
#include <unistd.h>

namespace KV {
namespace XLib {

namespace {

bool IsLineBreak(char c) {
    return c == '\r' || c == '\n';
}

// A short write counts as a failure.
bool WriteAll(int fd, const std::string& data) {
    const ssize_t written = ::write(fd, data.data(), data.size());
    return written >= 0 && static_cast<size_t>(written) == data.size();
}

// Text is 8-bit on disk: each unit keeps its low byte.
template <typename C> std::string Narrow(const BaseString<C>& text) {
    std::string out;
    out.reserve(static_cast<size_t>(text.Length()));
    for (int i = 0; i < text.Length(); ++i)
        out += static_cast<char>(text[i]);
    return out;
}

} // namespace

template <typename C> XElementBase<C>::XElementBase(const String& name) : XObjectBase<C>(name) {}

template <typename C> XElementBase<C>::~XElementBase() {
    if (children) {
        children->DeleteAll();
        delete children;
    }
    if (attributes) {
        attributes->DeleteAll();
        delete attributes;
    }
}

template <typename C> int XElementBase<C>::GetNodeType() const {
    return XNodeElement;
}

template <typename C> void XElementBase<C>::Write(String& out, const XWriteOptions& options) const {
    WriteElement(out, this, options, 0);
}

template <typename C> BaseString<C> XElementBase<C>::ToString() const {
    String out;
    Write(out, XWriteOptions());
    return out;
}

template <typename C> bool XElementBase<C>::HasNoChildren() const {
    return ChildCount() == 0;
}

template <typename C> bool XElementBase<C>::IsTextEscaped() const {
    return textEscaped;
}

template <typename C> bool XElementBase<C>::HasText() const {
    return !text.IsEmpty();
}

template <typename C> BaseString<C> XElementBase<C>::GetRawText() const {
    return text;
}

template <typename C> BaseString<C> XElementBase<C>::GetText() const {
    return textEscaped ? EscapeText(text) : text;
}

template <typename C> void XElementBase<C>::SetText(const String& value, bool escaped) {
    textEscaped = escaped;
    text = escaped ? UnescapeText(value) : value;
}

template <typename C> void XElementBase<C>::AppendText(const String& value, bool escaped) {
    textEscaped = escaped;
    text += escaped ? UnescapeText(value) : value;
}

template <typename C>
void XElementBase<C>::WriteElement(String& out, const XElementBase* e, const XWriteOptions& options,
                                   int depth) const {
    const std::basic_string<C> tabs(options.indentWithTabs && depth > 0 ? depth : 0, static_cast<C>('\t'));
    const String indent(tabs.c_str(), static_cast<int>(tabs.size()));
    const String name = e->GetName();
    const String lineEnd = this->LineEnd(options);

    // Each line is put together first: every append to the whole document copies all of it.
    String line(indent);
    line += static_cast<C>('<');
    line += name;
    for (int i = 0; i < e->AttributeCount(); ++i) {
        line += static_cast<C>(' ');
        e->GetAttribute(i)->Write(line, options);
    }
    if (e->HasNoChildren() && !e->HasText()) {
        line += this->Literal(" />");
        line += lineEnd;
        out += line;
        return;
    }
    line += static_cast<C>('>');
    if (e->HasText()) {
        // A text element stays on one line, and its children are not written.
        if (e->IsTextEscaped()) {
            line += e->GetText();
        } else {
            line += this->Literal("<![CDATA[");
            line += e->GetRawText();
            line += this->Literal("]]>");
        }
    } else {
        line += lineEnd;
        out += line;
        line.Clear();
        for (int i = 0; i < e->ChildCount(); ++i)
            WriteElement(out, e->GetChild(i), options, depth + 1);
    }
    // The closing tag lines up with the opening one whenever the element has children, even when
    // its text was written in their place.
    if (!e->HasNoChildren())
        line += indent;
    line += this->Literal("</");
    line += name;
    line += static_cast<C>('>');
    line += lineEnd;
    out += line;
}

template <typename C> int XElementBase<C>::ChildCount() const {
    return children ? children->GetCount() : 0;
}

template <typename C> int XElementBase<C>::AttributeCount() const {
    return attributes ? attributes->GetCount() : 0;
}

template <typename C> void XElementBase<C>::AddAttribute(XAttributeBase<C>* attribute, int position) {
    if (!attributes)
        attributes = new PtrList<XAttributeBase<C>>();
    if (position < 0 || position >= attributes->GetCount())
        attributes->Add(attribute);
    else
        attributes->InsertAt(position, attribute);
    attribute->SetParent(this);
}

template <typename C> void XElementBase<C>::AddChild(XElementBase* element, int position) {
    if (!children)
        children = new PtrList<XElementBase>();
    if (position < 0 || position >= children->GetCount())
        children->Add(element);
    else
        children->InsertAt(position, element);
    element->SetParent(this);
}

template <typename C> XElementBase<C>* XElementBase<C>::GetChild(int index) const {
    return children ? children->GetAt(index) : nullptr;
}

template <typename C> XAttributeBase<C>* XElementBase<C>::GetAttribute(int index) const {
    return attributes ? attributes->GetAt(index) : nullptr;
}

template <typename C> XElementBase<C>* XElementBase<C>::FindChild(const String& name) const {
    for (int i = 0; i < ChildCount(); ++i)
        if (children->GetAt(i)->GetName() == name)
            return children->GetAt(i);
    return nullptr;
}

template <typename C> XAttributeBase<C>* XElementBase<C>::FindAttribute(const String& name) const {
    for (int i = 0; i < AttributeCount(); ++i)
        if (attributes->GetAt(i)->GetName() == name)
            return attributes->GetAt(i);
    return nullptr;
}

template <typename C> void XElementBase<C>::SetAttribute(const String& name, const String& value) {
    XAttributeBase<C>* attribute = FindAttribute(name);
    if (!attribute) {
        attribute = new XAttributeBase<C>(name);
        AddAttribute(attribute);
    }
    attribute->SetValue(value);
}

template <typename C>
void XElementBase<C>::SetChildText(const String& name, const String& value, bool escaped) {
    XElementBase* child = FindChild(name);
    if (!child) {
        child = new XElementBase(name);
        AddChild(child);
    }
    child->SetText(value, escaped);
}

template <typename C> bool XElementBase<C>::SaveToFile(const String& file) const {
    return SaveToFile(file, XWriteOptions());
}

template <typename C>
bool XElementBase<C>::SaveToFile(const String& file, const XWriteOptions& options) const {
    String document;
    Write(document, options);
    const std::string bytes = Narrow(document);
    const std::string path = Narrow(file);

    const int fd = ::open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0644);
    if (fd < 0)
        return false;
    bool ok = TruncateIfRegular(fd);
    // Every run of CR/LF ends a line; empty lines vanish and each kept line ends with CR LF.
    size_t start = 0;
    while (ok && start < bytes.size()) {
        while (start < bytes.size() && IsLineBreak(bytes[start]))
            ++start;
        size_t end = start;
        while (end < bytes.size() && !IsLineBreak(bytes[end]))
            ++end;
        if (end > start)
            ok = WriteAll(fd, bytes.substr(start, end - start) + "\r\n");
        start = end;
    }
    if (::close(fd) != 0)
        ok = false;
    return ok;
}

template class XElementBase<char>;

} // namespace XLib
} // namespace KV
