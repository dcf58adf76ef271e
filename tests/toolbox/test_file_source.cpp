// Files as sources: what cannot be opened, files that change underneath, and the window over them.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "file/file_source.h"
#include "file/window_source.h"
#include "scratch_folder.h"
#include "test_bytes.h"

namespace toolbox {
namespace {

TEST(FileSource, SaysWhyAFileCannotBeOpened) {
  ScratchFolder folder;
  const std::string locked = folder.write("locked.mov", Bytes(8));
  ::chmod(locked.c_str(), 0);
  const std::string pipe = folder.path("pipe.mov");
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  const struct {
    std::string path;
    OSErr code;
    const char* text;
  } cases[] = {
      {folder.path("missing.mov"), fnfErr, "missing.mov: there is no such file"},
      {folder.path(""), fnfErr, "this is a folder"},
      {pipe, fnfErr, "pipe.mov: this is a device or a pipe"},
      {locked + "/inside.mov", fnfErr, "no such file"},
      {"", bdNamErr, "the path is empty"},
      {std::string("a\0b", 3), bdNamErr, "zero character"},
      {folder.path(std::string(300, 'x')), bdNamErr, "cannot be followed"},
  };
  for (const auto& each : cases) {
    const auto source = FileSource::open(each.path);
    ASSERT_FALSE(source.ok()) << each.path;
    EXPECT_EQ(source.status().code(), each.code) << source.status().message();
    EXPECT_NE(source.status().message().find(each.text), std::string::npos)
        << source.status().message();
  }
  if (::geteuid() != 0) {
    EXPECT_EQ(FileSource::open(locked).status().code(), permErr);
  }
}

TEST(FileSource, FileShortenedMeanwhileIsAnError) {
  ScratchFolder folder;
  const std::string path = folder.write("shrinks.mov", Bytes(10000, 7));
  auto source = FileSource::open(path);
  ASSERT_TRUE(source.ok());
  Bytes bytes(6000);
  EXPECT_TRUE(source.value()->read(4000, bytes).ok());
  ASSERT_EQ(::truncate(path.c_str(), 5000), 0);
  const Status status = source.value()->read(4000, bytes);
  EXPECT_EQ(status.code(), eofErr);
  EXPECT_NE(status.message().find("became shorter"), std::string::npos) << status.message();
}

TEST(FileSource, ReadsNothingBeyondItsEnd) {
  ScratchFolder folder;
  const auto source = FileSource::open(folder.write("ten.mov", Bytes(10)));
  ASSERT_TRUE(source.ok());
  uint8_t bytes[11];
  EXPECT_TRUE(source.value()->read(10, std::span(bytes, 0)).ok());
  EXPECT_EQ(source.value()->read(0, bytes).code(), eofErr);
  EXPECT_EQ(source.value()->read(UINT64_MAX, std::span(bytes, 1)).code(), eofErr);
}

class WindowSourceTest : public testing::Test {
 protected:
  WindowSourceTest() {
    Bytes bytes(200000);
    for (size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<uint8_t>(i * 31 >> 3);
    all_ = bytes;
    window_ = std::make_unique<WindowSource>(std::make_unique<CountedSource>(
        std::make_unique<MemorySource>(std::move(bytes), "memory"), count_));
  }
  void expect_same(uint64_t offset, size_t size) {
    Bytes bytes(size);
    ASSERT_TRUE(window_->read(offset, bytes).ok());
    EXPECT_TRUE(
        std::equal(bytes.begin(), bytes.end(), all_.begin() + static_cast<ptrdiff_t>(offset)));
  }
  Bytes all_;
  ReadCount count_;
  std::unique_ptr<WindowSource> window_;
};

TEST_F(WindowSourceTest, GivesTheBytesOfTheSourceBeneath) {
  uint64_t place = 1;
  for (int i = 0; i < 3000; ++i) {
    place = place * 6364136223846793005 + 1442695040888963407;
    const uint64_t size = (place >> 33) % (i % 10 == 0 ? 20000 : 100);
    expect_same((place >> 20) % (all_.size() - size), size);
    if (i == 1000) {
      ASSERT_TRUE(window_->pin(50000, 30000).ok());
    }
    if (i == 2000) {
      ASSERT_TRUE(window_->pin(0, 10).ok());
    }
  }
  Bytes beyond(2);
  EXPECT_EQ(window_->read(all_.size() - 1, beyond).code(), eofErr);
  EXPECT_FALSE(window_->pin(all_.size(), 1).ok());
  expect_same(0, 10);
}

TEST_F(WindowSourceTest, SmallStepsForwardCostFewReads) {
  for (uint64_t offset = 0; offset + 16 <= all_.size(); offset += 100) expect_same(offset, 16);
  EXPECT_LE(count_.reads, 10u);
}

TEST_F(WindowSourceTest, JumpsReadLittle) {
  for (uint64_t offset = 0; offset < all_.size(); offset += 25000) expect_same(offset, 16);
  EXPECT_LE(count_.bytes, 8 * WindowSource::kSmallestWindow);
}

}  // namespace
}  // namespace toolbox
