// File and Dir on disk, and the platform streams, in a temporary directory.
#include <quorel/config/Messages.h>
#include <quorel/filesupport/BufferedByteStream.h>
#include <quorel/filesupport/ByteStreamOperators.h>
#include <quorel/filesupport/FileExceptions.h>
#include <quorel/filesupport/PlatformByteStream.h>
#include <quorel/filesupport/StringByteStream.h>

#include "filesupport/StreamTestSupport.h"
#include "filesupport/TempDirectory.h"

#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <sys/stat.h>
#include <unistd.h>

using namespace quorel;
using namespace quorel::filesupport;
using quorel::testing::Bytes;
using quorel::testing::TempDirectory;

namespace {

void WriteText(std::string const& inPath, std::string const& inText) { std::ofstream(inPath) << inText; }

std::string ReadText(std::string const& inPath) {
    std::ifstream in(inPath);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

// 100 ns units since 1601 for the system clock's now.
std::uint64_t NowAsFileTime() {
    auto const since1970 = std::chrono::duration_cast<std::chrono::nanoseconds>(
        std::chrono::system_clock::now().time_since_epoch());
    return static_cast<std::uint64_t>(since1970.count() / 100) + 116444736000000000ull;
}

bool RunningAsRoot() { return geteuid() == 0; }

class FileSystemTest : public ::testing::Test {
protected:
    TempDirectory mTemp;
    Dir mDir = mTemp.AsDir();
};

TEST_F(FileSystemTest, CreateExistsSizeAndDelete) {
    File const file = mTemp.FileNamed("a.bin");
    EXPECT_FALSE(file.Exists());
    EXPECT_EQ(file.Size(kFileSize_DataLogical), 0u) << "a missing file has size 0";
    file.Create();
    EXPECT_TRUE(file.Exists());
    EXPECT_EQ(file.Size(kFileSize_DataLogical), 0u);

    WriteText(mTemp.Path("a.bin"), "twelve bytes");
    for (FileSizeSelector selector : {kFileSize_DataLogical, kFileSize_DataPhysical, kFileSize_TotalLogical,
                                      kFileSize_TotalPhysical}) {
        EXPECT_EQ(file.Size(selector), 12u) << selector;
    }
    for (int selector : {1, 4, 6, 99}) {
        EXPECT_EQ(file.Size(static_cast<FileSizeSelector>(selector)), 0u) << selector;
    }

    file.Create();
    EXPECT_EQ(ReadText(mTemp.Path("a.bin")), "") << "creating an existing file empties it";

    file.Delete();
    EXPECT_FALSE(file.Exists());
    EXPECT_THROW(file.Delete(), file_delete_exception);
}

TEST_F(FileSystemTest, ExistsTellsFilesFromDirectories) {
    mTemp.FileNamed("plain").Create();
    Dir const sub(mDir, TempDirectory::Wide("sub"));
    sub.Create();
    EXPECT_TRUE(File(mDir, TempDirectory::Wide("sub")).Exists()) << "a directory counts for File";
    EXPECT_FALSE(Dir(mDir, TempDirectory::Wide("plain")).Exists()) << "a file does not count for Dir";
    EXPECT_TRUE(sub.Exists());
    EXPECT_TRUE(Dir(TempDirectory::Wide("/")).Exists());
    EXPECT_FALSE(Dir(TempDirectory::Wide("Q:")).Exists());
}

TEST_F(FileSystemTest, CreateFailuresMapToTheirExceptions) {
    File const inMissingDir(Dir(mDir, TempDirectory::Wide("missing")), TempDirectory::Wide("f.txt"));
    EXPECT_THROW(inMissingDir.Create(), create_invalidpath_exception);

    Dir const sub(mDir, TempDirectory::Wide("adir"));
    sub.Create();
    EXPECT_THROW(File(mDir, TempDirectory::Wide("adir")).Create(), create_accessdenied_exception);

    File const underAFile(Dir(mDir, TempDirectory::Wide("plain")), TempDirectory::Wide("f"));
    mTemp.FileNamed("plain").Create();
    EXPECT_THROW(underAFile.Create(), create_invalidpath_exception);

    try {
        inMissingDir.Create();
        FAIL() << "no exception";
    } catch (create_exception const& e) {
        EXPECT_EQ(e.GetFile(), inMissingDir);
        EXPECT_STREQ(e.what(), config::kMessage_FileCreateInvalidPath);
    }

    if (!RunningAsRoot()) {
        Dir const locked(mDir, TempDirectory::Wide("locked"));
        locked.Create();
        chmod(mTemp.Path("locked").c_str(), 0500);
        EXPECT_THROW(File(locked, TempDirectory::Wide("x")).Create(), create_accessdenied_exception);
        chmod(mTemp.Path("locked").c_str(), 0700);
    }
}

TEST_F(FileSystemTest, RenameStaysInTheDirectory) {
    File file = mTemp.FileNamed("old.txt");
    WriteText(mTemp.Path("old.txt"), "content");
    File const before = file;
    file.Rename(TempDirectory::Wide("new.txt"));
    EXPECT_EQ(file, mTemp.FileNamed("new.txt"));
    EXPECT_FALSE(before.Exists());
    EXPECT_EQ(ReadText(mTemp.Path("new.txt")), "content");

    mTemp.FileNamed("taken.txt").Create();
    EXPECT_THROW(file.Rename(TempDirectory::Wide("taken.txt")), rename_file) << "no silent replacement";
    EXPECT_EQ(file, mTemp.FileNamed("new.txt")) << "a failed rename keeps the path";
    EXPECT_EQ(ReadText(mTemp.Path("new.txt")), "content");

    try {
        mTemp.FileNamed("ghost").Rename(TempDirectory::Wide("spirit"));
        FAIL() << "no exception";
    } catch (rename_file const& e) {
        EXPECT_EQ(e.GetNewName(), TempDirectory::Wide("spirit"));
        EXPECT_STREQ(e.what(), config::kMessage_FileRename);
    }
    EXPECT_THROW(file.Rename(TempDirectory::Wide("sub/x")), rename_file) << "a name, not a path";
}

TEST_F(FileSystemTest, TimesAreHundredNanosecondsSince1601) {
    std::uint64_t const before = NowAsFileTime();
    File const file = mTemp.FileNamed("timed");
    file.Create();
    std::uint64_t const after = NowAsFileTime();
    std::uint64_t const slack = 20000000;  // 2 s of file system granularity
    EXPECT_GE(file.Modified() + slack, before);
    EXPECT_LE(file.Modified(), after + slack);
    EXPECT_LE(file.Created(), file.Modified() + slack);
    EXPECT_GE(file.Created() + slack, before);
    EXPECT_GE(mDir.Modified() + slack, before);
    EXPECT_GT(mDir.Created(), 0u);
}

TEST_F(FileSystemTest, MissingThingsRaiseNotFound) {
    File const ghost = mTemp.FileNamed("ghost");
    EXPECT_THROW(ghost.Modified(), file_not_found_exception);
    EXPECT_THROW(ghost.Created(), file_not_found_exception);
    Dir const missing(mDir, TempDirectory::Wide("none"));
    EXPECT_THROW(missing.Modified(), dir_not_found_exception);
    try {
        missing.Created();
        FAIL() << "no exception";
    } catch (dir_exception const& e) {
        EXPECT_EQ(e.GetDir(), missing);
        EXPECT_STREQ(e.what(), config::kMessage_DirNotFound);
    }
    File const deeper(missing, TempDirectory::Wide("f"));
    EXPECT_THROW(deeper.Modified(), file_exception);
}

TEST_F(FileSystemTest, DirectoriesCreateRenameAndDelete) {
    Dir sub(mDir, TempDirectory::Wide("one"));
    sub.Create();
    EXPECT_NO_THROW(sub.Create()) << "an existing directory is fine";
    EXPECT_THROW(Dir(Dir(mDir, TempDirectory::Wide("no")), TempDirectory::Wide("two")).Create(), dir_exception);

    sub.Rename(TempDirectory::Wide("renamed"));
    EXPECT_EQ(sub, Dir(mDir, TempDirectory::Wide("renamed")));
    EXPECT_TRUE(sub.Exists());

    Dir(mDir, TempDirectory::Wide("other")).Create();
    EXPECT_THROW(sub.Rename(TempDirectory::Wide("other")), rename_dir_already_exists);
    EXPECT_THROW(Dir(mDir, TempDirectory::Wide("gone")).Rename(TempDirectory::Wide("x")), rename_dir);

    File(sub, TempDirectory::Wide("inside")).Create();
    EXPECT_THROW(sub.Delete(), dir_exception) << "not empty";
    File(sub, TempDirectory::Wide("inside")).Delete();
    sub.Delete();
    EXPECT_FALSE(sub.Exists());
    EXPECT_THROW(sub.Delete(), dir_exception);
}

TEST_F(FileSystemTest, OutputStreamWritesOverAnExistingFile) {
    File const file = mTemp.FileNamed("data");
    EXPECT_THROW(OPlatformByteStream{file}, file_not_found_exception) << "it does not create";
    EXPECT_THROW(OPlatformByteStream{File(Dir(mDir, TempDirectory::Wide("x")), TempDirectory::Wide("y"))},
                 file_not_found_exception);
    WriteText(mTemp.Path("data"), "0123456789");
    {
        OPlatformByteStream out(file);
        EXPECT_EQ(out.Length(), 10u);
        out << std::uint16_t(0x4142);
        out.WriteBlock(reinterpret_cast<unsigned char const*>("CD"), 2);
        EXPECT_EQ(out.CurPos(), 4u);
        out.CurPos(8);
        out.Put('!');
    }
    EXPECT_EQ(ReadText(mTemp.Path("data")), "ABCD4567!9") << "the tail stays";
    EXPECT_THROW(OPlatformByteStream{File(mDir, TempDirectory::Wide(""))}, io_error) << "a directory";
}

TEST_F(FileSystemTest, InputStreamReadsToTheEnd) {
    File const file = mTemp.FileNamed("in");
    EXPECT_THROW(IPlatformByteStream{file}, file_not_found_exception);
    file.Create();
    {
        IPlatformByteStream empty(file);
        EXPECT_EQ(empty.Length(), 0u);
        EXPECT_THROW(empty.Get(), eof_error);
        std::string copy;
        OStringByteStream out(copy);
        EXPECT_NO_THROW(out << empty) << "a copy of an empty file ends at once";
    }
    WriteText(mTemp.Path("in"), "abcdef");
    IPlatformByteStream in(file);
    EXPECT_EQ(in.Length(), 6u);
    EXPECT_EQ(in.Get(), 'a');
    unsigned char block[3];
    in.ReadBlock(block, 3);
    EXPECT_EQ(std::string(block, block + 3), "bcd");
    in.CurPos(5);
    EXPECT_EQ(in.Get(), 'f');
    EXPECT_THROW(in.Get(), eof_error);
    in.CurPos(4);
    EXPECT_THROW(in.ReadBlock(block, 3), eof_error) << "fewer bytes than asked";
}

TEST_F(FileSystemTest, SharingModesKeepWritersApart) {
    File const file = mTemp.FileNamed("shared");
    file.Create();
    {
        IPlatformByteStream reader1(file);
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
        EXPECT_THROW(moving.Rename(TempDirectory::Wide("moved")), rename_file);
    }
    EXPECT_NO_THROW(OPlatformByteStream{file}) << "closing releases the file";
    file.Delete();
}

TEST_F(FileSystemTest, BufferedStreamsOverFilesRoundTrip) {
    File const file = mTemp.FileNamed("values.bin");
    file.Create();
    Bytes const payload = quorel::testing::RandomBytes(100000, 11);
    {
        OPlatformByteStream target(file);
        OBufferedByteStream out(target, 32768, 4096);
        for (std::int32_t i = 0; i < 20000; ++i) {
            out << i << static_cast<double>(i) / 7;
        }
        out.WriteBlock(payload.data(), static_cast<std::uint32_t>(payload.size()));
        out.Flush();
    }
    IPlatformByteStream source(file);
    IBufferedByteStream in(source, 32768, 4096);
    for (std::int32_t i = 0; i < 20000; ++i) {
        std::int32_t value;
        double fraction;
        in >> value >> fraction;
        ASSERT_EQ(value, i);
        ASSERT_EQ(fraction, static_cast<double>(i) / 7);
    }
    Bytes back(payload.size());
    in.ReadBlock(back.data(), static_cast<std::uint32_t>(back.size()));
    EXPECT_EQ(back, payload);
    EXPECT_THROW(in.Get(), eof_error);
}

TEST(FileExceptions, CarryTheirMessagesAndObjects) {
    File const file(TempDirectory::Wide("C:\\f"));
    Dir const dir(TempDirectory::Wide("C:\\d"));
    UTF16String const name = TempDirectory::Wide("n");
    struct Case {
        std::exception const& mException;
        char const* mMessage;
    };
    Case const cases[] = {
        {file_exception(file), config::kMessage_FileError},
        {file_not_found_exception(file), config::kMessage_FileNotFound},
        {file_delete_exception(file), config::kMessage_FileDelete},
        {create_exception(file), config::kMessage_FileCreate},
        {create_fnf_exception(file), config::kMessage_FileCreateNotFound},
        {create_locked_exception(file), config::kMessage_FileCreateLocked},
        {create_accessdenied_exception(file), config::kMessage_FileCreateAccessDenied},
        {create_invalidpath_exception(file), config::kMessage_FileCreateInvalidPath},
        {rename_file(file, name), config::kMessage_FileRename},
        {dir_exception(dir), config::kMessage_DirError},
        {dir_not_found_exception(dir), config::kMessage_DirNotFound},
        {dir_delete_exception(dir), config::kMessage_DirDelete},
        {rename_dir(dir, name), config::kMessage_DirRename},
        {rename_dir_already_exists(dir, name), config::kMessage_DirRenameExists},
        {file_exception(file, "custom"), "custom"},
    };
    for (Case const& c : cases) {
        EXPECT_STREQ(c.mException.what(), c.mMessage) << "the constant, unexpanded";
    }
    rename_dir_already_exists const exists(dir, name);
    EXPECT_EQ(exists.GetNewName(), name);
    EXPECT_EQ(exists.GetDir(), dir);
    EXPECT_THROW(throw create_fnf_exception(file), create_exception) << "a host catches a family by its root";
    EXPECT_THROW(throw exists, rename_dir);
}

}  // namespace
