#include "IniTestSupport.h"

#include <tuple>

namespace {

struct ParseCase {
    const char* label;
    std::string bytes;
    std::string model; // Dump() of the loaded file
};

std::string LoadAndDump(const TempFolder& folder, const std::string& bytes) {
    const std::string file = folder.file("in.ini");
    writeFile(file, bytes);
    KVIniFile ini;
    EXPECT_TRUE(ini.Load(file.c_str(), true));
    return Dump(ini);
}

void PrintTo(const ParseCase& c, std::ostream* os) { *os << c.label; }

class IniParse : public ::testing::TestWithParam<ParseCase> {};

TEST_P(IniParse, StoresWhatTheLinesSay) {
    TempFolder folder;
    EXPECT_EQ(LoadAndDump(folder, GetParam().bytes), GetParam().model);
}

const ParseCase parseCases[] = {
    {"Empty", "", ""}, {"OnlyBlankLines", "\r\n\r\n\n\r", ""}, {"Basic", "[S]\r\nk=v\r\n", "[S]\nk=v\n"},
    {"NoFinalLineBreak", "[S]\r\nk=v", "[S]\nk=v\n"},
    {"KeysBeforeFirstSectionDropped", "a=1\r\n[S]\r\nb=2\r\n", "[S]\nb=2\n"},
    {"HashAndSlashComments", "[S]\n#a=1\n//b=2\n  # c=3\nd=4\n", "[S]\nd=4\n"},
    {"SingleSlashIsNotAComment", "[S]\n/=x\n", "[S]\n/=x\n"},
    {"SemicolonIsNotAComment", "[S]\n; x\n; a=b\n", "[S]\n; a=b\n"},
    {"LinesWithoutEqualsIgnored", "[S]\nnoequals\n[\n]\nk=v\n", "[S]\nk=v\n"},
    {"FirstEqualsSplitsAndBothSidesTrimmed", "[S]\n  Key = a = b  \n", "[S]\nKey=a = b\n"},
    {"EmptyValue", "[S]\nk=\nj =   \n", "[S]\nk=\nj=\n"},
    {"EmptyKeyName", "[S]\n=v\n", "[S]\n=v\n"},
    {"SectionNameNotTrimmed", "[ A ]\nk=v\n", "[ A ]\nk=v\n"},
    {"SectionLineTrimmedAroundBrackets", "   [A]   \nk=v\n", "[A]\nk=v\n"},
    {"EmptySectionName", "[]\nk=v\n", "[]\nk=v\n"},
    {"BracketInsideSectionName", "[a]b]\n", "[a]b]\n"},
    {"UnclosedBracketIsAKey", "[S]\n[a=b\n", "[S]\n[a=b\n"},
    {"TabsAreNotTrimmed", "[S]\n\tk\t=\tv\t\n", "[S]\n\tk\t=\tv\t\n"},
    {"QuotesKept", "[S]\nk=\"a b\"\n", "[S]\nk=\"a b\"\n"},
    {"CaseDistinctSections", "[Camera]\n[camera]\n", "[Camera]\n[camera]\n"},
    {"DuplicatesKeptInOrder", "[S]\nk=1\nk=2\n[S]\nk=3\n", "[S]\nk=1\nk=2\n[S]\nk=3\n"},
    {"HighBytesKept", "[S]\nk=\xE9\xFF\n", "[S]\nk=\xE9\xFF\n"},
};

INSTANTIATE_TEST_SUITE_P(Lines, IniParse, ::testing::ValuesIn(parseCases),
                         [](const auto& info) { return std::string(info.param.label); });

// The same content with every kind of line ending must give the same model.
TEST(IniParse, LineEndingsDoNotMatter) {
    const std::string lines[] = {"[Camera]", "Exposure = 10", "# note", "[Light]", "Mode=IR", "Gain=3"};
    const std::string separators[] = {"\n", "\r", "\r\n", "\n\r", "\r\n\r\n", "\n\n\n"};
    TempFolder folder;
    std::string reference;
    for (const std::string& separator : separators) {
        std::string bytes;
        for (const std::string& line : lines)
            bytes += line + separator;
        const std::string model = LoadAndDump(folder, bytes);
        if (reference.empty())
            reference = model;
        EXPECT_EQ(model, reference) << "separator bytes: " << separator.size();
    }
    EXPECT_EQ(reference, "[Camera]\nExposure=10\n[Light]\nMode=IR\nGain=3\n");

    // Mixed endings within one file.
    EXPECT_EQ(LoadAndDump(folder, "[Camera]\rExposure = 10\n# note\r\n[Light]\n\rMode=IR\r\rGain=3"),
              reference);
}

} // namespace
