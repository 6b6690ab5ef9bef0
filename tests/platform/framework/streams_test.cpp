#include "platform/framework/streams.h"

#include <sys/stat.h>

#include "tests/platform/framework/on_disk.h"
#include "tests/support/limits.h"

namespace zephin::test {
namespace {

namespace fs = std::filesystem;

using Streams = OnDisk;

TEST_F(Streams, ReadUpToTheEndOfTheFile) {
  const std::string content = std::string(200'000, 'x') + std::string("\0\xff", 2);
  WriteFile(base / "file", content);
  const Ref<BinaryStream> stream = BinaryStream::Open(At("file"), false);
  EXPECT_EQ(stream->Length(), 200'002);
  EXPECT_EQ(stream->Read(-1).Bytes(), "");
  EXPECT_EQ(stream->Read(199'999).Size(), 199'999U);
  const String rest = stream->Read(INT64_MAX);
  EXPECT_EQ(rest.Bytes(), std::string("x\0\xff", 3));
  EXPECT_EQ(rest.DeclaredEncoding(), Encoding::None);
  EXPECT_FALSE(stream->Failed());
  // The system reports a length of 0 for this file.
  EXPECT_EQ(At("/proc/version")->OpenAsBinaryFile(false)->Read(INT64_MAX).Bytes(),
            ReadFile("/proc/version"));
}

TEST_F(Streams, ContinueToReadADeletedFile) {
  WriteFile(base / "file", "before");
  const Ref<FolderItem> item = At("file");
  const Ref<BinaryStream> input = item->OpenAsBinaryFile(false);
  item->Delete();
  WriteFile(base / "file", "after");
  EXPECT_EQ(input->Read(input->Length()).Bytes(), "before");
}

TEST_F(Streams, NewFileReplacesLinksAndNeverWritesThroughThem) {
  WriteFile(base / "users", "precious");
  WriteFile(base / "file", "old and longer");
  fs::permissions(base / "file", fs::perms(0444));
  fs::create_symlink("users", base / "link");
  fs::create_symlink("none", base / "dangling");
  fs::create_hard_link(base / "users", base / "hard");
  const PlainUser user(base);
  for (const char* name : {"file", "link", "dangling", "hard"}) {
    const Ref<BinaryStream> output = At(name)->CreateBinaryFile("");
    ASSERT_FALSE(output.IsNil()) << name;
    output->Write("new");
    output->Close();
  }
  const std::map<std::string, std::string> expected{{"users", "precious"},
                                                    {"file", "new"},
                                                    {"link", "new"},
                                                    {"dangling", "new"},
                                                    {"hard", "new"}};
  EXPECT_EQ(Tree(base), expected);
}

TEST_F(Streams, FileThatCannotBeDeletedIsEmptiedUnlessItHasOtherNames) {
  WriteFile(base / "folder/file", "old");
  WriteFile(base / "users", "precious");
  fs::create_symlink("../users", base / "folder/link");
  fs::create_hard_link(base / "users", base / "folder/hard");
  const PlainUser user(base);
  fs::permissions(base / "folder", fs::perms(0555));
  EXPECT_FALSE(At("folder/file")->CreateBinaryFile("").IsNil());
  EXPECT_TRUE(At("folder/link")->CreateBinaryFile("").IsNil());
  EXPECT_TRUE(At("folder/hard")->CreateBinaryFile("").IsNil());
  fs::permissions(base / "folder", fs::perms(0755));
  EXPECT_EQ(ReadFile(base / "folder/file"), "");
  EXPECT_EQ(ReadFile(base / "users"), "precious");
}

TEST_F(Streams, AreNilForAnythingButPlainFiles) {
  fs::create_directory(base / "folder");
  fs::create_symlink("folder", base / "link");
  mkfifo((base / "pipe").c_str(), 0600);
  for (const char* name : {"folder", "link", "pipe", "none/new", "/dev/null"}) {
    const Ref<FolderItem> item = At(name);
    EXPECT_TRUE(item->OpenAsBinaryFile(false).IsNil()) << name;
    EXPECT_TRUE(item->OpenAsBinaryFile(true).IsNil()) << name;
    EXPECT_TRUE(item->CreateBinaryFile("").IsNil()) << name;
    EXPECT_TRUE(TextOutputStream::Append(item).IsNil()) << name;
    EXPECT_TRUE(TextInputStream::Open(item).IsNil()) << name;
  }
  EXPECT_TRUE(At("none")->OpenAsBinaryFile(true).IsNil());
  EXPECT_FALSE(At("none")->Exists()) << "only to be opened";
}

TEST_F(Streams, ReportAFullDisk) {
  const FullDisk full(100'000);
  const Ref<BinaryStream> stream = At("file")->CreateBinaryFile("");
  stream->Write(Utf8(std::string(100'000, 'x')));
  EXPECT_FALSE(stream->Failed());
  stream->Write("x");
  EXPECT_TRUE(stream->Failed());
  EXPECT_EQ(At("file")->Length(), 100'000);
}

TEST_F(Streams, TextIsAppendedInLinesAndReadUnchanged) {
  for (const char* line : {"one", "", "two\xff"}) {
    TextOutputStream::Append(At("log"))->WriteLine(line);
  }
  const String text = TextInputStream::Open(At("log"))->ReadAll();
  EXPECT_EQ(text.Bytes(), "one\n\ntwo\xff\n");
  EXPECT_EQ(text.DeclaredEncoding(), Encoding::None);
}

}  // namespace
}  // namespace zephin::test
