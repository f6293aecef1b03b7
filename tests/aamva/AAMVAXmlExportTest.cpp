#include "AAMVAXmlExport.h"
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

TEST(XmlExportTest, GoldenFilesAndWellFormed) {
    struct {
        const char* golden;
        bool full;
    } const cases[] = {{"full.xml", true}, {"blank.xml", false}};
    for (const auto& c : cases) {
        RecordBuilder b;
        if (c.full)
            b.Full();
        std::string problems;
        EXPECT_EQ(SavedXml(b.get(), &problems), readFile(kData + "/" + c.golden)) << c.golden;
        EXPECT_EQ(problems, "") << c.golden;
    }
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

TEST(XmlExportTest, VersionsAndDates) {
    struct {
        uint32_t version;
        AAMVADate birth, expiry;
        std::vector<std::string> lines;
    } const cases[] = {
        {AAMVA_NOT_PRESENT,
         Date(AAMVA_NOT_PRESENT, 1, 1990),
         Date(1, 1, AAMVA_NOT_PRESENT),
         {"\t\t<Version>-1</Version>", "\t\t<DateOfBirth />", "\t\t<ExpiryDate />"}},
        {9,
         Date(29, 2, 1999),
         Date(0, 12, 2030),
         {"\t\t<Version>9</Version>", "\t\t<DateOfBirth>Invalid DateTime</DateOfBirth>",
          "\t\t<ExpiryDate>Invalid DateTime</ExpiryDate>"}},
        {1,
         Date(29, 2, 2000),
         Date(31, 12, 2030),
         {"\t\t<Version>1</Version>", "\t\t<DateOfBirth>29 February 2000</DateOfBirth>",
          "\t\t<ExpiryDate>31 December 2030</ExpiryDate>"}},
    };
    for (const auto& c : cases) {
        RecordBuilder b;
        b.Full();
        b.record().Version = c.version;
        b.record().DateOfBirth = c.birth;
        b.record().ExpiryDate = c.expiry;
        std::string problems;
        const std::string xml = SavedXml(b.get(), &problems);
        for (const std::string& line : c.lines)
            EXPECT_TRUE(HasLine(xml, line)) << line;
        EXPECT_EQ(problems, "");
    }
}

TEST(XmlExportTest, LeavesOutWhatTheFormatDoesNotCarry) {
    RecordBuilder b;
    b.Full();
    std::string problems;
    const std::string xml = SavedXml(b.get(), &problems);
    for (const char* absent : {"AddressCountry", "NameSuffix", "USA", "JR", "Height", "Weight", "Colour",
                               "AAMVA 2013 Standard", "JurisdictionVersion", "ANSI 6360"})
        EXPECT_EQ(xml.find(absent), std::string::npos) << absent;
    EXPECT_TRUE(HasLine(xml, "\t\t<JurisdicationVersion>0</JurisdicationVersion>"));

    b.record().ShortSex = '\0'; // XML has no way to carry a NUL character
    const std::string noSex = SavedXml(b.get(), &problems);
    EXPECT_TRUE(HasLine(noSex, "\t\t<ShortSex />"));
    EXPECT_EQ(problems, "");
}

TEST(XmlExportTest, SavingOverALongerFileLeavesNoTrace) {
    TempFolder folder;
    ASSERT_TRUE(folder.ok());
    RecordBuilder blank;
    const std::string path = folder.file("old.xml");
    writeFile(path, std::string(100000, 'Z'));
    ASSERT_TRUE(AAMVAXmlExport::Save(blank.get(), path, nullptr));
    EXPECT_EQ(readFile(path), readFile(kData + "/blank.xml"));
}

TEST(XmlExportTest, UnwritablePathsGiveTheMessageAndNoFile) {
    TempFolder folder;
    ASSERT_TRUE(folder.ok());
    RecordBuilder full;
    full.Full();
    for (const std::string& path : {folder.file("missing/data.xml"), folder.file(""), std::string()}) {
        std::string error;
        EXPECT_FALSE(AAMVAXmlExport::Save(full.get(), path, &error)) << path;
        EXPECT_EQ(error, "Failed to save data as XML to " + path);
    }
    EXPECT_FALSE(std::filesystem::exists(folder.file("missing")));
}

} // namespace
