// Host services, and what they answer on hosts that lack them.
#include "plugin/host/entries.h"

#include <malloc.h>

#include <new>

#include "plugin/host/class_table.h"
#include "plugin/host/encodings.h"
#include "plugin/host/registration.h"
#include "plugin/host/resolver.h"
#include "plugin/plugin_test.h"

namespace {

using fake_host::host;
using Entries = PluginTest;

REALpictureStruct* some_picture() { return reinterpret_cast<REALpictureStruct*>(uintptr_t{16}); }

TEST_F(Entries, OnlyTheLowEightBitsOfATruthValueCount) {
  REALpictureDescription description = {};
  EXPECT_TRUE(krz::REALLockPictureDescription(some_picture(), &description, 10));
  EXPECT_EQ(description.type, 10);
  host().fail_picture_locks = true;
  EXPECT_FALSE(krz::REALLockPictureDescription(some_picture(), &description, 10));
}

TEST_F(Entries, AFailedPictureLockIsUndoneOnHostsBefore2012) {
  REALpictureDescription description = {};
  host().fail_picture_locks = true;
  const std::vector<std::string> undone = {"lock picture as 8", "unlock picture"};
  const std::vector<std::string> left = {"lock picture as 8"};
  const struct {
    double version;
    const std::vector<std::string>& calls;
  } cases[] = {{0.0, undone}, {2011.4, undone}, {2012.0, left}, {2013.0, left}};
  for (const auto& one : cases) {
    SCOPED_TRACE(one.version);
    load_into_version(one.version);
    host().calls.clear();
    EXPECT_FALSE(krz::REALLockPictureDescriptionX(some_picture(), &description, 8));
    EXPECT_EQ(host().calls, one.calls);
  }
  host().fail_picture_locks = false;
  host().calls.clear();
  load_into_version(0.0);
  host().calls.clear();
  EXPECT_TRUE(krz::REALLockPictureDescriptionX(some_picture(), &description, 8));
  EXPECT_EQ(host().calls, left);
}

TEST_F(Entries, TheOlderPictureLockHasAnEntryOfItsOwn) {
  REALpictureDescription description = {};
  host().calls.clear();
  krz::REALLockPictureDescription(some_picture(), &description);
  EXPECT_EQ(host().calls, std::vector<std::string>{"lock picture"});
}

TEST_F(Entries, AHostWithoutAVersionIsTheOldest) {
  host().withheld = {"REALGetRBVersion"};
  load();
  EXPECT_EQ(krz::rbversion, 0.0);
  host().withheld.clear();
  load();
  EXPECT_EQ(krz::rbversion, 2015.0);
}

TEST_F(Entries, AnEntryIsLookedUpOnFirstUseAndKept) {
  krz::HostEntry<int32_t()> entry("REALenterMovies");
  host().enter_movies_answer = 7;
  host().withheld = {"REALenterMovies"};
  host().asked.clear();
  EXPECT_EQ(entry(), 0);
  host().withheld.clear();
  EXPECT_EQ(entry(), 7);
  EXPECT_EQ(entry(), 7);
  EXPECT_EQ(fake_host::times_asked("REALenterMovies"), 2);
}

TEST_F(Entries, WhatTheHostAnsweredForMoviesIsKept) {
  krz::REALenterMoviesResult = 0;
  host().enter_movies_answer = -2;
  host().in_runtime = false;
  load();
  EXPECT_EQ(krz::REALenterMoviesResult, 0);
  host().in_runtime = true;
  load();
  EXPECT_EQ(krz::REALenterMoviesResult, -2);
}

int32_t out_of_memory(REALobject) { throw std::bad_alloc(); }
void out_of_memory_quietly(REALobject, bool) { throw std::bad_alloc(); }
bool opposite(REALobject, bool value) { return !value; }

TEST_F(Entries, NoExceptionReachesTheHost) {
  EXPECT_EQ(krz::Shield<&out_of_memory>::call(nullptr), 0);
  krz::Shield<&out_of_memory_quietly>::call(nullptr, 1);
  EXPECT_EQ(krz::Shield<&opposite>::call(nullptr, 0x80), 0) << "any byte but zero is true";
}

std::string text_of(const REALstringData& data) {
  return {static_cast<const char*>(data.data), static_cast<size_t>(data.length)};
}

/// The four bytes behind the text.
std::string end_of(const REALstringData& data) {
  return {static_cast<const char*>(data.data) + data.length, 4};
}

const std::string kFourZeros(4, '\0');

/// Everything that happens on a host without "PluginGetStringData".
void read_string_data_from_older_entries() {
  fake_host::start();
  host().withheld = {"PluginGetStringData", "PluginDisposeStringData"};
  REALPluginMain(fake_host::resolve);
  const REALstring string = fake_host::make_string("caf\x8E", krz::kMacRoman);

  REALstringData data = {};
  ASSERT_TRUE(krz::REALGetStringData(string, krz::kMacRoman, &data)) << "the encoding that it has";
  EXPECT_EQ(text_of(data), "caf\x8E");
  EXPECT_EQ(end_of(data), kFourZeros);
  EXPECT_EQ(data.encoding, krz::kMacRoman);
  krz::REALDisposeStringData(&data);

  ASSERT_TRUE(krz::REALGetStringData(string, krz::kUTF8, &data)) << "another encoding";
  EXPECT_EQ(text_of(data), "caf\xC3\xA9");
  EXPECT_EQ(end_of(data), kFourZeros);
  EXPECT_EQ(data.encoding, krz::kUTF8);
  krz::REALDisposeStringData(&data);

  // As stored: the length that stands in the record sizes the buffer, the text's own length is what
  // is told.
  for (const int32_t room : {0, 4, 1000, -1}) {
    SCOPED_TRACE(room);
    data = {.data = nullptr, .length = room, .encoding = 0};
    ASSERT_TRUE(krz::REALGetStringData(string, kEncodingUnknown, &data));
    EXPECT_EQ(text_of(data), "caf\x8E");
    EXPECT_EQ(end_of(data), kFourZeros);
    EXPECT_EQ(data.encoding, kEncodingUnknown);
    if (room > 0) {
      EXPECT_GE(malloc_usable_size(data.data), static_cast<size_t>(room) + 4);
    }
    krz::REALDisposeStringData(&data);
  }

  int untouched = 0;
  data = {.data = &untouched, .length = 77, .encoding = 99};
  EXPECT_FALSE(krz::REALGetStringData(nullptr, krz::kUTF8, &data));
  EXPECT_FALSE(krz::REALGetStringData(nullptr, kEncodingUnknown, &data));
  EXPECT_EQ(data.data, &untouched);
  EXPECT_EQ(data.length, 77);
  EXPECT_EQ(data.encoding, 99u);

  EXPECT_EQ(fake_host::times_asked("REALLoadGlobalMethod"), 1);
  EXPECT_EQ(fake_host::times_asked("StringGetCString"), 1);
  fake_host::unlock(string);
  EXPECT_EQ(fake_host::live_strings(), 0) << "the converted string was not given back";
}

TEST(StringDataOfOlderHosts, IsTheTextAndFourZeroBytes) {
  IN_FRESH_PROCESS(read_string_data_from_older_entries());
}

void read_string_data_without(const std::string& entry, uint32_t encoding) {
  fake_host::start();
  host().withheld = {"PluginGetStringData", entry};
  REALPluginMain(fake_host::resolve);
  const REALstring string = fake_host::make_string("text", krz::kMacRoman);
  REALstringData data = {};
  EXPECT_FALSE(krz::REALGetStringData(string, encoding, &data));
  EXPECT_EQ(data.data, nullptr);
  fake_host::unlock(string);
}

TEST(StringDataOfOlderHosts, FailsWithoutOneOfTheOlderEntries) {
  IN_FRESH_PROCESS(read_string_data_without("StringGetCString", krz::kMacRoman));
  IN_FRESH_PROCESS(read_string_data_without("REALLoadGlobalMethod", krz::kMacRoman));
  IN_FRESH_PROCESS(read_string_data_without("REALConvertString", krz::kUTF8));
}

}  // namespace
