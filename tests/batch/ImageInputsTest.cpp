// Which files a command line's paths stand for, in which order and under which names.
#include "ImageInputs.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace fs = std::filesystem;

namespace {

class ImageInputsTest : public testing::Test {
protected:
    void SetUp() override {
        for (const char* file : {"b.png", "a.JPG", "notes.txt", "c.jpeg", "sub/z.bmp", "sub/deeper/y.png",
                                 "sub/readme.md", "other/x.png", "d.gif", "e.png.txt", "png"}) {
            fs::create_directories((m_root / file).parent_path());
            writeFile((m_root / file).string(), "x");
        }
        fs::create_directories(m_root / "folder.png"); // a folder with an image name is not an image
    }

    std::string At(const char* relative) const { return (m_root / relative).string(); }

    TempFolder m_folder;
    fs::path m_root = m_folder.path();
};

// A folder is searched for images recursively, sorted by relative path, without following linked
// folders; a file named on its own is read whatever it is; arguments keep their order; a missing
// path gives one error and the rest is kept.
TEST_F(ImageInputsTest, FoldersAreSearchedSortedArgumentsKeepTheirOrderAndMissingPathsAreErrors) {
    fs::create_directory_symlink(m_root, m_root / "sub" / "loop");
    fs::create_symlink(m_root / "b.png", m_root / "sub" / "link.png");
    std::vector<std::string> errors;
    std::vector<std::string> seen; // display name | output name | path
    const std::vector<std::string> args = {At("other"), At("gone"), At("notes.txt"), At("sub"),
                                           At("gone.png"), At("b.png")};
    for (const ImageInput& input : ImageInputs::Expand(args, errors))
        seen.push_back(input.display + "|" + input.outputName + "|" + input.path);
    const std::string missing = "': No such file or directory";
    EXPECT_EQ(errors, (std::vector<std::string>{"cannot read '" + At("gone") + missing,
                                                "cannot read '" + At("gone.png") + missing}));
    EXPECT_EQ(seen, (std::vector<std::string>{"x.png|x.png|" + At("other/x.png"),
                                              At("notes.txt") + "|notes.txt|" + At("notes.txt"),
                                              "deeper/y.png|deeper/y.png|" + At("sub/deeper/y.png"),
                                              "link.png|link.png|" + At("sub/link.png"), "z.bmp|z.bmp|" + At("sub/z.bmp"),
                                              At("b.png") + "|b.png|" + At("b.png")}));
    std::vector<std::string> names;
    errors.clear();
    for (const ImageInput& input : ImageInputs::Expand({At("")}, errors))
        names.push_back(input.display);
    EXPECT_EQ(names, (std::vector<std::string>{"a.JPG", "b.png", "c.jpeg", "other/x.png", "sub/deeper/y.png",
                                               "sub/link.png", "sub/z.bmp"}));
    EXPECT_TRUE(errors.empty());
}

} // namespace
