// The methods added to the host's movies.
#include "plugin/plugin_test.h"

namespace {

using fake_toolbox::toolbox;
using Calls = std::vector<std::string>;

class Movies : public PluginTest {
 protected:
  void SetUp() override {
    PluginTest::SetUp();
    movie_ = fake_host::make_movie(3);
    closed_movie_ = fake_host::make_movie(0);
  }
  void TearDown() override {
    EXPECT_EQ(fake_host::locks_of(fake_host::as_object(movie_)), 1);
    fake_host::unlock(fake_host::as_object(movie_));
    fake_host::unlock(fake_host::as_object(closed_movie_));
    PluginTest::TearDown();
  }

  template <class Result, class... Arguments>
  static Result call(REALmovieStruct* movie, const char* declaration, Arguments... arguments) {
    toolbox().calls.clear();
    const MethodEntry& row = fake_host::method("movie", declaration);
    return fake_host::function<Result(REALmovieStruct*, Arguments...)>(row.function)(movie,
                                                                                     arguments...);
  }

  REALmovieStruct* movie_ = nullptr;
  REALmovieStruct* closed_movie_ = nullptr;  // no movie of the toolbox is behind it
};

TEST_F(Movies, CountTheirTracks) {
  toolbox().answers["GetMovieTrackCount"] = 2;
  EXPECT_EQ(call<int32_t>(movie_, "TrackCountKRZ as integer"), 2);
  EXPECT_EQ(toolbox().calls, Calls{"GetMovieTrackCount(3)"});
  for (REALmovieStruct* none : {closed_movie_, static_cast<REALmovieStruct*>(nullptr)}) {
    EXPECT_EQ(call<int32_t>(none, "TrackCountKRZ as integer"), -1);
    EXPECT_EQ(toolbox().calls, Calls{});
  }
}

TEST_F(Movies, FindTracksByPlaceAndID) {
  const struct {
    const char* declaration;
    const char* call;
  } cases[] = {{"GetTrackIndexKRZ(index as integer) as QTTrackKRZ", "GetMovieIndTrack"},
               {"GetTrackIDKRZ(id as integer) as QTTrackKRZ", "GetMovieTrack"}};
  for (const auto& one : cases) {
    SCOPED_TRACE(one.declaration);
    EXPECT_EQ(call<REALobject>(movie_, one.declaration, 0), nullptr);
    EXPECT_EQ(toolbox().calls, Calls{std::string(one.call) + "(3, 0)"});
    toolbox().answers[one.call] = 9;
    const REALobject track = call<REALobject>(movie_, one.declaration, 4);
    ASSERT_TRUE(track);
    EXPECT_EQ(fake_host::field<int32_t>(track, "QTTrackKRZ", "TrackHandle"), 9);
    EXPECT_EQ(fake_host::field<REALmovieStruct*>(track, "QTTrackKRZ", "Movie"), movie_);
    fake_host::unlock(track);
    EXPECT_EQ(call<REALobject>(closed_movie_, one.declaration, 4), nullptr);
    EXPECT_EQ(call<REALobject>(nullptr, one.declaration, 4), nullptr);
    EXPECT_EQ(toolbox().calls, Calls{});
  }
}

TEST_F(Movies, FindTracksByType) {
  const struct {
    const char* declaration;
    OSType type;
  } cases[] = {
      {"GetVideoTrackKRZ(index as integer, EnabledTracksOnly as boolean = false) as QTTrackKRZ",
       VideoMediaType},
      {"GetSoundTrackKRZ(index as integer, EnabledTracksOnly as boolean = false) as QTTrackKRZ",
       SoundMediaType}};
  for (const auto& one : cases) {
    SCOPED_TRACE(one.declaration);
    const std::string opening = "GetMovieIndTrackType(3, 2, " + std::to_string(one.type) + ", ";
    EXPECT_EQ(call<REALobject>(movie_, one.declaration, 2, Boolean{0}), nullptr);
    EXPECT_EQ(toolbox().calls, Calls{opening + "1)"});
    // Any byte but zero is true.
    for (const Boolean yes : {Boolean{1}, Boolean{0x80}}) {
      EXPECT_EQ(call<REALobject>(movie_, one.declaration, 2, yes), nullptr);
      EXPECT_EQ(toolbox().calls, Calls{opening + "5)"});
    }
    EXPECT_EQ(call<REALobject>(nullptr, one.declaration, 2, Boolean{0}), nullptr);
    EXPECT_EQ(toolbox().calls, Calls{});
  }
}

}  // namespace
