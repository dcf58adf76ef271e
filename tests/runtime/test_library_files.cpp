// Files below the classes: pieces read and written in any order, moving between volumes, and the
// standard input.
#include <fcntl.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <memory>
#include <random>

#include "host_test.h"
#include "library/buffered_file.h"
#include "library/file_operations.h"
#include "value.h"

namespace krz {
namespace {

class LibraryFileTest : public HostTest {
 protected:
  static std::string scratch_folder(const std::string& parent) {
    std::string path = parent + "/krz-files-XXXXXX";
    return ::mkdtemp(path.data());
  }
  static std::unique_ptr<BufferedFile> open(const std::string& path, BufferedFile::Mode mode) {
    return std::unique_ptr<BufferedFile>(BufferedFile::open(path, mode));
  }

  const std::string folder_ = scratch_folder(testing::TempDir());
  const std::string path_ = folder_ + "/file";
  ~LibraryFileTest() override { std::filesystem::remove_all(folder_); }
};

TEST_F(LibraryFileTest, ReadingWritingAndSeekingInAnyOrderIsLikeAnArrayOfBytes) {
  std::mt19937 random(7);
  const auto below = [&random](size_t end) { return random() % end; };
  std::string model;
  size_t place = 0;
  auto file = open(path_, BufferedFile::Mode::kCreate);
  ASSERT_TRUE(file);
  for (int step = 0; step < 3000; ++step) {
    // Mostly small pieces, some larger than the buffer.
    const size_t count = below(10) == 0 ? below(200'000) : below(300);
    switch (below(4)) {
      case 0: {
        std::string bytes(count, '\0');
        for (char& c : bytes) c = static_cast<char>(random());
        ASSERT_TRUE(file->write(bytes));
        if (model.size() < place + count) model.resize(place + count);
        model.replace(place, count, bytes);
        place += count;
        break;
      }
      case 1: {
        std::string bytes(count, '\0');
        bytes.resize(file->read(bytes.data(), count));
        const std::string expected = place < model.size() ? model.substr(place, count) : "";
        ASSERT_TRUE(bytes == expected) << "step " << step;
        place += bytes.size();
        break;
      }
      case 2:
        place = below(std::min<size_t>(model.size(), 1 << 20) + 10);
        ASSERT_TRUE(file->seek(static_cast<int64_t>(place)));
        break;
      default:
        ASSERT_EQ(file->length(), static_cast<int64_t>(model.size()));
    }
    ASSERT_EQ(file->position(), static_cast<int64_t>(place)) << "step " << step;
  }
  file.reset();
  file = open(path_, BufferedFile::Mode::kRead);
  std::string whole(model.size() + 1, '\0');
  whole.resize(file->read(whole.data(), whole.size()));
  EXPECT_TRUE(whole == model);
}

TEST_F(LibraryFileTest, WhatIsAppendedStandsBehindWhatIsThere) {
  open(path_, BufferedFile::Mode::kCreate)->write("abc");
  auto file = open(path_, BufferedFile::Mode::kAppend);
  EXPECT_EQ(file->position(), 3);
  file->write("def");
  EXPECT_EQ(file->length(), 6);
}

TEST_F(LibraryFileTest, AFileMovesToAnotherVolumeWithItsBytesAndPermissions) {
  struct stat here {};
  struct stat there {};
  const std::string other = "/dev/shm";
  ASSERT_EQ(::stat(folder_.c_str(), &here), 0);
  if (::stat(other.c_str(), &there) != 0 || here.st_dev == there.st_dev)
    GTEST_SKIP() << "there is no second volume at " << other;
  const std::string target_folder = scratch_folder(other);
  const std::string target = target_folder + "/moved";
  const std::string bytes(600'000, 'x');
  open(path_, BufferedFile::Mode::kCreate)->write(bytes);
  ::chmod(path_.c_str(), 0640);
  move_file(path_, target);
  EXPECT_EQ(take_message(), "");
  EXPECT_FALSE(std::filesystem::exists(path_));
  ASSERT_EQ(::stat(target.c_str(), &there), 0);
  EXPECT_EQ(there.st_size, 600'000);
  EXPECT_EQ(there.st_mode & 0777, 0640u);

  open(path_, BufferedFile::Mode::kCreate)->write("again");
  move_file(path_, target);
  EXPECT_NE(take_message().find("File exists"), std::string::npos);
  EXPECT_TRUE(std::filesystem::exists(path_)) << "what is not moved stays";
  std::filesystem::remove_all(target_folder);
}

TEST_F(LibraryFileTest, OnlyFilesAreCopied) {
  ASSERT_EQ(::mkfifo(path_.c_str(), 0600), 0);
  copy_file(path_, folder_ + "/copy");
  EXPECT_NE(take_message().find("cannot copy"), std::string::npos) << "and nothing waits";
  EXPECT_FALSE(std::filesystem::exists(folder_ + "/copy"));
}

TEST_F(LibraryFileTest, StandardInputIsReadLineByLine) {
  open(path_, BufferedFile::Mode::kCreate)->write("one\r\n\ntwo");
  const int before = ::dup(STDIN_FILENO);
  const int file = ::open(path_.c_str(), O_RDONLY);
  ASSERT_GE(file, 0);
  ::dup2(file, STDIN_FILENO);
  std::clearerr(stdin);
  for (const char* line : {"one", "", "two"}) {
    EXPECT_EQ(call(*runtime_, "EndOfInput").text(), "False");
    EXPECT_EQ(call(*runtime_, "Input", {"? "}).text(), line);
  }
  EXPECT_EQ(call(*runtime_, "EndOfInput").text(), "True");
  EXPECT_EQ(call(*runtime_, "Input").text(), "");
  ::dup2(before, STDIN_FILENO);
  ::close(before);
  ::close(file);
  std::clearerr(stdin);
}

}  // namespace
}  // namespace krz
