// The text rules of File and Dir: normalising, name parts, parents, the
// native form, relative paths and name comparison.  No disk is touched.
#include <quorel/filesupport/Dir.h>
#include <quorel/filesupport/File.h>
#include <quorel/filesupport/FileNameCompare.h>
#include <quorel/filesupport/RelativePath.h>

#include "support/TextHelpers.h"

#include <gtest/gtest.h>

using namespace quorel;
using namespace quorel::filesupport;
using quorel::testing::U16;

namespace {

std::string Narrow(UTF16String const& inText) { return std::string(inText.begin(), inText.end()); }

TEST(FilePath, NormalisingFilePaths) {
    struct Case {
        char const* mInput;
        char const* mPath;
    };
    Case const cases[] = {
        {"C:/a//b.txt", "C:\\a\\b.txt"},
        {"\\\\?\\C:\\x", "C:\\x"},
        {"\\\\?\\UNC\\srv\\sh\\f", "\\\\srv\\sh\\f"},
        {"//srv//sh", "\\\\srv\\sh"},
        {"\\\\\\x", "\\\\x"},
        {"a\\\\\\\\b\\", "a\\b\\"},
        {"C:\\A\\..\\.\\b", "C:\\A\\..\\.\\b"},
        {"", ""},
    };
    for (Case const& c : cases) {
        EXPECT_EQ(Narrow(File(U16(c.mInput)).FullPath()), c.mPath) << c.mInput;
        EXPECT_EQ(Narrow(FileHelper(std::string(c.mInput)).Path()), c.mPath) << c.mInput;
    }
}

TEST(FilePath, NormalisingDirectoryPaths) {
    struct Case {
        char const* mInput;
        char const* mPath;
    };
    Case const cases[] = {
        {"C:\\a\\", "C:\\a"},
        {"C:/a/", "C:\\a\\"},  // only a backslash is stripped, before normalising
        {"C:\\", "C:"},
        {"C:\\a\\\\", "C:\\a\\"},  // one stripped, the other stays
        {"/", "\\"},  // the POSIX root
        {"\\", "\\"},
        {"\\\\", "\\"},
        {"/home/user/", "\\home\\user\\"},
        {"", ""},
    };
    for (Case const& c : cases) {
        EXPECT_EQ(Narrow(Dir(U16(c.mInput)).FullPath()), c.mPath) << c.mInput;
    }
    EXPECT_EQ(Narrow(Dir(Dir(U16("C:\\a")), U16("b")).FullPath()), "C:\\a\\b");
    EXPECT_EQ(Narrow(Dir(Dir(U16("/")), U16("tmp")).FullPath()), "\\tmp");
    EXPECT_EQ(Narrow(Dir(Dir(), U16("x")).FullPath()), "x");
    EXPECT_EQ(Narrow(File(Dir(U16("C:\\a")), U16("b//c.txt")).FullPath()), "C:\\a\\b\\c.txt");
    EXPECT_EQ(Narrow(File(Dir(U16("/")), U16("f")).FullPath()), "\\f");
}

TEST(FilePath, NativePathsUseSlashes) {
    EXPECT_EQ(Narrow(File(U16("\\\\?\\C:\\x")).Helper().FullNativePath()), "C:/x");
    EXPECT_EQ(Narrow(File(U16("/tmp/a b/c")).Helper().FullNativePath()), "/tmp/a b/c");
    EXPECT_EQ(Narrow(File(U16("\\\\?\\UNC\\srv\\sh\\f")).Helper().FullNativePath()), "//srv/sh/f");
    EXPECT_EQ(Narrow(Dir(U16("\\")).Helper().FullNativePath()), "/");
}

TEST(FilePath, NameParts) {
    struct Case {
        char const* mPath;
        char const* mName;
        char const* mTitle;
        char const* mExtension;
    };
    Case const cases[] = {
        {"C:\\d\\a.tar.gz", "a.tar.gz", "a.tar", ".gz"},
        {"C:\\d.x\\file", "file", "file", ""},
        {"a.txt", "a.txt", "a.txt", ""},  // no separator, no counting dot
        {"C:\\d\\.cfg", ".cfg", "", ".cfg"},
        {"C:\\d\\trailing.", "trailing.", "trailing", "."},
        {"\\x", "x", "x", ""},
        {"", "", "", ""},
    };
    for (Case const& c : cases) {
        File const file(U16(c.mPath));
        EXPECT_EQ(Narrow(file.GetName()), c.mName) << c.mPath;
        EXPECT_EQ(Narrow(file.GetTitle()), c.mTitle) << c.mPath;
        EXPECT_EQ(Narrow(file.GetExtension(false)), c.mExtension) << c.mPath;
    }
    EXPECT_EQ(Narrow(File(U16("C:\\A.TXT")).GetExtension(true)), ".txt");
    EXPECT_EQ(Narrow(File(U16("C:\\A.TXT")).GetExtension(false)), ".TXT");
    EXPECT_EQ(File(U16("C:\\x.\xC4")).GetExtension(true), U16({'.', 0xE4}));
    EXPECT_EQ(Narrow(Dir(U16("C:\\a\\sub.d")).GetName()), "sub.d");
}

TEST(FilePath, ParentsAndTopLevel) {
    File const file(U16("C:\\d\\e\\f.txt"));
    std::vector<std::string> chain;
    for (Dir dir = file.Parent(); !dir.FullPath().empty(); dir = dir.Parent()) {
        chain.push_back(Narrow(dir.FullPath()));
    }
    EXPECT_EQ(chain, (std::vector<std::string>{"C:\\d\\e", "C:\\d", "C:"}));

    std::vector<std::string> posixChain;
    for (Dir dir = File(U16("/home/u/f")).Parent(); !dir.FullPath().empty(); dir = dir.Parent()) {
        posixChain.push_back(Narrow(dir.FullPath()));
    }
    EXPECT_EQ(posixChain, (std::vector<std::string>{"\\home\\u", "\\home", "\\"}));

    struct Case {
        char const* mPath;
        bool mTopLevel;
    };
    Case const cases[] = {{"C:", true}, {"", true}, {"name", true}, {"\\", true},
                          {"\\x", false}, {"C:\\a", false}, {"\\\\srv\\sh", false}};
    for (Case const& c : cases) {
        EXPECT_EQ(Dir(U16(c.mPath)).IsTopLevelDir(), c.mTopLevel) << c.mPath;
    }
}

TEST(FilePath, EqualityIsExact) {
    EXPECT_FALSE(Dir(U16("C:\\a")) == Dir(U16("C:\\A")));
    EXPECT_TRUE(Dir(U16("C:\\a\\")) == Dir(U16("C:/a")));
    EXPECT_TRUE(File(U16("C:/x")) == File(U16("C:\\x")));
    EXPECT_TRUE(File(U16("x")) != File(U16("X")));

    File assigned(U16("first"));
    File const second(U16("C:\\second"));
    assigned = second;
    EXPECT_EQ(assigned, second);
    EXPECT_EQ(File(second.Helper()), second);
    EXPECT_EQ(Dir(Dir(U16("C:\\a")).Helper()), Dir(U16("C:\\a")));
}

TEST(FilePath, MultiByteFormsAreUTF8) {
    File const file(U16({'/', 't', 0xE9, 0x20AC}));
    EXPECT_EQ(file.FullPathMultiByte(), "\\t\xC3\xA9\xE2\x82\xAC");
    EXPECT_EQ(File(FileHelper(file.FullPathMultiByte())), file);
    EXPECT_EQ(FileHelper(std::string("\xFF\xFE")).Path(), UTF16String()) << "text that converts to nothing";
}

TEST(FileNameCompare, IgnoresCaseWidthAndKanaType) {
    struct Case {
        UTF16String mA;
        UTF16String mB;
        int mOrder;
    };
    Case const cases[] = {
        {U16("C:\\a"), U16("C:\\A"), 0},
        {U16("abc"), U16("abd"), -1},
        {U16("b"), U16("A"), 1},
        {U16("ab"), U16("a"), 1},
        {U16({0xFF21, 0xFF42}), U16("aB"), 0},                 // full-width Latin
        {U16({0x3042, 0x304C}), U16({0x30A2, 0x30AC}), 0},     // hiragana and katakana
        {U16({0xFF76, 0xFF9E}), U16({0x30AC}), 0},             // half-width KA + voiced mark = GA
        {U16({0x304B, 0x3099}), U16({0x30AC}), 0},             // decomposed hiragana GA
        {U16({0xFF8A, 0xFF9F}), U16({0x3071}), 0},             // half-width HA + semi-voiced = PA
        {U16({0x00C4}), U16({0x00E4}), 0},
        {U16({0x30AB}), U16({0x30AC}), -1},                    // KA is not GA
        {U16("a b"), U16({'a', 0x3000, 'b'}), 0},
        {U16(""), U16(""), 0},
    };
    for (Case const& c : cases) {
        EXPECT_EQ(CompareFileNames(c.mA, c.mB), c.mOrder) << Narrow(c.mA);
        EXPECT_EQ(CompareFileNames(c.mB, c.mA), -c.mOrder) << Narrow(c.mB);
    }
}

TEST(RelativePath, RecognisesTheRelativeForm) {
    struct Case {
        char const* mPath;
        bool mRelative;
    };
    Case const cases[] = {{"a/b", true}, {"a", true}, {"C:x", false}, {"/a", false},
                          {"\\a", false}, {"", false}, {":", true}, {"../x", true}};
    for (Case const& c : cases) {
        EXPECT_EQ(IsNormalizedRelativePath(U16(c.mPath)), c.mRelative) << c.mPath;
    }
}

TEST(RelativePath, MakesFilesFromStoredPaths) {
    File const base(U16("C:\\a\\b\\c.txt"));
    struct Case {
        char const* mStored;
        char const* mPath;
    };
    Case const cases[] = {
        {"../x/y.txt", "C:\\a\\x\\y.txt"},
        {"./y.txt", "C:\\a\\b\\y.txt"},
        {"y.txt", "C:\\a\\b\\y.txt"},
        {"a/", ""},
        {"C:\\z.txt", "C:\\z.txt"},
        {"../../../../q.txt", "q.txt"},
        {"d\\e.txt", "C:\\a\\b\\d\\e.txt"},  // a backslash is no separator here, but normalising makes it one
    };
    for (Case const& c : cases) {
        EXPECT_EQ(Narrow(MakeFileFromPath(U16(c.mStored), base).FullPath()), c.mPath) << c.mStored;
    }
}

TEST(RelativePath, MakesStoredPathsFromFiles) {
    File const base(U16("C:\\a\\b\\c.txt"));
    struct Case {
        char const* mFile;
        char const* mStored;
    };
    Case const cases[] = {
        {"C:\\a\\x\\y.txt", "../x/y.txt"},
        {"C:\\a\\b\\y.txt", "y.txt"},
        {"D:\\y.txt", ""},
        {"C:\\a\\b\\d\\e\\f.txt", "d/e/f.txt"},
        {"C:\\top.txt", "../../top.txt"},
        {"C:\\A\\b\\y.txt", "../../A/b/y.txt"},  // case counts: only the drive is common
    };
    for (Case const& c : cases) {
        UTF16String const stored = MakeNormalizedRelativePath(File(U16(c.mFile)), base);
        EXPECT_EQ(Narrow(stored), c.mStored) << c.mFile;
        if (!stored.empty()) {
            EXPECT_EQ(Narrow(MakeFileFromPath(stored, base).FullPath()), c.mFile) << "round trip";
        }
    }
    File const posixBase(U16("/home/u/doc.txt"));
    EXPECT_EQ(Narrow(MakeNormalizedRelativePath(File(U16("/srv/data/x.wav")), posixBase)), "../../srv/data/x.wav");
    EXPECT_EQ(Narrow(MakeFileFromPath(U16("../../srv/data/x.wav"), posixBase).FullPath()), "\\srv\\data\\x.wav");
}

}  // namespace
