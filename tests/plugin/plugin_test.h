// The frame of tests on the module's own code: a fresh host and toolbox for each, and nothing left
// alive after it.
#pragma once

#include <gtest/gtest.h>

#include "plugin/fake_host.h"
#include "plugin/fake_toolbox.h"

extern "C" void REALPluginMain(REALResolver resolver);

class PluginTest : public testing::Test {
 protected:
  void SetUp() override {
    fake_host::start();
    fake_toolbox::start();
    load();
  }

  void TearDown() override {
    EXPECT_EQ(fake_host::live_objects(), 0);
    EXPECT_EQ(fake_host::live_strings(), 0);
    EXPECT_EQ(fake_host::live_string_data(), 0);
    EXPECT_EQ(fake_toolbox::live_handles(), 0);
    EXPECT_EQ(fake_toolbox::handle_locks(), 0);
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
