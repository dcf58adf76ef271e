// What the runtime's tests share: a runtime whose strings and objects must all be gone at the end,
// and short ways to make slots.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "object/convert.h"
#include "object/exceptions.h"
#include "object/object.h"
#include "object/string.h"
#include "registry/invoke.h"
#include "registry/registry.h"
#include "runtime.h"

namespace krz {

inline Slot integer_slot(int32_t value) {
  Slot slot;
  slot.integer = value;
  return slot;
}
inline Slot int64_slot(int64_t value) {
  Slot slot;
  slot.int64 = value;
  return slot;
}
inline Slot real_slot(double value) {
  Slot slot;
  slot.real = value;
  return slot;
}
inline Slot boolean_slot(bool value) {
  Slot slot;
  slot.boolean = value;
  return slot;
}
inline Slot object_slot(REALobject value) {
  Slot slot;
  slot.object = value;
  return slot;
}
inline Slot string_slot(REALstring value) {
  Slot slot;
  slot.string = value;
  return slot;
}

/// A string that is given back at the end of its scope.
class OwnedString {
 public:
  OwnedString(std::string_view text, uint32_t text_encoding = encoding::kUtf8)
      : string_(make_string(text, text_encoding)) {}
  explicit OwnedString(REALstring string) : string_(string) {}
  ~OwnedString() { unlock_string(string_); }
  OwnedString(const OwnedString&) = delete;
  OwnedString& operator=(const OwnedString&) = delete;
  operator REALstring() const { return string_; }
  std::string_view bytes() const { return string_bytes(string_); }

 private:
  REALstring string_;
};

/// Counts strings and objects before and after.
class CountedTest : public ::testing::Test {
 protected:
  void TearDown() override {
    EXPECT_EQ(live_strings(), strings_before_) << "strings are left";
    EXPECT_EQ(live_objects(), objects_before_) << "objects are left";
  }

 private:
  int64_t strings_before_ = live_strings();
  int64_t objects_before_ = live_objects();
};

/// A runtime with the library in it; what it prints is kept.
class HostTest : public CountedTest {
 protected:
  void SetUp() override { start({}); }
  void TearDown() override {
    EXPECT_FALSE(exception_pending()) << take_message();
    runtime_.reset();
    CountedTest::TearDown();
  }

  void start(RuntimeOptions options) {
    options.standard_output = [this](std::string_view text) { output_.append(text); };
    options.standard_error = [this](std::string_view text) { errors_.append(text); };
    runtime_.reset();
    runtime_ = std::make_unique<Runtime>(std::move(options));
  }

  Registry& registry() { return runtime_->registry(); }

  REALobject create(const char* class_name) {
    const ClassInfo* const class_info = registry().find_class(class_name);
    return class_info ? new_instance(*class_info) : nullptr;
  }

  /// The class and message of the pending exception, which is pending no more; empty when there is
  /// none.
  std::string take_message() {
    const REALobject exception = take_pending_exception();
    if (!exception) return {};
    const std::string text = exception->class_info->name() + ": " + exception_message(exception);
    unlock_object(exception);
    return text;
  }

  std::unique_ptr<Runtime> runtime_;
  std::string output_;
  std::string errors_;
};

}  // namespace krz
