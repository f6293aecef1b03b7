// Both exports: the golden files byte for byte, values as the library gave them (escaped once in
// XML), saving over a longer file, and paths that cannot be written.
#include "AAMVATextExport.h"
#include "AAMVAXmlExport.h"
#include "ExportTestSupport.h"
#include "RecordBuilder.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace {

using Save = bool (*)(const AAMVARecord&, const std::string&, std::string*);

bool SaveText(const AAMVARecord& r, const std::string& path, std::string* error) {
    return AAMVATextExport::Save(r, nullptr, 0, path, error);
}

// The saved file ("<not saved>" when saving failed); XML must also satisfy the XML parser.
std::string Saved(const AAMVARecord& r, Save save) {
    TempFolder folder;
    const std::string path = folder.file("out");
    if (!save(r, path, nullptr))
        return "<not saved>";
    if (save == AAMVAXmlExport::Save) {
        EXPECT_EQ(XmlProblems(path), "");
    }
    return readFile(path);
}

// The raw bytes hold CR LF, LF, NUL (also last) and a byte above 0x7F: all written as they are.
// A NUL ShortSex is written in text; XML has no way to carry a NUL: left empty.
TEST(ExportTest, FullRecordMatchesItsGoldenFiles) {
    RecordBuilder b;
    b.Full();
    TempFolder folder;
    const std::string raw = readFile(kData + "/full.raw");
    ASSERT_TRUE(AAMVATextExport::Save(b.get(), reinterpret_cast<const uint8_t*>(raw.data()),
                                      static_cast<int32_t>(raw.size()), folder.file("full.txt"), nullptr));
    EXPECT_EQ(readFile(folder.file("full.txt")), readFile(kData + "/full.txt"));
    EXPECT_EQ(Saved(b.get(), AAMVAXmlExport::Save), readFile(kData + "/full.xml"));
    b.record().ShortSex = '\0';
    EXPECT_TRUE(HasLine(Saved(b.get(), SaveText), std::string("ShortSex\t\0", 10)));
    EXPECT_TRUE(HasLine(Saved(b.get(), AAMVAXmlExport::Save), "\t\t<ShortSex />"));
}

// Text keeps every value as it is; XML writes the five specials as entities, once.
TEST(ExportTest, SpecialCharactersBecomeEntitiesOnce) {
    struct {
        const char* value;
        const char* written;
    } const cases[] = {
        {"SMITH & SONS", "SMITH &amp; SONS"},
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
        const std::string text = Saved(b.get(), SaveText), xml = Saved(b.get(), AAMVAXmlExport::Save);
        const std::string v = c.value, w = c.written;
        for (const std::string& line : {"Surname\t" + v, "IssuerName\t" + v, "DCS\t" + v + "\t" + v})
            EXPECT_TRUE(HasLine(text, line)) << line;
        for (const std::string& line :
             {"\t\t<Surname>" + w + "</Surname>", "\t\t<IssuerName>" + w + "</IssuerName>",
              "\t\t\t<Name>" + w + "</Name>", "\t\t\t<Value>" + w + "</Value>"})
            EXPECT_TRUE(HasLine(xml, line)) << c.value << " -> expected " << line;
        EXPECT_EQ(xml.find("CDATA"), std::string::npos);
    }
}

// A longer file is replaced whole (the blank record's golden file), and a path that cannot be
// written gives the message and leaves nothing behind.
TEST(ExportTest, SavingOverALongerFileAndUnwritablePaths) {
    const struct {
        const char* kind;
        Save save;
        const char* golden;
    } exporters[] = {{"text", SaveText, "blank.txt"}, {"XML", AAMVAXmlExport::Save, "blank.xml"}};
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
