#include "IniTestSupport.h"

#include "KVBaseException.h"
#include "StringBufferException.h"

#include <cstring>
#include <functional>

namespace {

// Expects fn to throw E whose message starts with prefix (the rest is the system's error text).
template <typename E>
void ExpectThrowStartingWith(const std::function<void()>& fn, const std::string& prefix) {
    try {
        fn();
        ADD_FAILURE() << "nothing thrown, expected \"" << prefix << "...\"";
    } catch (const E& e) {
        EXPECT_EQ(std::string(e.what()).substr(0, prefix.size()), prefix);
    }
}

TEST(IniSave, WritesCrLfLinesWithoutSpaces) {
    TempFolder folder;
    const std::string file = folder.file("out.ini");
    KVIniFile ini;
    ini.SetString("S", "K", "v");
    EXPECT_TRUE(ini.Save(file.c_str(), true));
    EXPECT_EQ(readFile(file), "[S]\r\nK=v\r\n");
    EXPECT_STREQ(ini.GetFileName().str(), file.c_str());

    ini.SetInt("T", "N", -3);
    ini.SetString("S", "E", "");
    EXPECT_TRUE(ini.Save(file.c_str(), true));
    EXPECT_EQ(readFile(file), "[S]\r\nK=v\r\nE=\r\n[T]\r\nN=-3\r\n");
}

TEST(IniSave, RoundTripKeepsSectionsKeysAndValues) {
    TempFolder folder;
    const std::string file = folder.file("round.ini");
    KVIniFile ini;
    ini.SetString("Previous_State", "BitmapID", "17");
    ini.SetString("Previous_State", "SelectedPlugins", "Pdf417;QR Code;DataMatrix");
    ini.SetString("Previous_State", "Path", "C:\\a b\\c=d");
    ini.SetString("Previous_State", "Quoted", "\"x\" 'y'");
    ini.SetString(" Spaced Name ", "key with spaces", "#not a comment");
    ini.SetString("Empty", "Nothing", "");
    ini.SetBool("Flags", "On", true);
    ini.AddSection(new KVIniSection("Previous_State")); // a duplicate survives too
    ini.FindSection("Flags", false)->AddKey(new KVIniKey("On", "false"));
    ini.SetString("Bytes", "High", "\x80\xE9\xFF");
    ASSERT_TRUE(ini.Save(file.c_str(), true));

    KVIniFile loaded;
    ASSERT_TRUE(loaded.Load(file.c_str(), true));
    EXPECT_EQ(Dump(loaded), Dump(ini));
    EXPECT_STREQ(loaded.GetFileName().str(), file.c_str());
}

TEST(IniSave, NeverTouchedFileLeavesDiskAlone) {
    TempFolder folder;
    const std::string existing = folder.file("existing.ini");
    const std::string missing = folder.file("missing.ini");
    writeFile(existing, "[keep]\r\nme=1\r\n");

    KVIniFile ini;
    ini.GetString("keep", "me", ""); // a read does not count as a change
    EXPECT_TRUE(ini.Save(existing.c_str(), true));
    EXPECT_TRUE(ini.Save(missing.c_str(), false));
    EXPECT_EQ(readFile(existing), "[keep]\r\nme=1\r\n");
    EXPECT_FALSE(std::filesystem::exists(missing));
    EXPECT_STREQ(ini.GetFileName().str(), missing.c_str());
}

TEST(IniSave, EmptyCollectionTruncatesOnceListExists) {
    TempFolder folder;
    const std::string file = folder.file("cleared.ini");
    writeFile(file, "[S]\r\nk=v\r\n");
    KVIniFile ini;
    ASSERT_TRUE(ini.Load(file.c_str(), true));
    ini.DeleteSection("S");
    EXPECT_TRUE(ini.Save(file.c_str(), true));
    EXPECT_EQ(readFile(file), "");
}

TEST(IniSave, EmptyNameInBothModes) {
    KVIniFile ini;
    ini.SetString("S", "K", "v");
    EXPECT_FALSE(ini.Save("", false));
    EXPECT_FALSE(ini.Save(nullptr, false));
    ExpectThrowStartingWith<KVBaseException>([&] { ini.Save("", true); },
                                             "Cannot save Ini file with no file name");
    EXPECT_STREQ(ini.GetFileName().str(), "");
}

// Targets the process cannot write even as root: inside a missing folder, or a folder itself.
TEST(IniSave, UnwritableTargetThrowsOnlyWhenAsked) {
    TempFolder folder;
    const std::string targets[] = {folder.file("no/such/folder/x.ini"), folder.path()};
    for (const std::string& target : targets) {
        SCOPED_TRACE(target);
        KVIniFile ini;
        ini.SetString("S", "K", "v");
        ExpectThrowStartingWith<StringBufferException>([&] { ini.Save(target.c_str(), true); },
                                                       "Unable to create file - ");
        EXPECT_TRUE(ini.Save(target.c_str(), false)); // quiet mode never reports a failed write
        EXPECT_STREQ(ini.GetFileName().str(), target.c_str());
    }
    EXPECT_TRUE(std::filesystem::is_directory(folder.path()));
}

TEST(IniLoad, FailuresLeaveMemoryAlone) {
    TempFolder folder;
    const std::string good = folder.file("good.ini");
    const std::string missing = folder.file("missing.ini");
    writeFile(good, "[S]\nk=v\n");
    KVIniFile ini;
    ASSERT_TRUE(ini.Load(good.c_str(), true));

    EXPECT_FALSE(ini.Load(missing.c_str(), false));
    EXPECT_FALSE(ini.Load("", false));
    EXPECT_FALSE(ini.Load(nullptr, false));
    ExpectThrowStartingWith<KVBaseException>([&] { ini.Load("", true); },
                                             "Cannot load Ini file with no file name");
    try {
        ini.Load(missing.c_str(), true);
        ADD_FAILURE() << "missing file loaded";
    } catch (const KVBaseException& e) {
        EXPECT_EQ(std::string(e.what()), "Cannot load Ini file: " + missing + " does not exist");
    }
    EXPECT_EQ(Dump(ini), "[S]\nk=v\n");
    EXPECT_STREQ(ini.GetFileName().str(), good.c_str());
}

// A path that exists but cannot be read as a file fails in the reading layer, in both modes.
TEST(IniLoad, UnreadableFileThrowsEvenInQuietMode) {
    TempFolder folder;
    const std::string target = folder.path();
    for (bool throwOnError : {true, false}) {
        KVIniFile ini;
        ini.SetString("Old", "k", "v");
        ExpectThrowStartingWith<StringBufferException>([&] { ini.Load(target.c_str(), throwOnError); },
                                                       "Unable to open file - ");
        EXPECT_STREQ(ini.GetFileName().str(), target.c_str());
        EXPECT_EQ(Dump(ini), ""); // sections are dropped before the read is tried
    }
}

TEST(IniLoad, ReplacesEverySection) {
    TempFolder folder;
    const std::string file = folder.file("a.ini");
    writeFile(file, "[New]\nx=1\n");
    KVIniFile ini;
    ini.SetString("Old", "y", "2");
    ASSERT_TRUE(ini.Load(file.c_str(), false));
    EXPECT_EQ(Dump(ini), "[New]\nx=1\n");
}

TEST(IniReload, FollowsTheFileOnDisk) {
    TempFolder folder;
    KVIniFile ini;
    EXPECT_TRUE(ini.Reload()); // nothing remembered yet

    const std::string file = folder.file("r.ini");
    writeFile(file, "[A]\nk=1\n");
    ASSERT_TRUE(ini.Load(file.c_str(), true));
    ini.SetString("A", "k", "changed in memory");
    writeFile(file, "[B]\r\nj=2\r\n");
    EXPECT_TRUE(ini.Reload());
    EXPECT_EQ(Dump(ini), "[B]\nj=2\n");

    std::filesystem::remove(file);
    EXPECT_FALSE(ini.Reload());
    EXPECT_EQ(Dump(ini), "[B]\nj=2\n");
}

struct ShiftCase {
    int shift;
    const char* onDiskHeader; // "[S]" shifted
};

TEST(IniByteShift, SavedShiftedAndLoadedBack) {
    const ShiftCase cases[] = {{1, "\\T^"}, {-1, "ZR\\"}, {256 + 2, "]U_"}, {200, "#\x1B%"}};
    TempFolder folder;
    const std::string file = folder.file("shift.ini");
    for (const ShiftCase& c : cases) {
        SCOPED_TRACE(c.shift);
        KVIniFile ini;
        ini.SetByteShift(true, c.shift);
        ini.SetString("S", "Key", "Value \xE9");
        ASSERT_TRUE(ini.Save(file.c_str(), true));
        const std::string bytes = readFile(file);
        EXPECT_EQ(bytes.substr(0, 5), std::string(c.onDiskHeader) + "\r\n");
        EXPECT_EQ(bytes.substr(bytes.size() - 2), "\r\n");
        EXPECT_EQ(bytes.find("Key"), std::string::npos);

        KVIniFile again;
        again.SetByteShift(true, c.shift);
        ASSERT_TRUE(again.Load(file.c_str(), true));
        EXPECT_EQ(Dump(again), "[S]\nKey=Value \xE9\n");

        KVIniFile plain; // read without the shift, the shifted header is no section
        ASSERT_TRUE(plain.Load(file.c_str(), true));
        EXPECT_EQ(plain.GetSections()->GetCount(), 0);
    }
}

TEST(IniByteShift, OffForcesZero) {
    TempFolder folder;
    const std::string file = folder.file("off.ini");
    KVIniFile ini;
    ini.SetByteShift(true, 5);
    ini.SetByteShift(false, 5);
    ini.SetString("S", "K", "v");
    ASSERT_TRUE(ini.Save(file.c_str(), true));
    EXPECT_EQ(readFile(file), "[S]\r\nK=v\r\n");
}

} // namespace
