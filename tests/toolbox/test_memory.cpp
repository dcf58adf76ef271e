// Handles: live ones are real double pointers, everything else is noticed.
#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "memory/handles.h"

namespace toolbox {
namespace {

TEST(Handles, EmptyBlocksAndRefusedSizes) {
  const uint32_t before = handles::live_count();
  const Handle zero = handles::make(0);
  ASSERT_NE(nullptr, zero);
  EXPECT_NE(nullptr, *zero);
  EXPECT_EQ(0, handles::size(zero));
  const Handle empty = handles::make_empty();
  ASSERT_NE(nullptr, empty);
  EXPECT_EQ(nullptr, *empty);
  EXPECT_EQ(0, handles::size(empty));
  EXPECT_EQ(noErr, handles::resize(empty, 3));
  EXPECT_NE(nullptr, *empty);
  EXPECT_EQ(nullptr, handles::make(-1));
  EXPECT_EQ(before + 2, handles::live_count());
  handles::dispose(zero);
  handles::dispose(empty);
  EXPECT_EQ(before, handles::live_count());
}

TEST(Handles, KeepTheirContentsAndValueWhenTheyGrow) {
  const Handle handle = handles::make(4, handles::Contents::kZero);
  const uint8_t bytes[] = {1, 2, 3, 4};
  EXPECT_EQ(0, std::memcmp(*handle, "\0\0\0\0", 4));
  EXPECT_EQ(noErr, handles::assign(handle, bytes));
  EXPECT_EQ(noErr, handles::resize(handle, 100'000));
  EXPECT_EQ(0, std::memcmp(*handle, bytes, 4));
  EXPECT_EQ(100'000, handles::size(handle));
  EXPECT_EQ(memFullErr, handles::resize(handle, -5));
  EXPECT_EQ(100'000, handles::size(handle));
  EXPECT_EQ(noErr, handles::resize(handle, 2));
  EXPECT_EQ(0, std::memcmp(*handle, bytes, 2));
  handles::dispose(handle);
}

TEST(Handles, NumbersThatAreNoHandleAreNoticed) {
  const Handle live = handles::make(8);
  const Handle stale = handles::make(8);
  handles::dispose(stale);
  const Handle foreign[] = {
      stale, live + 1, reinterpret_cast<Handle>(reinterpret_cast<char*>(live) + 1),
      reinterpret_cast<Handle>(uintptr_t{1}), reinterpret_cast<Handle>(UINTPTR_MAX)};
  for (const Handle handle : foreign) {
    EXPECT_FALSE(handles::is_live(handle));
    EXPECT_EQ(0, handles::size(handle));
    EXPECT_EQ(memWZErr, handles::resize(handle, 4));
    handles::dispose(handle);
  }
  EXPECT_EQ(nilHandleErr, handles::resize(nullptr, 4));
  handles::dispose(nullptr);
  EXPECT_TRUE(handles::is_live(live));
  handles::dispose(live);
}

TEST(Handles, ADisposedHandleIsNotReusedAtOnce) {
  const Handle first = handles::make(1);
  handles::dispose(first);
  std::vector<Handle> later;
  for (int i = 0; i < 100; ++i) later.push_back(handles::make(1));
  EXPECT_FALSE(handles::is_live(first));
  for (const Handle handle : later) handles::dispose(handle);
}

}  // namespace
}  // namespace toolbox
