#include "IniTestSupport.h"

#include <climits>
#include <tuple>

namespace {

struct TypedCase { const char* value; int asInt; bool asBool; };

// Typed reads of a stored value: the integer read is lenient, the boolean one strict.
TEST(IniTypedValues, ConvertStoredText) {
    const TypedCase cases[] = {
        {"12", 12, false}, {"-5", -5, false}, {"7x", 7, false}, {"12abc", 12, false}, {"abc", 0, false},
        {"", 0, false}, {"  42", 42, false}, {"1", 1, false}, {"true", 0, true}, {"TRUE", 0, true},
        {"True", 0, true}, {"tRuE", 0, true}, {"yes", 0, false}, {"true ", 0, false}, {"truex", 0, false},
        {"99999999999", INT_MAX, false}, {"-99999999999", INT_MIN, false},
    };
    for (const TypedCase& c : cases) {
        KVIniKey key("k", c.value);
        EXPECT_EQ(key.GetValueInt(), c.asInt) << '"' << c.value << '"';
        EXPECT_EQ(key.GetValueBool(), c.asBool) << '"' << c.value << '"';
    }
}

TEST(IniTypedValues, SettersStoreText) {
    KVIniKey key("k", nullptr);
    std::string stored = key.GetValue().str();
    key.SetValue(-5);
    stored += std::string("|") + key.GetValue().str();
    key.SetValue(true);
    stored += std::string("|") + key.GetValue().str();
    key.SetValue(false);
    stored += std::string("|") + key.GetValue().str();
    EXPECT_EQ(stored, "|-5|true|false");
}

TEST(IniLookup, GettersNeverCreateSettersCreateOnce) {
    KVIniFile ini;
    EXPECT_EQ(std::make_tuple(std::string(ini.GetString("S", "K", "def").str()), ini.GetInt("S", "K", 9), ini.GetBool("S", "K", true)),
              std::make_tuple(std::string("def"), 9, true));
    EXPECT_EQ(ini.GetSections(), nullptr);
    ini.SetString("S", "A", "1");
    ini.SetInt("S", "B", 42);
    ini.SetBool("T", "C", true);
    ini.SetString("S", "A", "2");
    EXPECT_EQ(std::make_tuple(ini.GetInt("S", "B", 0), ini.GetBool("T", "C", false), ini.GetInt("T", "K", 3)), std::make_tuple(42, true, 3));
    EXPECT_EQ(Dump(ini), "[S]\nA=2\nB=42\n[T]\nC=true\n");
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

    first->DeleteKey("Gain");
    first->DeleteKey("missing");
    ini.DeleteSection("missing");
    EXPECT_EQ(Dump(ini), "[Camera]\nGain=2\nj=3\n[B]\n[Camera]\n[camera]\n");
    ini.DeleteSection("Camera");
    EXPECT_EQ(Dump(ini), "[B]\n[Camera]\n[camera]\n");
}

} // namespace
