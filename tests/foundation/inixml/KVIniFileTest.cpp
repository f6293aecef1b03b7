#include "IniTestSupport.h"

#include <climits>
#include <tuple>

namespace {

// The integer read of a stored value is lenient: leading digits count, anything else reads 0.
TEST(IniTypedValues, ConvertStoredText) {
    const std::pair<const char*, int> cases[] = {{"12", 12}, {"-5", -5}, {"7x", 7}, {"abc", 0}, {"", 0}, {"  42", 42},
                                                 {"true", 0}, {"99999999999", INT_MAX}, {"-99999999999", INT_MIN}};
    for (const auto& [value, asInt] : cases)
        EXPECT_EQ(KVIniKey("k", value).GetValueInt(), asInt) << '"' << value << '"';
    KVIniKey key("k", nullptr);
    const std::string empty = key.GetValue().str();
    key.SetValue(-5);
    EXPECT_EQ(empty + "|" + key.GetValue().str(), "|-5");
}

TEST(IniLookup, GettersNeverCreateSettersCreateOnce) {
    KVIniFile ini;
    EXPECT_EQ(std::make_pair(std::string(ini.GetString("S", "K", "def").str()), ini.GetInt("S", "K", 9)), std::make_pair(std::string("def"), 9));
    EXPECT_EQ(ini.GetSections(), nullptr);
    ini.SetString("S", "A", "1");
    ini.SetInt("S", "B", 42);
    ini.SetInt("T", "C", 1);
    ini.SetString("S", "A", "2");
    EXPECT_EQ(std::make_tuple(ini.GetInt("S", "B", 0), ini.GetInt("T", "K", 3)), std::make_tuple(42, 3));
    EXPECT_EQ(Dump(ini), "[S]\nA=2\nB=42\n[T]\nC=1\n");
    ini.Clear();
    ASSERT_NE(ini.GetSections(), nullptr) << "clearing keeps the list";
    EXPECT_EQ(ini.GetSections()->GetCount(), 0);
}

TEST(IniLookup, NamesMatchExactlyAndTheFirstWinsAndGoesFirst) {
    KVIniFile ini;
    KVIniSection* first = new KVIniSection("Camera");
    for (const char* value : {"1", "2"})
        first->AddKey(new KVIniKey("Gain", value));
    ini.AddSection(first);
    ini.AddSection(new KVIniSection("B"));
    ini.AddSection(new KVIniSection("Camera"));
    ini.FindSection("Camera", false)->AddKey(new KVIniKey("j", "3"));
    EXPECT_EQ(std::make_tuple(ini.FindSection("camera", false), ini.FindSection(" Camera", false), ini.GetInt("Camera", "gain", 0)),
              std::make_tuple(nullptr, nullptr, 0));
    EXPECT_EQ(ini.GetInt("Camera", "Gain", 0), 1);
    KVIniSection* created = ini.FindSection("camera", true);
    EXPECT_EQ(std::make_pair(ini.GetSections()->GetCount(), ini.GetSections()->GetAt(3)), std::make_pair(4, created));
}

} // namespace
