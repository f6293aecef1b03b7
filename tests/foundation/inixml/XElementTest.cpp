#include "IniTestSupport.h"
#include "XEscaping.h"
#include "XmlTestSupport.h"

#include <functional>

namespace {

using KV::XLib::XWriteOptions;

// Written with the default options (CR LF, tab indents, double quotes), the only ones in use.
struct WriteCase {
    const char* label;
    std::function<void(XElement&)> build; // fills a root element named "E"
    std::string expected;
};

XElement* Child(XElement& parent, const char* name) {
    XElement* child = new XElement(X(name));
    parent.AddChild(child);
    return child;
}

TEST(XmlWrite, ElementLayout) {
    const WriteCase cases[] = {
        {"EmptyElement", [](XElement&) {}, "<E />\r\n"},
        {"AttributeSpecials", [](XElement& e) { e.SetAttribute(X("k"), X("a\"b'c<d>&")); },
         "<E k=\"a&quot;b&apos;c&lt;d&gt;&amp;\" />\r\n"},
        {"EscapedText", [](XElement& e) { e.SetText(X("1 < 2"), true); }, "<E>1 &lt; 2</E>\r\n"},
        {"CdataText", [](XElement& e) { e.SetText(X("1 < 2"), false); }, "<E><![CDATA[1 < 2]]></E>\r\n"},
        {"CdataEndMarkerNotSplit", [](XElement& e) { e.SetText(X("a]]>b"), false); },
         "<E><![CDATA[a]]>b]]></E>\r\n"},
        {"TextWinsOverChildren", [](XElement& e) { Child(e, "Hidden"); e.SetText(X("t"), true); },
         "<E>t</E>\r\n"},
        {"NestedIndentsOneTabPerLevel",
         [](XElement& e) {
             XElement* a = Child(e, "A");
             Child(*a, "B")->SetText(X("b"), true);
             Child(*a, "C");
             Child(e, "D");
         },
         "<E>\r\n\t<A>\r\n\t\t<B>b</B>\r\n\t\t<C />\r\n\t</A>\r\n\t<D />\r\n</E>\r\n"},
    };
    for (const WriteCase& c : cases) {
        XElement root(X("E"));
        c.build(root);
        XString out;
        root.Write(out, XWriteOptions());
        EXPECT_EQ(Std(out), c.expected) << c.label;
    }
}

struct EscapeCase { std::string raw; std::string escaped; };

TEST(XmlEscaping, FiveEntitiesOnly) {
    const EscapeCase cases[] = {
        {"", ""}, {"plain text 123", "plain text 123"}, {"&", "&amp;"}, {"<>\"'", "&lt;&gt;&quot;&apos;"},
        {"&lt;", "&amp;lt;"}, {"a&&b", "a&amp;&amp;b"}, {"\t\r\n\x01\xE9", "\t\r\n\x01\xE9"},
    };
    for (const EscapeCase& c : cases) {
        EXPECT_EQ(Std(KV::XLib::EscapeText(X(c.raw))), c.escaped) << c.raw;
        if (c.raw.find('&') == std::string::npos) {
            EXPECT_EQ(Std(KV::XLib::UnescapeText(X(c.escaped))), c.raw) << c.escaped;
        }
    }
}

TEST(XmlEscaping, UnescapeDecodesAmpersandFirst) {
    const EscapeCase cases[] = {
        // {stored, given}
        {"<", "&amp;lt;"},  {"\"'", "&amp;quot;&amp;apos;"},        {"&amp;", "&amp;amp;"},
        {"&", "&amp;"},     {"&unknown; &#60;", "&unknown; &#60;"}, {"&lt", "&lt"},
        {"<<", "&lt;&lt;"},
    };
    for (const EscapeCase& c : cases) {
        XElement e(X("E"));
        e.SetText(X(c.escaped), true);
        XAttribute attribute(X("a"));
        attribute.SetValue(X(c.escaped));
        EXPECT_EQ(Std(KV::XLib::UnescapeText(X(c.escaped))) + "|" + Std(e.GetRawText()) + "|" + Std(attribute.GetValue()),
                  c.raw + "|" + c.raw + "|" + c.raw) << c.escaped;
    }
}

TEST(XmlText, EscapedFlagDecidesStorageAndOutput) {
    XElement e(X("E"));
    EXPECT_TRUE(e.IsTextEscaped() && !e.HasText());
    e.SetText(X("a &amp; b"), true);
    EXPECT_EQ(Std(e.GetRawText()) + "|" + Std(e.GetText()), "a & b|a &amp; b");
    e.AppendText(X(" <c>"), false);
    EXPECT_FALSE(e.IsTextEscaped());
    EXPECT_EQ(Std(e.GetRawText()) + "|" + Std(e.GetText()), "a & b <c>|a & b <c>");
    e.AppendText(X("&gt;"), true);
    EXPECT_EQ(Std(e.GetRawText()) + "|" + Std(e.ToString()), "a & b <c>>|<E>a &amp; b &lt;c&gt;&gt;</E>\r\n");
}

TEST(XmlSave, LinesResplitWithCrLf) {
    TempFolder folder;
    const std::string file = folder.file("lines.xml");
    writeFile(file, std::string(4096, 'x')); // longer than what is saved: must be truncated

    XDocument doc(X("R"));
    XElement* text = new XElement(X("T"));
    text->SetText(X("one\ntwo\r\rthree\r\n"), false);
    doc.AddChild(text);
    ASSERT_TRUE(doc.SaveToFile(X(file)));
    EXPECT_EQ(readFile(file), "<?xml version=\"1.0\"?>\r\n<R>\r\n\t<T><![CDATA[one\r\ntwo\r\nthree\r\n]]></T>\r\n</R>\r\n");
}

TEST(XmlSave, FileErrorsGiveFalseDevicesAreWritten) {
    TempFolder folder;
    XDocument doc(X("R"));
    // A missing folder, a folder, no name, a full device; a device has nothing to cut.
    EXPECT_EQ(std::vector<bool>({doc.SaveToFile(X(folder.file("missing/folder/x.xml"))), doc.SaveToFile(X(folder.path())),
                                 doc.SaveToFile(XString()), doc.SaveToFile(X("/dev/full")), doc.SaveToFile(X("/dev/null"))}),
              std::vector<bool>({false, false, false, false, true}));
    EXPECT_TRUE(std::filesystem::is_directory(folder.path()));
}

} // namespace
