#include "AAMVAXmlExport.h"
#include "AAMVATextExport.h"
#include "ExportTestSupport.h"
#include "RecordBuilder.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace {

// The saved document; the XML parser's complaints, if any, in *problems.
std::string SavedXml(const AAMVARecord& r, std::string* problems) {
    TempFolder folder;
    const std::string path = folder.file("out.xml");
    if (!AAMVAXmlExport::Save(r, path, nullptr))
        return "<not saved>";
    *problems = XmlProblems(path);
    return readFile(path);
}

bool HasLine(const std::string& file, const std::string& line) {
    return file.find("\r\n" + line + "\r\n") != std::string::npos;
}

TEST(XmlExportTest, FullRecordMatchesItsGoldenFileAndIsWellFormed) {
    RecordBuilder b;
    b.Full();
    std::string problems;
    EXPECT_EQ(SavedXml(b.get(), &problems), readFile(kData + "/full.xml"));
    EXPECT_EQ(problems, "");
}

TEST(XmlExportTest, SpecialCharactersBecomeEntitiesOnce) {
    struct {
        const char* value;
        const char* written;
    } const cases[] = {
        {"SMITH & SONS", "SMITH &amp; SONS"},
        {"<B>", "&lt;B&gt;"},
        {"\"Q\"", "&quot;Q&quot;"},
        {"O'BRIEN", "O&apos;BRIEN"},
        {"A&amp;B", "A&amp;B"},     // already an entity: not doubled
        {"&lt;x&gt;", "&lt;x&gt;"}, // the same for the other entities
        {"&amp;lt;", "&lt;"},       // decoded twice on the way in, so it stands for '<'
        {"a & b < c > d \" e ' f", "a &amp; b &lt; c &gt; d &quot; e &apos; f"},
    };
    for (const auto& c : cases) {
        RecordBuilder b;
        b.Full();
        b.Text(b.record().Surname, c.value).Text(b.record().IssuerName, c.value);
        b.Items({{"DCS", c.value, c.value}});
        std::string problems;
        const std::string xml = SavedXml(b.get(), &problems);
        const std::string w = c.written;
        for (const std::string& line :
             {"\t\t<Surname>" + w + "</Surname>", "\t\t<IssuerName>" + w + "</IssuerName>",
              "\t\t\t<Name>" + w + "</Name>", "\t\t\t<Value>" + w + "</Value>"})
            EXPECT_TRUE(HasLine(xml, line)) << c.value << " -> expected " << line;
        EXPECT_EQ(xml.find("CDATA"), std::string::npos);
        EXPECT_EQ(problems, "") << c.value;
    }
}

// XML has no way to carry a NUL character: a NUL short sex is left empty.
TEST(XmlExportTest, NulShortSexIsLeftEmpty) {
    RecordBuilder b;
    b.Full();
    b.record().ShortSex = '\0';
    std::string problems;
    EXPECT_TRUE(HasLine(SavedXml(b.get(), &problems), "\t\t<ShortSex />"));
    EXPECT_EQ(problems, "");
}

// Both exports: a longer file is replaced whole (the blank record's golden file), and a path that
// cannot be written gives the message and leaves nothing behind.
TEST(ExportFile, SavingOverALongerFileAndUnwritablePaths) {
    using Save = bool (*)(const AAMVARecord&, const std::string&, std::string*);
    const struct {
        const char* kind;
        Save save;
        const char* golden;
    } exporters[] = {
        {"text",
         [](const AAMVARecord& r, const std::string& path, std::string* error) {
             return AAMVATextExport::Save(r, nullptr, 0, path, error);
         },
         "blank.txt"},
        {"XML",
         [](const AAMVARecord& r, const std::string& path, std::string* error) {
             return AAMVAXmlExport::Save(r, path, error);
         },
         "blank.xml"},
    };
    TempFolder folder;
    ASSERT_TRUE(folder.ok());
    RecordBuilder blank;
    for (const auto& e : exporters) {
        const std::string path = folder.file(std::string("old.") + e.kind);
        writeFile(path, std::string(100000, 'Z'));
        ASSERT_TRUE(e.save(blank.get(), path, nullptr)) << e.kind;
        EXPECT_EQ(readFile(path), readFile(kData + "/" + e.golden)) << e.kind;
        for (const std::string& bad : {folder.file("missing/data"), folder.file(""), std::string()}) {
            std::string error;
            EXPECT_FALSE(e.save(blank.get(), bad, &error)) << e.kind << " " << bad;
            EXPECT_EQ(error, std::string("Failed to save data as ") + e.kind + " to " + bad);
        }
    }
    EXPECT_FALSE(std::filesystem::exists(folder.file("missing")));
}

} // namespace
