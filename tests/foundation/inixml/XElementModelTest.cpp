#include "IniTestSupport.h"
#include "XmlTestSupport.h"

#include <cstdio>
#include <memory>
#include <tuple>

namespace {

using KV::XLib::XWriteOptions;

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
    XWriteOptions oneLine;
    oneLine.noLineBreaks = true;
    oneLine.indentWithTabs = false;
    text->SetText(X("x"), true);
    ASSERT_TRUE(doc.SaveToFile(X(file), oneLine));
    EXPECT_EQ(readFile(file), "<?xml version=\"1.0\"?><R><T>x</T></R>\r\n");
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

// Runs xmllint and returns its standard output; exit status in *status.
std::string RunXmllint(const std::string& arguments, int* status) {
    std::string out;
    FILE* pipe = ::popen(("xmllint " + arguments + " 2>&1").c_str(), "r");
    *status = -1;
    if (!pipe)
        return out;
    char chunk[4096];
    size_t n;
    while ((n = std::fread(chunk, 1, sizeof chunk, pipe)) > 0)
        out.append(chunk, n);
    *status = ::pclose(pipe);
    return out;
}

std::string XPathString(const std::string& file, const std::string& path) {
    int status = 0;
    std::string out = RunXmllint("--xpath 'string(" + path + ")' '" + file + "'", &status);
    EXPECT_EQ(status, 0) << out;
    if (!out.empty() && out.back() == '\n')
        out.pop_back(); // xmllint ends the string with a newline of its own
    return out;
}

// A real parser must read back exactly the text that went in, with either quote character.
TEST(XmlSave, ParsesBackWithARealParser) {
    const std::string specials = "a&b <c> \"d\" 'e' ]]> x;y & end";
    const std::string code = "if (a < b && c > d) { s = \"q'\"; }";
    XDocument doc(X("Root"));
    doc.SetAttribute(X("attr"), X(specials));
    doc.SetChildText(X("Escaped"), X(specials), true);
    doc.SetChildText(X("Cdata"), X(code), false);
    XElement* holder = new XElement(X("p:Holder"));
    holder->AddAttribute(new XAttribute(X("xmlns:p"), X("urn:glyphor:test")));
    holder->SetAttribute(X("v"), X("<\"'>&"));
    holder->SetChildText(X("p:Inner"), X("&amp;lt;"), true); // decoded twice on the way in: "<"
    doc.AddChild(holder);

    TempFolder folder;
    const std::string file = folder.file("specials.xml");
    for (char32_t quote : {U'"', U'\''}) {
        SCOPED_TRACE(static_cast<char>(quote));
        XWriteOptions options;
        options.quote = quote;
        ASSERT_TRUE(doc.SaveToFile(X(file), options));

        int status = 0;
        const std::string check = RunXmllint("--noout '" + file + "'", &status);
        ASSERT_EQ(status, 0) << check << "\n" << readFile(file);

        EXPECT_EQ(XPathString(file, "/Root/@attr"), specials);
        EXPECT_EQ(XPathString(file, "/Root/Escaped"), specials);
        EXPECT_EQ(XPathString(file, "/Root/Cdata"), code);
        EXPECT_EQ(XPathString(file, "/Root/*[local-name()=\"Holder\"]/@v"), "<\"'>&");
        EXPECT_EQ(XPathString(file, "/Root/*[local-name()=\"Holder\"]/*[local-name()=\"Inner\"]"), "<");
    }
}

} // namespace
