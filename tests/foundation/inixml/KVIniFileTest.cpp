#include "IniTestSupport.h"

#include <climits>

namespace {

struct TypedCase {
    const char* value;
    int asInt;
    bool asBool;
};

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

TEST(IniLookup, GettersNeverCreate) {
    KVIniFile ini;
    EXPECT_STREQ(ini.GetString("S", "K", "def").str(), "def");
    EXPECT_EQ(ini.GetInt("S", "K", 9), 9);
    EXPECT_TRUE(ini.GetBool("S", "K", true));
    EXPECT_EQ(ini.GetSections(), nullptr);
    ini.SetString("S", "Other", "x");
    EXPECT_STREQ(ini.GetString("S", "K", "def").str(), "def");
    EXPECT_EQ(ini.GetInt("T", "K", 3), 3);
    EXPECT_EQ(Dump(ini), "[S]\nOther=x\n");
}

TEST(IniLookup, SettersCreateSectionAndKeyOnce) {
    KVIniFile ini;
    ini.SetString("S", "A", "1");
    ini.SetInt("S", "B", 42);
    ini.SetBool("T", "C", true);
    ini.SetString("S", "A", "2");
    EXPECT_EQ(Dump(ini), "[S]\nA=2\nB=42\n[T]\nC=true\n");
    EXPECT_EQ(ini.GetInt("S", "B", 0), 42);
    EXPECT_TRUE(ini.GetBool("T", "C", false));
    EXPECT_STREQ(ini.GetString("S", "A", "").str(), "2");
}

TEST(IniLookup, NamesMatchExactlyAndFirstWins) {
    KVIniFile ini;
    KVIniSection* first = new KVIniSection("Camera");
    first->AddKey(new KVIniKey("Gain", "1"));
    first->AddKey(new KVIniKey("Gain", "2"));
    ini.AddSection(first);
    KVIniSection* second = new KVIniSection("Camera");
    second->AddKey(new KVIniKey("Gain", "3"));
    ini.AddSection(second);

    EXPECT_EQ(ini.FindSection("Camera", false), first);
    EXPECT_EQ(ini.FindSection("camera", false), nullptr);
    EXPECT_EQ(ini.FindSection(" Camera", false), nullptr);
    EXPECT_EQ(ini.GetInt("Camera", "Gain", 0), 1);
    EXPECT_EQ(ini.GetInt("Camera", "gain", 0), 0);

    KVIniSection* created = ini.FindSection("camera", true);
    ASSERT_NE(created, nullptr);
    EXPECT_NE(created, first);
    EXPECT_EQ(ini.GetSections()->GetCount(), 3);
    EXPECT_EQ(ini.GetSections()->GetAt(2), created);
}

TEST(IniLookup, DeleteRemovesOnlyTheFirstMatch) {
    KVIniFile ini;
    KVIniSection* a = new KVIniSection("A");
    a->AddKey(new KVIniKey("k", "1"));
    a->AddKey(new KVIniKey("j", "2"));
    a->AddKey(new KVIniKey("k", "3"));
    ini.AddSection(a);
    ini.AddSection(new KVIniSection("B"));
    ini.AddSection(new KVIniSection("A"));

    a->DeleteKey("k");
    EXPECT_EQ(Dump(ini), "[A]\nj=2\nk=3\n[B]\n[A]\n");
    a->DeleteKey("missing");
    ini.DeleteSection("missing");
    EXPECT_EQ(Dump(ini), "[A]\nj=2\nk=3\n[B]\n[A]\n");

    ini.DeleteSection("A");
    EXPECT_EQ(Dump(ini), "[B]\n[A]\n");
    ini.DeleteSection("A");
    ini.DeleteSection("B");
    EXPECT_EQ(Dump(ini), "");
}

TEST(IniLookup, ClearKeepsTheList) {
    KVIniFile ini;
    ini.SetString("S", "K", "v");
    ini.Clear();
    ASSERT_NE(ini.GetSections(), nullptr);
    EXPECT_EQ(ini.GetSections()->GetCount(), 0);
    EXPECT_FALSE(ini.FindSection("S", false));
}

} // namespace
