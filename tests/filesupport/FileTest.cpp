// File and Dir: the text rules of their paths (normalising, name parts,
// parents, the native form, relative paths, name comparison), then what they
// and the platform streams do on disk, in a temporary directory.
#include <quorel/config/Messages.h>
#include <quorel/filesupport/BufferedByteStream.h>
#include <quorel/filesupport/FileExceptions.h>
#include <quorel/filesupport/FileNameCompare.h>
#include <quorel/filesupport/PlatformByteStream.h>
#include <quorel/filesupport/RelativePath.h>

#include "filesupport/FileSupportTesting.h"

#include <chrono>
#include <fstream>

using namespace quorel;
using namespace quorel::config;
using namespace quorel::filesupport;
using namespace quorel::testing;

namespace {

using Pairs = std::vector<std::pair<char const*, char const*>>;

std::string Narrow(UTF16String const& inText) { return std::string(inText.begin(), inText.end()); }

TEST(FilePath, NormalisesFileAndDirectoryPaths) {
    for (auto const& [input, path] : Pairs{{"C:/a//b.txt", "C:\\a\\b.txt"}, {"\\\\?\\C:\\x", "C:\\x"},
                                           {"\\\\?\\UNC\\srv\\sh\\f", "\\\\srv\\sh\\f"}, {"//srv//sh", "\\\\srv\\sh"},
                                           {"\\\\\\x", "\\\\x"}, {"a\\\\\\\\b\\", "a\\b\\"},
                                           {"C:\\A\\..\\.\\b", "C:\\A\\..\\.\\b"}, {"", ""}}) {
        EXPECT_EQ(Narrow(File(U16(input)).FullPath()), path) << input;
    }
    // A directory loses one trailing backslash (only a backslash) before
    // normalising; on POSIX "/" and "\" are the root, "\".
    for (auto const& [input, path] : Pairs{{"C:\\a\\", "C:\\a"}, {"C:/a/", "C:\\a\\"}, {"C:\\", "C:"},
                                           {"C:\\a\\\\", "C:\\a\\"}, {"/", "\\"}, {"\\", "\\"}, {"\\\\", "\\"},
                                           {"/home/user/", "\\home\\user\\"}, {"", ""}}) {
        EXPECT_EQ(Narrow(Dir(U16(input)).FullPath()), path) << input;
    }
    EXPECT_EQ(Narrow(Dir(Dir(U16("C:\\a")), U16("b")).FullPath()), "C:\\a\\b");
    EXPECT_EQ(Narrow(Dir(Dir(U16("/")), U16("tmp")).FullPath()), "\\tmp");
    EXPECT_EQ(Narrow(File(Dir(U16("C:\\a")), U16("b//c.txt")).FullPath()), "C:\\a\\b\\c.txt");
    for (auto const& [input, native] : Pairs{{"\\\\?\\C:\\x", "C:/x"}, {"\\\\?\\UNC\\srv\\sh\\f", "//srv/sh/f"}}) {
        EXPECT_EQ(Narrow(File(U16(input)).Helper().FullNativePath()), native);
    }
    EXPECT_EQ(Narrow(Dir(U16("\\")).Helper().FullNativePath()), "/");
}

TEST(FilePath, NamePartsParentsTopLevelEqualityAndMultiByteForms) {
    char const* const cases[][4] = {
        // path, name, title, extension
        {"C:\\d\\a.tar.gz", "a.tar.gz", "a.tar", ".gz"}, {"C:\\d.x\\file", "file", "file", ""},
        {"a.txt", "a.txt", "a.txt", ""},  // no separator, no counting dot
        {"C:\\d\\.cfg", ".cfg", "", ".cfg"}, {"C:\\d\\trailing.", "trailing.", "trailing", "."},
        {"\\x", "x", "x", ""}, {"", "", "", ""}};
    for (auto const& c : cases) {
        File const file(U16(c[0]));
        EXPECT_EQ(Narrow(file.GetName()), c[1]) << c[0];
        EXPECT_EQ(Narrow(file.GetTitle()), c[2]) << c[0];
        EXPECT_EQ(Narrow(file.GetExtension(false)), c[3]) << c[0];
    }
    EXPECT_EQ(Narrow(File(U16("C:\\A.TXT")).GetExtension(true)), ".txt");
    EXPECT_EQ(File(U16("C:\\x.\xC4")).GetExtension(true), U16({'.', 0xE4}));

    for (auto const& [path, chain] :
         Pairs{{"C:\\d\\e\\f.txt", "C:\\d\\e|C:\\d|C:|"}, {"/home/u/f", "\\home\\u|\\home|\\|"}}) {
        std::string walked;
        for (Dir dir = File(U16(path)).Parent(); !dir.FullPath().empty(); dir = dir.Parent()) {
            walked += Narrow(dir.FullPath()) + "|";
        }
        EXPECT_EQ(walked, chain);
    }
    for (auto const& [path, top] : std::vector<std::pair<char const*, bool>>{
             {"C:", true}, {"", true}, {"name", true}, {"\\", true},
             {"\\x", false}, {"C:\\a", false}, {"\\\\srv\\sh", false}}) {
        EXPECT_EQ(Dir(U16(path)).IsTopLevelDir(), top) << path;
    }
    EXPECT_NE(Dir(U16("C:\\a")), Dir(U16("C:\\A")));
    EXPECT_EQ(Dir(U16("C:\\a\\")), Dir(U16("C:/a")));
    EXPECT_NE(File(U16("x")), File(U16("X")));
    File const file(U16({'/', 't', 0xE9, 0x20AC}));
    File copy(U16("first"));
    copy = File(file.Helper());
    EXPECT_EQ(copy, file);
    EXPECT_EQ(file.FullPathMultiByte(), "\\t\xC3\xA9\xE2\x82\xAC");
    EXPECT_EQ(File(FileHelper(file.FullPathMultiByte())), file);
    EXPECT_EQ(FileHelper(std::string("\xFF\xFE")).Path(), UTF16String()) << "text that converts to nothing";
}

TEST(FileNameCompare, IgnoresCaseWidthAndKanaType) {
    for (auto const& [a, b, order] : std::vector<std::tuple<UTF16String, UTF16String, int>>{
        {U16("C:\\a"), U16("C:\\A"), 0}, {U16("abc"), U16("abd"), -1}, {U16("b"), U16("A"), 1},
        {U16("ab"), U16("a"), 1}, {U16(""), U16(""), 0}, {U16({0x00C4}), U16({0x00E4}), 0},
        {U16({0xFF21, 0xFF42}), U16("aB"), 0},              // full-width Latin
        {U16({0x3042, 0x304C}), U16({0x30A2, 0x30AC}), 0},  // hiragana and katakana
        {U16({0xFF76, 0xFF9E}), U16({0x30AC}), 0},          // half-width KA + voiced mark = GA
        {U16({0x304B, 0x3099}), U16({0x30AC}), 0},          // decomposed hiragana GA
        {U16({0xFF8A, 0xFF9F}), U16({0x3071}), 0},          // half-width HA + semi-voiced = PA
        {U16({0x30AB}), U16({0x30AC}), -1},                 // KA is not GA
        {U16("a b"), U16({'a', 0x3000, 'b'}), 0},           // ideographic space
         }) {
        EXPECT_EQ(CompareFileNames(a, b), order) << Narrow(a);
        EXPECT_EQ(CompareFileNames(b, a), -order) << Narrow(b);
    }
}

TEST(RelativePath, RecognisesMakesAndResolvesStoredPaths) {
    for (auto const& [path, relative] : std::vector<std::pair<char const*, bool>>{
             {"a/b", true}, {"a", true}, {":", true}, {"../x", true},
             {"C:x", false}, {"/a", false}, {"\\a", false}, {"", false}}) {
        EXPECT_EQ(IsNormalizedRelativePath(U16(path)), relative) << path;
    }
    File const base(U16("C:\\a\\b\\c.txt"));
    for (auto const& [stored, path] : Pairs{{"./y.txt", "C:\\a\\b\\y.txt"}, {"a/", ""}, {"C:\\z.txt", "C:\\z.txt"},
                                            {"../../../../q.txt", "q.txt"},
                                            {"d\\e.txt", "C:\\a\\b\\d\\e.txt"}}) {  // normalising makes "\" a separator
        EXPECT_EQ(Narrow(MakeFileFromPath(U16(stored), base).FullPath()), path) << stored;
    }
    for (auto const& [file, stored] : Pairs{{"C:\\a\\x\\y.txt", "../x/y.txt"}, {"C:\\a\\b\\y.txt", "y.txt"},
                                            {"D:\\y.txt", ""}, {"C:\\a\\b\\d\\e\\f.txt", "d/e/f.txt"},
                                            {"C:\\top.txt", "../../top.txt"},
                                            {"C:\\A\\b\\y.txt", "../../A/b/y.txt"}}) {  // case counts
        UTF16String const made = MakeNormalizedRelativePath(File(U16(file)), base);
        EXPECT_EQ(Narrow(made), stored) << file;
        EXPECT_TRUE(made.empty() || Narrow(MakeFileFromPath(made, base).FullPath()) == file) << "round trip " << file;
    }
    File const posixBase(U16("/home/u/doc.txt"));
    EXPECT_EQ(Narrow(MakeNormalizedRelativePath(File(U16("/srv/data/x.wav")), posixBase)), "../../srv/data/x.wav");
    EXPECT_EQ(Narrow(MakeFileFromPath(U16("../../srv/data/x.wav"), posixBase).FullPath()), "\\srv\\data\\x.wav");
}

class FileSystemTest : public ::testing::Test {
protected:
    void Write(char const* inName, std::string const& inText) { std::ofstream(mTemp.Path(inName)) << inText; }
    File FileNamed(char const* inName) const { return mTemp.FileNamed(inName); }
    Dir DirNamed(char const* inName) const { return Dir(mDir, U16(inName)); }

    TempDirectory mTemp;
    Dir mDir = mTemp.AsDir();
};

TEST_F(FileSystemTest, FilesAreCreatedSizedAndDeletedOrRaiseTheirExceptions) {
    File const file = FileNamed("a.bin");
    EXPECT_FALSE(file.Exists());
    EXPECT_EQ(file.Size(kFileSize_DataLogical), 0u) << "a missing file has size 0";
    file.Create();
    Write("a.bin", "twelve bytes");
    for (int selector = 0; selector < 8; ++selector) {  // data and total sizes; the resource fork is empty
        bool const dataOrTotal = selector == 0 || selector == 2 || selector == 3 || selector == 5;
        EXPECT_EQ(file.Size(static_cast<FileSizeSelector>(selector)), dataOrTotal ? 12u : 0u) << selector;
    }
    file.Create();
    EXPECT_EQ(file.Size(kFileSize_DataLogical), 0u) << "creating an existing file empties it";
    file.Delete();
    EXPECT_FALSE(file.Exists());
    EXPECT_THROW(file.Delete(), file_delete_exception);
    DirNamed("adir").Create();
    FileNamed("plain").Create();
    EXPECT_TRUE(FileNamed("adir").Exists()) << "a directory counts for File";
    EXPECT_FALSE(DirNamed("plain").Exists() || Dir(U16("Q:")).Exists()) << "a file does not count for Dir";
    EXPECT_TRUE(Dir(U16("/")).Exists());

    File const inMissingDir(DirNamed("missing"), U16("f.txt"));
    try {
        inMissingDir.Create();
        ADD_FAILURE() << "no exception";
    } catch (create_invalidpath_exception const& e) {
        EXPECT_EQ(e.GetFile(), inMissingDir) << "the exception names the file";
    }
    EXPECT_THROW(File(DirNamed("plain"), U16("f")).Create(), create_invalidpath_exception);
    EXPECT_THROW(FileNamed("adir").Create(), create_accessdenied_exception);
    EXPECT_THROW(FileNamed("ghost").Modified(), file_not_found_exception);
    EXPECT_THROW(File(DirNamed("none"), U16("f")).Modified(), file_exception);
    EXPECT_THROW(DirNamed("none").Modified(), dir_not_found_exception);
}

TEST_F(FileSystemTest, RenamesStayInTheDirectoryAndReplaceNothing) {
    File file = FileNamed("old.txt");
    Write("old.txt", "content");
    FileNamed("taken.txt").Create();
    file.Rename(U16("new.txt"));
    EXPECT_EQ(file, FileNamed("new.txt"));
    EXPECT_THROW(file.Rename(U16("taken.txt")), rename_file);
    EXPECT_THROW(file.Rename(U16("sub/x")), rename_file) << "a name, not a path";
    EXPECT_EQ(file, FileNamed("new.txt")) << "a failed rename keeps the path";
    EXPECT_EQ(file.Size(kFileSize_DataLogical), 7u) << "with its content";

    Dir sub = DirNamed("one");
    sub.Create();
    EXPECT_NO_THROW(sub.Create()) << "an existing directory is fine";
    EXPECT_THROW(Dir(DirNamed("no"), U16("two")).Create(), dir_exception) << "one level only";
    sub.Rename(U16("renamed"));
    EXPECT_EQ(sub, DirNamed("renamed"));
    DirNamed("other").Create();
    EXPECT_THROW(sub.Rename(U16("other")), rename_dir_already_exists);
    EXPECT_THROW(DirNamed("gone").Rename(U16("x")), rename_dir);
    File(sub, U16("inside")).Create();
    EXPECT_THROW(sub.Delete(), dir_exception) << "not empty";
    File(sub, U16("inside")).Delete();
    sub.Delete();
    EXPECT_FALSE(sub.Exists());
    EXPECT_THROW(sub.Delete(), dir_exception);
}

TEST_F(FileSystemTest, TimesAreHundredNanosecondsSince1601) {
    using namespace std::chrono;
    std::uint64_t const now = duration_cast<nanoseconds>(system_clock::now().time_since_epoch()).count() / 100 +
                              116444736000000000ull;
    std::uint64_t const slack = 20000000;  // 2 s of file system granularity
    FileNamed("timed").Create();
    for (std::uint64_t time : {FileNamed("timed").Modified(), FileNamed("timed").Created(), mDir.Modified()}) {
        EXPECT_GE(time + slack, now);
        EXPECT_LE(time, now + slack);
    }
}

TEST_F(FileSystemTest, PlatformStreamsReadAndOverwriteExistingFiles) {
    File const file = FileNamed("data");
    EXPECT_THROW(OPlatformByteStream{file}, file_not_found_exception) << "it does not create";
    EXPECT_THROW(IPlatformByteStream{File(DirNamed("x"), U16("y"))}, file_not_found_exception);
    EXPECT_THROW(OPlatformByteStream{File(mDir, U16(""))}, io_error) << "a directory";
    file.Create();
    {
        IPlatformByteStream empty(file);
        EXPECT_EQ(Written([&](OByteStream& ioOut) { ioOut << empty; }), Bytes()) << "an empty file copies at once";
    }
    Bytes const payload = RandomBytes(100000, 11);
    {
        OPlatformByteStream target(file);
        OBufferedByteStream out(target, 4096, 1024);
        out << std::string("AB");
        out.WriteBlock(payload.data(), 100000);  // larger than the buffer: straight through
    }
    {
        OPlatformByteStream out(file);  // writes over the file from its start
        EXPECT_EQ(out.Length(), 100004u);
        out << std::uint16_t(3);  // the string now takes in the first payload byte
        out.CurPos(100003);
        out.Put('!');
        EXPECT_EQ(out.CurPos(), 100004u);
    }
    IPlatformByteStream source(file);
    IBufferedByteStream in(source, 4096, 1024);
    std::string text;
    in >> text;
    EXPECT_EQ(text, std::string("AB") + char(payload[0])) << "the tail stays";
    Bytes back(99998);
    in.ReadBlock(back.data(), 99998);
    EXPECT_EQ(back, Bytes(payload.begin() + 1, payload.end() - 1));
    EXPECT_EQ(in.Get(), '!');
    EXPECT_THROW(in.Get(), eof_error);
    source.CurPos(100002);
    EXPECT_THROW(source.ReadBlock(back.data(), 3), eof_error) << "fewer bytes than asked";
}

TEST_F(FileSystemTest, SharingModesKeepWritersApart) {
    File const file = FileNamed("shared");
    file.Create();
    {
        IPlatformByteStream reader(file);
        EXPECT_NO_THROW(IPlatformByteStream{file}) << "readers share";
        EXPECT_THROW(OPlatformByteStream{file}, io_error) << "no writer while reading";
        EXPECT_THROW(file.Delete(), file_delete_exception);
    }
    {
        OPlatformByteStream writer(file);
        EXPECT_THROW(OPlatformByteStream{file}, io_error);
        EXPECT_THROW(IPlatformByteStream{file}, io_error);
        EXPECT_THROW(file.Create(), create_exception);
        File moving = file;
        EXPECT_THROW(moving.Rename(U16("moved")), rename_file);
    }
    EXPECT_NO_THROW(OPlatformByteStream{file}) << "closing releases the file";
}

TEST(FileExceptions, CarryTheirMessagesAndObjects) {
    File const file(U16("C:\\f"));
    Dir const dir(U16("C:\\d"));
    UTF16String const name = U16("n");
    struct Case {  // an aggregate, so that the references keep the temporaries alive
        std::exception const& mException;
        char const* mMessage;
    };
    Case const cases[] = {
        {file_exception(file), kMessage_FileError}, {file_not_found_exception(file), kMessage_FileNotFound},
        {file_delete_exception(file), kMessage_FileDelete}, {create_exception(file), kMessage_FileCreate},
        {create_fnf_exception(file), kMessage_FileCreateNotFound},
        {create_locked_exception(file), kMessage_FileCreateLocked},
        {create_accessdenied_exception(file), kMessage_FileCreateAccessDenied},
        {create_invalidpath_exception(file), kMessage_FileCreateInvalidPath},
        {rename_file(file, name), kMessage_FileRename}, {dir_exception(dir), kMessage_DirError},
        {dir_not_found_exception(dir), kMessage_DirNotFound}, {dir_delete_exception(dir), kMessage_DirDelete},
        {rename_dir(dir, name), kMessage_DirRename}, {rename_dir_already_exists(dir, name), kMessage_DirRenameExists},
        {file_exception(file, "custom"), "custom"},
    };
    for (Case const& c : cases) {
        EXPECT_STREQ(c.mException.what(), c.mMessage) << "the constant, unexpanded";
    }
    EXPECT_EQ(rename_dir_already_exists(dir, name).GetNewName(), name);
    EXPECT_EQ(rename_dir_already_exists(dir, name).GetDir(), dir);
    EXPECT_EQ(rename_file(file, name).GetFile(), file);
    EXPECT_THROW(throw create_fnf_exception(file), create_exception) << "a host catches a family by its root";
    EXPECT_THROW(throw rename_dir_already_exists(dir, name), rename_dir);
}

}  // namespace
