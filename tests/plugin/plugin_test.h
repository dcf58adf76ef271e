// The frame of tests on the module's own code: a fresh host for each, and nothing left alive after
// it.
#pragma once

#include <Toolbox/Toolbox.h>
#include <gtest/gtest.h>

#include "plugin/fake_host.h"
#include "plugin/fake_toolbox.h"
#include "toolbox/opened_movie.h"
#include "toolbox/test_movies.h"

extern "C" void REALPluginMain(REALResolver resolver);

using fake_toolbox::called;
using Calls = std::vector<std::string>;

class PluginTest : public testing::Test {
 protected:
  void SetUp() override {
    fake_host::start();
    fake_toolbox::start();
    load();
    handles_ = ToolboxLiveHandles();
  }

  void TearDown() override {
    EXPECT_EQ(fake_host::live_objects(), 0);
    EXPECT_EQ(fake_host::live_strings(), 0);
    EXPECT_EQ(fake_host::live_string_data(), 0);
    EXPECT_EQ(ToolboxLiveHandles(), handles_);
    EXPECT_EQ(fake_toolbox::toolbox().locks, 0);
  }

  /// Loads the module into the host as it now is.
  void load() {
    fake_host::host().classes.clear();
    fake_host::host().extensions.clear();
    REALPluginMain(fake_host::resolve);
  }
  void load_into_version(double version) {
    fake_host::host().version = version;
    load();
  }

  /// Calls a row of a class; calls of the toolbox are those since then.
  template <class Result, class Receiver, class... Arguments>
  static Result call(Receiver* receiver, const char* class_name, const char* declaration,
                     Arguments... arguments) {
    fake_toolbox::toolbox().calls.clear();
    const MethodEntry& row = fake_host::method(class_name, declaration);
    return fake_host::function<Result(Receiver*, Arguments...)>(row.function)(receiver,
                                                                              arguments...);
  }

 private:
  uint32_t handles_ = 0;
};

/// With a movie of the toolbox: 320 by 240 pixels of video, and sound, of ten seconds each.
class MovieTest : public PluginTest {
 protected:
  void SetUp() override {
    PluginTest::SetUp();
    movie_ = fake_host::make_movie(static_cast<uint32_t>(reinterpret_cast<uintptr_t>(opened())));
  }
  void TearDown() override {
    EXPECT_EQ(fake_host::locks_of(fake_host::as_object(movie_)), 1);
    fake_host::unlock(fake_host::as_object(movie_));
    PluginTest::TearDown();
  }
  Movie opened() const { return opened_; }
  Track track(SInt32 index) const { return opened_.track(index); }

  const toolbox::testing::OpenedTestMovie opened_{toolbox::test_movie("two-tracks")};
  REALmovieStruct* movie_ = nullptr;
};

/// Runs the block in a process of its own, where no host entry has been looked up yet.
#define IN_FRESH_PROCESS(block)                   \
  GTEST_FLAG_SET(death_test_style, "threadsafe"); \
  EXPECT_EXIT(                                    \
      {                                           \
        block;                                    \
        std::_Exit(testing::Test::HasFailure());  \
      },                                          \
      testing::ExitedWithCode(0), "")
