#include "AAMVATextExport.h"
#include "ExportTestSupport.h"
#include "RecordBuilder.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

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

// Versions and dates come out as the format table says; the golden files hold one of each kind
// (absent, impossible, real). Saving over files and failures: ExportFile in the XML tests.
TEST(TextExportTest, FullRecordMatchesItsGoldenFile) {
    // The raw bytes hold CR LF, LF, NUL (also last) and a byte above 0x7F: all written as they are.
    RecordBuilder b;
    b.Full();
    EXPECT_EQ(SavedText(b.get(), readFile(kData + "/full.raw")), readFile(kData + "/full.txt"));
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

} // namespace
