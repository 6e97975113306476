// SPDX-License-Identifier: MIT
#include "hosts/system/new_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "tests/kit/temporary_folder.h"

namespace {

using hosts::fileNameFrom;
using hosts::NewFile;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

class NewFileTest : public testing::Test {
protected:
    platform::Result<NewFile> create() { return NewFile::create(folder.path(), "Draft", ".eml"); }
    std::string kept(std::string_view contents) {
        auto file = create();
        EXPECT_TRUE(file && file->write(contents) && file->keep());
        return file ? file->path() : "";
    }
    static std::string problem(const std::string& where, const std::string& stem = "Draft") {
        const auto file = NewFile::create(where, stem, ".eml");
        return file ? "(none)" : file.error().text();
    }

    kit::TemporaryFolder folder;
};

TEST_F(NewFileTest, holdsWhatIsWrittenOnceItIsKept) {
    EXPECT_EQ(kept("contents"), folder / "Draft.eml");
    EXPECT_EQ(kit::readText(folder / "Draft.eml"), "contents");
}

TEST_F(NewFileTest, takesTheNextNumberWhereItsNameIsTaken) {
    kept("first");
    EXPECT_EQ(kept("second"), folder / "Draft (2).eml");
    EXPECT_EQ(kept("third"), folder / "Draft (3).eml");
    EXPECT_EQ(kit::readText(folder / "Draft.eml"), "first");
    EXPECT_EQ(kit::readText(folder / "Draft (2).eml"), "second");
}

TEST_F(NewFileTest, takesTheNextNumberBesideAFolderOrALinkOfItsName) {
    std::filesystem::create_directory(folder / "Draft.eml");
    std::filesystem::create_symlink("/no/such/file", folder / "Draft (2).eml");
    EXPECT_EQ(kept("third"), folder / "Draft (3).eml");
}

TEST_F(NewFileTest, goesWhenItIsNotKept) {
    {
        auto file = create();
        ASSERT_TRUE(file && file->write("half"));
        EXPECT_THAT(kit::namesIn(folder.path()), ElementsAre("Draft.eml"));
    }
    EXPECT_THAT(kit::namesIn(folder.path()), IsEmpty());
}

TEST_F(NewFileTest, isForItsUserAlone) {
    struct stat status {};
    ASSERT_EQ(::stat(kept("").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0600u);
}

TEST_F(NewFileTest, makesTheFoldersThatAreMissing) {
    auto file = NewFile::create(folder / "a/b", "Draft", ".eml");
    ASSERT_TRUE(file && file->keep());
    EXPECT_EQ(kit::readText(folder / "a/b/Draft.eml"), "");
}

TEST_F(NewFileTest, saysWhyItCannotBeMade) {
    kit::writeText(folder / "file", "");
    EXPECT_THAT(problem(folder / "file"), StartsWith("cannot make the folder " + (folder / "file")));
    EXPECT_THAT(problem(folder / "file/inner"), StartsWith("cannot make the folder " + (folder / "file/inner")));
    EXPECT_EQ(problem(folder.path(), std::string(300, 'x')),
              "cannot make a file in " + folder.path().string() + ": File name too long");
}

TEST(FileName, isTheTextWhereThatIsFit) {
    EXPECT_EQ(fileNameFrom("Trivel Support", "E-mail"), "Trivel Support");
    EXPECT_EQ(fileNameFrom("Trivel.plist", "attachment"), "Trivel.plist");
    EXPECT_EQ(fileNameFrom("Gr\xC3\xBC\xC3\x9F"
                           "e",
                           "E-mail"),
              "Gr\xC3\xBC\xC3\x9F"
              "e");
}

TEST(FileName, leadsToNoOtherFolder) {
    EXPECT_EQ(fileNameFrom("../../etc/passwd", "E-mail"), "-..-etc-passwd");
    EXPECT_EQ(fileNameFrom("/etc/passwd", "E-mail"), "-etc-passwd");
    EXPECT_EQ(fileNameFrom("..", "E-mail"), "E-mail");
    EXPECT_EQ(fileNameFrom(".hidden", "E-mail"), "hidden");
}

TEST(FileName, hasNoControlCharacters) {
    EXPECT_EQ(fileNameFrom(std::string_view{"a\nb\0c\x7F", 6}, "E-mail"), "a-b-c-");
}

TEST(FileName, standsInWhereNothingIsLeft) {
    EXPECT_EQ(fileNameFrom("", "E-mail"), "E-mail");
    EXPECT_EQ(fileNameFrom(" . ", "E-mail"), "E-mail");
}

TEST(FileName, isCutBetweenCharacters) {
    std::string text;
    for (int count = 0; count < 200; ++count)
        text += "\xC3\xBC";
    const std::string name = fileNameFrom("x" + text, "E-mail");
    EXPECT_EQ(name.size(), 199u);
    EXPECT_THAT(name, HasSubstr("\xC3\xBC"));
    EXPECT_EQ(name.back(), '\xBC');
}

}  // namespace
