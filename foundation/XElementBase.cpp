#include "XElementBase.h"

#include "XEscaping.h"
#include "XStringOps.h"

#include <fcntl.h>
#include <unistd.h>

namespace KV {
namespace XLib {

namespace {

template <typename C> std::basic_string<C> LineBreak(const XWriteOptions& options) {
    return options.noLineBreaks ? std::basic_string<C>() : detail::Lit<C>("\r\n");
}

bool IsLineBreak(char c) { return c == '\r' || c == '\n'; }

// Writes all of data or reports failure; a short write counts as failure.
bool WriteAll(int fd, const std::string& data) {
    const ssize_t written = ::write(fd, data.data(), data.size());
    return written >= 0 && static_cast<size_t>(written) == data.size();
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

template <typename C> int XElementBase<C>::GetNodeType() const { return XNodeElement; }

template <typename C> void XElementBase<C>::Write(String& out, const XWriteOptions& options) const {
    WriteElement(out, this, options, 0);
}

template <typename C> BaseString<C> XElementBase<C>::ToString() const {
    String out;
    Write(out, XWriteOptions());
    return out;
}

template <typename C> bool XElementBase<C>::HasNoChildren() const { return ChildCount() == 0; }

template <typename C> bool XElementBase<C>::IsTextEscaped() const { return textEscaped; }

template <typename C> bool XElementBase<C>::HasText() const { return text.GetLength() != 0; }

template <typename C> BaseString<C> XElementBase<C>::GetRawText() const { return text; }

template <typename C> BaseString<C> XElementBase<C>::GetText() const {
    return textEscaped ? EscapeText(text) : text;
}

template <typename C> void XElementBase<C>::SetText(const String& value, bool escaped) {
    textEscaped = escaped;
    text = escaped ? UnescapeText(value) : value;
}

template <typename C> void XElementBase<C>::AppendText(const String& value, bool escaped) {
    textEscaped = escaped;
    detail::Append(text, detail::ToStd(escaped ? UnescapeText(value) : value));
}

template <typename C>
void XElementBase<C>::WriteElement(String& out, const XElementBase* e, const XWriteOptions& options,
                                   int depth) const {
    const std::basic_string<C> indent(options.indentWithTabs && depth >= 1 ? depth : 0, static_cast<C>('\t'));
    const std::basic_string<C> name = detail::ToStd(e->GetName());
    std::basic_string<C> piece = indent + static_cast<C>('<') + name;
    for (int i = 0; i < e->AttributeCount(); ++i) {
        String attribute;
        e->GetAttribute(i)->Write(attribute, options);
        piece += static_cast<C>(' ');
        piece += detail::ToStd(attribute);
    }
    if (e->HasNoChildren() && !e->HasText()) {
        piece += detail::Lit<C>(" />") + LineBreak<C>(options);
        detail::Append(out, piece);
        return;
    }
    piece += static_cast<C>('>');
    if (e->HasText()) {
        // A text element stays on one line, and its children are not written.
        if (e->IsTextEscaped())
            piece += detail::ToStd(e->GetText());
        else
            piece += detail::Lit<C>("<![CDATA[") + detail::ToStd(e->GetRawText()) + detail::Lit<C>("]]>");
        detail::Append(out, piece);
    } else {
        detail::Append(out, piece + LineBreak<C>(options));
        for (int i = 0; i < e->ChildCount(); ++i)
            WriteElement(out, e->GetChild(i), options, depth + 1);
    }
    // The closing tag lines up with the opening one whenever the element has children, even when
    // its text was written in their place.
    std::basic_string<C> closing = e->HasNoChildren() ? std::basic_string<C>() : indent;
    closing += detail::Lit<C>("</") + name + static_cast<C>('>') + LineBreak<C>(options);
    detail::Append(out, closing);
}

template <typename C> int XElementBase<C>::ChildCount() const { return children ? children->GetCount() : 0; }

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
    return index >= 0 && index < ChildCount() ? children->GetAt(index) : nullptr;
}

template <typename C> XAttributeBase<C>* XElementBase<C>::GetAttribute(int index) const {
    return index >= 0 && index < AttributeCount() ? attributes->GetAt(index) : nullptr;
}

template <typename C> XElementBase<C>* XElementBase<C>::FindChild(const String& name) const {
    for (int i = 0; i < ChildCount(); ++i)
        if (detail::Equals(children->GetAt(i)->GetName(), name))
            return children->GetAt(i);
    return nullptr;
}

template <typename C> XAttributeBase<C>* XElementBase<C>::FindAttribute(const String& name) const {
    for (int i = 0; i < AttributeCount(); ++i)
        if (detail::Equals(attributes->GetAt(i)->GetName(), name))
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

template <typename C> bool XElementBase<C>::SaveToFile(const String& file, const XWriteOptions& options) const {
    String document;
    Write(document, options);
    const std::basic_string<C> wide = detail::ToStd(document);
    const std::basic_string<C> path = detail::ToStd(file);
    // Text is 8-bit on disk: keep the low byte of each unit, as for file names.
    std::string bytes(wide.begin(), wide.end());
    std::string name(path.begin(), path.end());

    const int fd = ::open(name.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0644);
    if (fd < 0)
        return false;
    bool ok = ::lseek(fd, 0, SEEK_SET) == 0 && ::ftruncate(fd, 0) == 0;
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
