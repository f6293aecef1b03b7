#include "AAMVATextExport.h"
#include "ExportTestSupport.h"
#include "RecordBuilder.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace {

bool SaveText(const AAMVARecord& r, const std::string& raw, const std::string& path, std::string* error) {
    return AAMVATextExport::Save(r, reinterpret_cast<const uint8_t*>(raw.data()),
                                 static_cast<int32_t>(raw.size()), path, error);
}

std::string SavedText(const AAMVARecord& r, const std::string& raw = "") {
    TempFolder folder;
    const std::string path = folder.file("out.txt");
    return SaveText(r, raw, path, nullptr) ? readFile(path) : "<not saved>";
}

bool HasLine(const std::string& file, const std::string& line) {
    return file.find("\r\n" + line + "\r\n") != std::string::npos;
}

TEST(TextExportTest, FullRecordMatchesItsGoldenFile) {
    // The raw bytes hold CR LF, LF, NUL (also last) and a byte above 0x7F: all written as they are.
    RecordBuilder b;
    b.Full();
    EXPECT_EQ(SavedText(b.get(), readFile(kData + "/full.raw")), readFile(kData + "/full.txt"));
}

TEST(TextExportTest, RecordWithoutItemsEndsWithTheUnderline) {
    RecordBuilder blank;
    const std::string text = SavedText(blank.get());
    EXPECT_EQ(text, readFile(kData + "/blank.txt"));
    const std::string tail = "All Data Items\r\n==============\r\n";
    ASSERT_GE(text.size(), tail.size());
    EXPECT_EQ(text.substr(text.size() - tail.size()), tail);
}

TEST(TextExportTest, ValuesAreWrittenAsTheLibraryGaveThem) {
    struct {
        const char* field; // which field gets the value
        const char* value;
        std::string line;
    } const cases[] = {
        {"Surname", "SMITH & SONS <LTD>", "Surname\tSMITH & SONS <LTD>"},
        {"Surname", "O'BRIEN \"JR\"", "Surname\tO'BRIEN \"JR\""},
        {"Surname", "A&amp;B", "Surname\tA&amp;B"},
        {"IssuerName", "", "IssuerName\t"},
        {"Item", "X&Y", "ZVA\tX&Y\tX&Y"},
        {"ShortSex", "", std::string("ShortSex\t\0", 10)}, // the one character, a NUL included
    };
    for (const auto& c : cases) {
        RecordBuilder b;
        b.Full();
        const std::string field = c.field;
        if (field == "Surname")
            b.Text(b.record().Surname, c.value);
        else if (field == "IssuerName")
            b.Text(b.record().IssuerName, c.value);
        else if (field == "ShortSex")
            b.record().ShortSex = '\0';
        else
            b.Items({{"ZVA", c.value, c.value}});
        EXPECT_TRUE(HasLine(SavedText(b.get()), c.line)) << c.line;
    }
}

TEST(TextExportTest, VersionsAndDates) {
    struct {
        uint32_t version;
        uint32_t jurisdictionVersion;
        AAMVADate birth;
        std::vector<std::string> lines;
    } const cases[] = {
        {AAMVA_NOT_PRESENT,
         AAMVA_NOT_PRESENT,
         Date(AAMVA_NOT_PRESENT, 1, 1990),
         {"Version\t-1\tNot present", "JurisdictionVersion\t-1", "DateOfBirth\t"}},
        {9,
         3,
         Date(29, 2, 1999),
         {"Version\t9\tUnknown Standard", "JurisdictionVersion\t3", "DateOfBirth\tInvalid DateTime"}},
        {0, 0, Date(29, 2, 2000), {"Version\t0\tPre-2000 Standard", "DateOfBirth\t29 February 2000"}},
    };
    for (const auto& c : cases) {
        RecordBuilder b;
        b.Full();
        b.record().Version = c.version;
        b.record().JurisdictionVersion = c.jurisdictionVersion;
        b.record().DateOfBirth = c.birth;
        const std::string text = SavedText(b.get());
        for (const std::string& line : c.lines)
            EXPECT_TRUE(HasLine(text, line)) << line;
    }
}

TEST(TextExportTest, PhysicalDescriptionIsNotExported) {
    RecordBuilder b;
    b.Full();
    const std::string text = SavedText(b.get());
    for (const char* label : {"Height", "Weight", "EyeColour", "HairColour", "Not present"})
        EXPECT_EQ(text.find(label), std::string::npos) << label;
}

TEST(TextExportTest, SavingOverALongerFileLeavesNoTrace) {
    TempFolder folder;
    ASSERT_TRUE(folder.ok());
    RecordBuilder blank;
    const std::string path = folder.file("old.txt");
    writeFile(path, std::string(100000, 'Z'));
    ASSERT_TRUE(SaveText(blank.get(), "", path, nullptr));
    EXPECT_EQ(readFile(path), readFile(kData + "/blank.txt"));
}

TEST(TextExportTest, UnwritablePathsGiveTheMessageAndNoFile) {
    TempFolder folder;
    ASSERT_TRUE(folder.ok());
    RecordBuilder full;
    full.Full();
    for (const std::string& path : {folder.file("missing/data.txt"), folder.file(""), std::string()}) {
        std::string error;
        EXPECT_FALSE(SaveText(full.get(), "abc", path, &error)) << path;
        EXPECT_EQ(error, "Failed to save data as text to " + path);
    }
    EXPECT_FALSE(std::filesystem::exists(folder.file("missing")));
}

} // namespace
