#include "IniTestSupport.h"

#include "KVBaseException.h"
#include "StringBufferException.h"

namespace {

TEST(IniSave, WritesCrLfLinesAndReadsBackTheSameModel) {
    TempFolder folder;
    const std::string file = folder.file("out.ini");
    KVIniFile ini;
    ini.SetString("S", "K", "v");
    ini.SetInt("T", "N", -3);
    ini.SetString("S", "E", "");
    EXPECT_TRUE(ini.Save(file.c_str(), true));
    EXPECT_EQ(readFile(file), "[S]\r\nK=v\r\nE=\r\n[T]\r\nN=-3\r\n");
    EXPECT_STREQ(ini.GetFileName().str(), file.c_str());

    ini.SetString("S", "Path", "C:\\a b\\c=d");
    ini.SetString("S", "Quoted", "\"x\" 'y'");
    ini.SetString(" Spaced Name ", "key with spaces", "#not a comment");
    ini.AddSection(new KVIniSection("S")); // a duplicate survives too
    ini.FindSection("T", false)->AddKey(new KVIniKey("N", "again"));
    ini.SetString("Bytes", "High", "\x80\xE9\xFF");
    ASSERT_TRUE(ini.Save(file.c_str(), true));
    KVIniFile loaded;
    ASSERT_TRUE(loaded.Load(file.c_str(), true));
    EXPECT_EQ(Dump(loaded), Dump(ini));
}

TEST(IniSave, OnlyAChangedModelTouchesTheDisk) {
    TempFolder folder;
    const std::string existing = folder.file("existing.ini"), missing = folder.file("missing.ini");
    writeFile(existing, "[keep]\r\nme=1\r\n");
    KVIniFile ini;
    ini.GetString("keep", "me", ""); // a read does not count as a change
    EXPECT_TRUE(ini.Save(existing.c_str(), true));
    EXPECT_TRUE(ini.Save(missing.c_str(), false));
    EXPECT_EQ(readFile(existing), "[keep]\r\nme=1\r\n");
    EXPECT_FALSE(std::filesystem::exists(missing));

    ASSERT_TRUE(ini.Load(existing.c_str(), true));
    ini.DeleteSection("keep");
    EXPECT_TRUE(ini.Save(existing.c_str(), true));
    EXPECT_EQ(readFile(existing), "") << "an emptied model truncates";
}

// Targets the process cannot write even as root: inside a missing folder, or a folder itself.
TEST(IniSave, BadTargetsThrowOnlyWhenAsked) {
    TempFolder folder;
    KVIniFile ini;
    ini.SetString("S", "K", "v");
    EXPECT_FALSE(ini.Save("", false));
    EXPECT_FALSE(ini.Save(nullptr, false));
    EXPECT_THROW(ini.Save("", true), KVBaseException);
    for (const std::string& target : {folder.file("no/such/folder/x.ini"), folder.path()}) {
        SCOPED_TRACE(target);
        EXPECT_THROW(ini.Save(target.c_str(), true), StringBufferException);
        EXPECT_TRUE(ini.Save(target.c_str(), false)); // quiet mode never reports a failed write
        EXPECT_STREQ(ini.GetFileName().str(), target.c_str());
    }
    EXPECT_TRUE(std::filesystem::is_directory(folder.path()));
}

TEST(IniLoad, ReplacesTheModelAndFailuresLeaveItAlone) {
    TempFolder folder;
    const std::string good = folder.file("good.ini"), missing = folder.file("missing.ini");
    writeFile(good, "[S]\nk=v\n");
    KVIniFile ini;
    ini.SetString("Old", "y", "2");
    ASSERT_TRUE(ini.Load(good.c_str(), true));
    EXPECT_EQ(Dump(ini), "[S]\nk=v\n");

    EXPECT_FALSE(ini.Load(missing.c_str(), false));
    EXPECT_FALSE(ini.Load("", false));
    EXPECT_FALSE(ini.Load(nullptr, false));
    EXPECT_THROW(ini.Load("", true), KVBaseException);
    EXPECT_THROW(ini.Load(missing.c_str(), true), KVBaseException);
    EXPECT_EQ(Dump(ini), "[S]\nk=v\n");
    EXPECT_STREQ(ini.GetFileName().str(), good.c_str());

    // A path that exists but cannot be read as a file fails in the reading layer, in both modes.
    for (bool throwOnError : {true, false}) {
        EXPECT_THROW(ini.Load(folder.path().c_str(), throwOnError), StringBufferException);
        EXPECT_EQ(Dump(ini), ""); // sections are dropped before the read is tried
    }
}

TEST(IniByteShift, SavedShiftedAndLoadedBack) {
    const std::pair<int, const char*> cases[] = {{1, "\\T^"}, {-1, "ZR\\"}, {256 + 2, "]U_"}, {200, "#\x1B%"}};
    TempFolder folder;
    const std::string file = folder.file("shift.ini");
    for (const auto& [shift, header] : cases) {
        SCOPED_TRACE(shift);
        KVIniFile ini;
        ini.SetByteShift(true, shift);
        ini.SetString("S", "Key", "Value \xE9");
        ASSERT_TRUE(ini.Save(file.c_str(), true));
        const std::string bytes = readFile(file);
        EXPECT_EQ(bytes.substr(0, 5), std::string(header) + "\r\n");
        EXPECT_EQ(bytes.substr(bytes.size() - 2), "\r\n");
        EXPECT_EQ(bytes.find("Key"), std::string::npos);

        KVIniFile again;
        again.SetByteShift(true, shift);
        ASSERT_TRUE(again.Load(file.c_str(), true));
        EXPECT_EQ(Dump(again), "[S]\nKey=Value \xE9\n");
        KVIniFile plain; // read without the shift, the shifted header is no section
        ASSERT_TRUE(plain.Load(file.c_str(), true));
        EXPECT_EQ(plain.GetSections()->GetCount(), 0);
    }
    KVIniFile off;
    off.SetByteShift(true, 5);
    off.SetByteShift(false, 5); // off forces the shift to zero
    off.SetString("S", "K", "v");
    ASSERT_TRUE(off.Save(file.c_str(), true));
    EXPECT_EQ(readFile(file), "[S]\r\nK=v\r\n");
}

} // namespace
