// Tracks and movies as only a host without mercy shows them: locks, nil receivers, odd truth
// values.
#include "plugin/track/track.h"

#include "plugin/host/instance_data.h"
#include "plugin/plugin_test.h"

namespace {

using fake_host::field;
using fake_toolbox::toolbox;

constexpr char kVideoTrack[] =
    "GetVideoTrackKRZ(index as integer, EnabledTracksOnly as boolean = false) as QTTrackKRZ";

class Tracks : public MovieTest {};

TEST_F(Tracks, KeepTheirMovieLockedUntilTheyDie) {
  EXPECT_EQ(krz::MakeTrackObject(nullptr, movie_), nullptr);
  const REALobject track =
      krz::MakeTrackObject(reinterpret_cast<Track>(uintptr_t{0xFFFFFFFE}), movie_);
  ASSERT_TRUE(track);
  EXPECT_EQ(fake_host::locks_of(fake_host::as_object(movie_)), 2);
  EXPECT_EQ(field<REALmovieStruct*>(track, "QTTrackKRZ", "Movie"), movie_);
  EXPECT_EQ(field<int32_t>(track, "QTTrackKRZ", "TrackHandle"), -2);
  EXPECT_EQ(field<int32_t>(track, "QTTrackKRZ", "Lasterror"), 0);
  EXPECT_EQ(krz::getTrackMedia(krz::track_data(track)), nullptr);
  EXPECT_EQ(toolbox().calls, Calls{"GetTrackMedia(4294967294)"})
      << "references are 32 bits without a sign";
  fake_host::unlock(track);
  EXPECT_EQ(fake_host::locks_of(fake_host::as_object(movie_)), 1);

  const REALobject orphan = krz::MakeTrackObject(reinterpret_cast<Track>(uintptr_t{7}), movie_);
  field<REALmovieStruct*>(orphan, "QTTrackKRZ", "Movie") = nullptr;
  fake_host::unlock(fake_host::as_object(movie_));
  fake_host::unlock(orphan);
  EXPECT_EQ(fake_host::locks_of(fake_host::as_object(movie_)), 1)
      << "a movie that a script took away is not unlocked";
}

TEST_F(Tracks, AreNotMadeByAHostWithoutTheirClass) {
  fake_host::host().classes.clear();
  EXPECT_EQ(krz::MakeTrackObject(track(1), movie_), nullptr);
  load();
}

TEST_F(Tracks, AreNotFoundInMoviesThatAreNil) {
  REALmovieStruct* const closed = fake_host::make_movie(0);  // none of the toolbox is behind it
  for (REALmovieStruct* none : {closed, static_cast<REALmovieStruct*>(nullptr)}) {
    EXPECT_EQ(call<int32_t>(none, "movie", "TrackCountKRZ as integer"), -1);
    for (const char* find : {"GetTrackIndexKRZ(index as integer) as QTTrackKRZ",
                             "GetTrackIDKRZ(id as integer) as QTTrackKRZ"}) {
      EXPECT_EQ(call<REALobject>(none, "movie", find, 1), nullptr);
    }
    EXPECT_EQ(call<REALobject>(none, "movie", kVideoTrack, 1, Boolean{0}), nullptr);
    EXPECT_EQ(toolbox().calls, Calls{});
    EXPECT_EQ(call<REALstring>(none, "movie", "GetMovieApertureModeKRZ as string"), nullptr);
  }
  fake_host::unlock(fake_host::as_object(closed));
}

TEST_F(Tracks, TakeAndGiveTruthValuesOfAnyByteButZero) {
  SetTrackEnabled(track(1), false);
  for (const Boolean enabled_only : {Boolean{0}, Boolean{1}, Boolean{0x80}}) {
    const auto found = call<REALobject>(movie_, "movie", kVideoTrack, 1, enabled_only);
    EXPECT_EQ(found == nullptr, enabled_only != 0);
    if (found) fake_host::unlock(found);
  }
  const REALobject object = krz::MakeTrackObject(track(1), movie_);
  EXPECT_EQ(call<Boolean>(object, "QTTrackKRZ", "TrackEnabled as boolean"), 0);
  toolbox().answers["GetTrackEnabled"] = 0x80;
  EXPECT_EQ(call<Boolean>(object, "QTTrackKRZ", "TrackEnabled as boolean"), 1);
  fake_host::unlock(object);
}

TEST_F(Tracks, UnlockTheDescriptionsThatTheyHandOut) {
  const REALobject object = krz::MakeTrackObject(track(1), movie_);
  fake_host::unlock(
      call<REALobject>(object, "QTTrackKRZ",
                       "MediaSampleDescription(index as integer) as QTSampleDescriptionKRZ", 1));
  EXPECT_EQ(toolbox().locks, 0);
  fake_host::unlock(object);
}

TEST_F(Tracks, LetBitsAboveAColourRunOverIntoRed) {
  const REALobject object = krz::MakeTrackObject(track(1), movie_);
  call<void>(object, "QTTrackKRZ", "MediaSetGraphicsMode(Mode as integer, TheColor as color)",
             int32_t{-1}, uint32_t{0x01020304});
  SInt32 mode = 0;
  RGBColor color = {};
  EXPECT_EQ(MediaGetGraphicsMode(GetMediaHandler(GetTrackMedia(track(1))), &mode, &color), noErr);
  EXPECT_EQ(mode, 0xFFFF);
  EXPECT_EQ((std::vector<int>{color.red, color.green, color.blue}),
            (std::vector<int>{770, 771, 1028}));
  fake_host::unlock(object);
}

TEST_F(Tracks, ApertureModesAreNotSetWhereTheToolboxCannotSayWhatIsThere) {
  const REALstring mode = fake_host::make_string("clea", 0x600);
  const auto set = [&] {
    return call<int32_t>(movie_, "movie",
                         "SetMovieApertureModeKRZ(theApertureMode as string) as integer", mode);
  };
  toolbox().answers["QTGetMovieProperty"] = -2184;
  EXPECT_EQ(set(), -2184);
  EXPECT_EQ(call<REALstring>(movie_, "movie", "GetMovieApertureModeKRZ as string"), nullptr);
  toolbox().answers.clear();
  EXPECT_EQ(set(), noErr);
  fake_host::unlock(mode);
}

}  // namespace
