// Values in the hands of a program: calls, properties and their failures, over the built module.
#include <gtest/gtest.h>

#include "integration/whole_system.h"
#include "object/object.h"
#include "object/string.h"
#include "runtime.h"
#include "value.h"

namespace krz::test {
namespace {

class Embedding : public testing::Test {
 protected:
  Embedding() { prepare(runtime_); }

  Value open(const char* name) {
    return call(runtime_, "OpenMovie", {call(runtime_, "TestMovie", {name})});
  }

  // Outlives the runtime, which keeps the defaults of the declarations that it has parsed.
  struct NothingIsLeft {
    ~NothingIsLeft() {
      EXPECT_EQ(live_objects(), objects);
      EXPECT_EQ(live_strings(), strings);
      EXPECT_EQ(ToolboxLiveReferences(), references);
    }
    const int64_t objects = live_objects();
    const int64_t strings = live_strings();
    const uint32_t references = ToolboxLiveReferences();
  } check_;
  Runtime runtime_{RuntimeOptions()};
};

TEST_F(Embedding, MethodsAndPropertiesAnswerAsInScripts) {
  const Value track = open("edited").call("getvideotrackkrz", {1});
  EXPECT_EQ(track.type_name(), "QTTrackKRZ");
  EXPECT_EQ(track.get("MediaType").text(), "vide");
  EXPECT_EQ(track.get("Duration").integer(), 5100);
  EXPECT_TRUE(track.set("Layer", 7).ok());
  EXPECT_EQ(track.get("Layer").text(), "7");
  EXPECT_TRUE(open("edited").call("GetVideoTrackKRZ", {99}).is_nil());
}

TEST_F(Embedding, ByrefArgumentsAreReplaced) {
  const Value track = open("edited").call("GetVideoTrackKRZ", {1});
  std::vector<Value> arguments = {0, 0};
  EXPECT_TRUE(track.call("NextInterestingTimeKRZ", arguments).boolean());
  EXPECT_EQ(arguments[0].integer(), 300);
  EXPECT_EQ(arguments[1].integer(), 60);
}

TEST_F(Embedding, ArgumentsAreConvertedAndOverloadsChosen) {
  EXPECT_EQ(call(runtime_, "Left", {"movie", 3.9}).text(), "mov");
  EXPECT_EQ(call(runtime_, "Str", {int64_t{1} << 40}).text(), "1099511627776");
  EXPECT_EQ(Value(2.75).integer(), 2);
  EXPECT_EQ(Value("12").real(), 12);
  EXPECT_TRUE(Value(std::string("x")).ok());
  EXPECT_EQ(call(runtime_, "QTMetaDataKRZ.kUserDataTextAlbum").type_name(), "String");
  const Value parts = call(runtime_, "Split", {"a,b,c", ","});
  EXPECT_EQ(parts.type_name(), "String()");
  ASSERT_EQ(parts.size(), 3u);
  EXPECT_EQ(parts.at(2).text(), "c");
  EXPECT_EQ(parts.at(3).error(), "there is no element 3; the array has 3");
  const Value dictionary = create(runtime_, "Dictionary");
  EXPECT_EQ(create(runtime_, "FolderItem", {"/"}).type_name(), "FolderItem");
  EXPECT_TRUE(dictionary.ok());
}

TEST_F(Embedding, FailuresSayWhyAndStick) {
  const Value missing = call(runtime_, "OpenMovie", {"no.mov"});
  EXPECT_EQ(missing.error(), "IOException: no.mov: there is no such file; check the path");
  EXPECT_EQ(missing.call("GetVideoTrackKRZ", {1}).get("TrackID").error(), missing.error());
  EXPECT_EQ(call(runtime_, "Left", {missing, 1}).error(), missing.error());
  EXPECT_EQ(missing.get("Duration").integer(), 0);
  EXPECT_EQ(missing.type_name(), "");

  const Value movie = open("edited");
  const Value track = movie.call("GetVideoTrackKRZ", {1});
  const struct {
    Value answer;
    const char* error;
  } cases[] = {
      {call(runtime_, "OpneMovie", {"x"}),
       "there is nothing named OpneMovie; did you mean OpenMovie?"},
      {call(runtime_, "Nowhere.Name"), "there is nothing named Nowhere"},
      {create(runtime_, "QTTrackKZR"),
       "there is nothing named QTTrackKZR; did you mean QTTrackKRZ?"},
      {track.get("Duratoin"), "QTTrackKRZ has no member Duratoin; did you mean Duration?"},
      {track.set("Duration", 5), "QTTrackKRZ.Duration is read only"},
      {track.set("Layer", movie), "QTTrackKRZ.Layer does not take a value of type Movie"},
      {movie.call("GetVideoTrackKRZ", {1, true, 3}),
       "GetVideoTrackKRZ does not take these arguments"},
      {movie.call("GetVideoTrackKRZ", {track}), "GetVideoTrackKRZ does not take these arguments"},
      {Value(5).get("Duration"),
       "Duration is asked of a value of type Integer, which is no object"},
      {Value().get("Duration"), "Duration is asked of a value of type Nil, which is no object"},
      {Value(5).at(0), "an element is asked of a value of type Integer, which is no array"},
  };
  for (const auto& one : cases) {
    EXPECT_FALSE(one.answer.ok()) << one.error;
    EXPECT_TRUE(one.answer.error().starts_with(one.error)) << one.answer.error();
  }
}

TEST_F(Embedding, CopiesShareAnObjectThatDiesWithTheLast) {
  const int64_t before = live_objects();
  {
    Value movie = open("edited");
    const Value copy = movie;
    EXPECT_EQ(live_objects(), before + 1);
    movie = Value("another");
    EXPECT_EQ(copy.get("Duration").integer(), 5100);
    EXPECT_EQ(live_objects(), before + 1);
  }
  EXPECT_EQ(live_objects(), before);
}

}  // namespace
}  // namespace krz::test
