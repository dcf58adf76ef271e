// The rows of tracks and movies about sound, graphics modes and apertures: what reaches the
// toolbox, and what becomes of its answers.
#include "plugin/plugin_test.h"

namespace {

using fake_host::field;
using fake_toolbox::toolbox;
using Calls = std::vector<std::string>;

constexpr char kSetBands[] =
    "SoundSetEqualizerBands(count as integer, values as memoryblock) as integer";
constexpr char kLevels[] = "SoundGetEqualizerBandLevels(count as integer) as memoryblock";
constexpr char kMeter[] =
    "SoundLevelMeterInfo(byref numChannels as integer, byref leftMeter as integer, byref "
    "rightMeter as integer)";
constexpr char kSetMode[] = "MediaSetGraphicsMode(Mode as integer, TheColor as color)";
constexpr char kGetMode[] = "MediaGetGraphicsMode(byref Mode as integer, byref TheColor as color)";
constexpr char kSetAperture[] = "SetMovieApertureModeKRZ(theApertureMode as string) as integer";

class Sound : public PluginTest {
 protected:
  void SetUp() override {
    PluginTest::SetUp();
    object_ = fake_host::make_object("QTTrackKRZ");
    field<int32_t>(object_, "QTTrackKRZ", "TrackHandle") = 7;
    toolbox().answers["GetTrackMedia"] = 8;
    toolbox().answers["GetMediaHandler"] = 9;
    lasterror() = 55;
  }
  void TearDown() override {
    fake_host::unlock(object_);
    PluginTest::TearDown();
  }

  int32_t& lasterror() { return field<int32_t>(object_, "QTTrackKRZ", "Lasterror"); }

  template <class Result = int32_t, class... Arguments>
  Result call(const char* declaration, Arguments... arguments) {
    toolbox().calls.clear();
    const MethodEntry& row = fake_host::method("QTTrackKRZ", declaration);
    return fake_host::function<Result(REALobject, Arguments...)>(row.function)(object_,
                                                                               arguments...);
  }
  template <class Value>
  void assign(const char* declaration, Value value) {
    toolbox().calls.clear();
    const MethodEntry& row = fake_host::method("QTTrackKRZ", declaration);
    fake_host::function<void(REALobject, Value)>(row.setter)(object_, value);
  }
  std::string last_call() const { return toolbox().calls.empty() ? "" : toolbox().calls.back(); }

  REALobject object_ = nullptr;
};

TEST_F(Sound, ValuesAreCutTo16BitsOnTheWayInAndWidenedOnTheWayOut) {
  const struct {
    const char* declaration;
    const char* answer;
  } readable[] = {{"SoundBalance as integer", "balance"},
                  {"SoundGetEffectiveBalance as integer", "balance"},
                  {"SoundGetEffectiveVolume as integer", "volume"},
                  {"SoundBass as integer", "bass"},
                  {"SoundTreble as integer", "treble"}};
  for (const auto& one : readable) {
    SCOPED_TRACE(one.declaration);
    toolbox().answers[one.answer] = 0xFFF0;
    lasterror() = 55;
    EXPECT_EQ(call(one.declaration), -16);
    EXPECT_EQ(lasterror(), 0);
    toolbox().answers["GetMediaHandler"] = 0;
    EXPECT_EQ(call(one.declaration), 0);
    EXPECT_EQ(lasterror(), -1);
    toolbox().answers["GetMediaHandler"] = 9;
  }
  assign("SoundBalance as integer", int32_t{70000});
  EXPECT_EQ(last_call(), "MediaSetSoundBalance(9, 4464)");
  toolbox().answers["component"] = -2;
  EXPECT_EQ(call("SoundOutputComponentHandle as integer"), -2);
  assign("SoundOutputComponentHandle as integer", int32_t{-2});
  EXPECT_EQ(last_call(), "MediaSetSoundOutputComponent(9, 4294967294)");
}

TEST_F(Sound, SettingBassOrTrebleKeepsTheOtherAndStopsWhereItCannotBeRead) {
  toolbox().answers["bass"] = 3;
  toolbox().answers["treble"] = -4;
  assign("SoundBass as integer", int32_t{65537});
  EXPECT_EQ(last_call(), "MediaSetSoundBassAndTreble(9, 1, -4)");
  assign("SoundTreble as integer", int32_t{-5});
  EXPECT_EQ(last_call(), "MediaSetSoundBassAndTreble(9, 3, -5)");
  EXPECT_EQ(lasterror(), 0);
  toolbox().answers["MediaGetSoundBassAndTreble"] = -2147450878;
  assign("SoundBass as integer", int32_t{1});
  EXPECT_EQ(last_call(), "MediaGetSoundBassAndTreble(9)");
  EXPECT_EQ(lasterror(), -2147450878) << "results of handlers are 32 bits wide";
}

TEST_F(Sound, BandsAreTakenFromTheScriptsBlockAndTheDefaultOnesAreEight) {
  const UInt32 frequencies[] = {0x03E80000, 0xFFFF0000};
  REALmemoryBlockStruct* block = fake_host::make_memory_block(
      {reinterpret_cast<const char*>(frequencies), sizeof frequencies});
  toolbox().answers["MediaSetSoundEqualizerBands"] = -50;
  EXPECT_EQ(call(kSetBands, int32_t{2}, block), -50);
  EXPECT_EQ(toolbox().calls[2], "bands 65536000 4294901760");
  EXPECT_EQ(call(kSetBands, int32_t{0}, block), -1);
  EXPECT_EQ(toolbox().calls, Calls{});
  toolbox().answers["GetMediaHandler"] = 0;
  EXPECT_EQ(call(kSetBands, int32_t{2}, block), -1);
  EXPECT_EQ(lasterror(), 55) << "the row leaves it alone";
  EXPECT_EQ(call("SoundSetDefaultEqualizerBands as integer"), -1);
  EXPECT_EQ(lasterror(), -1);
  toolbox().answers["GetMediaHandler"] = 9;
  EXPECT_EQ(call("SoundSetDefaultEqualizerBands as integer"), -50);
  EXPECT_EQ(lasterror(), -50);
  EXPECT_EQ(toolbox().calls[2],
            "bands 13107200 26214400 52428800 104857600 209715200 419430400 838860800 1376256000");
  fake_host::unlock(fake_host::as_object(block));
}

TEST_F(Sound, LevelsAreAsManyAsAskedForHoweverManyBandsThereAre) {
  toolbox().answers["bands"] = 250;
  REALmemoryBlockStruct* block = call<REALmemoryBlockStruct*>(kLevels, int32_t{2});
  EXPECT_EQ(fake_host::bytes_of(block), std::string("\1\2", 2));
  EXPECT_EQ(lasterror(), 0);
  fake_host::unlock(fake_host::as_object(block));
  toolbox().answers["MediaGetSoundEqualizerBandLevels"] = -2046;
  EXPECT_EQ(call<REALmemoryBlockStruct*>(kLevels, int32_t{2}), nullptr);
  EXPECT_EQ(lasterror(), -2046);
  EXPECT_EQ(call<REALmemoryBlockStruct*>(kLevels, int32_t{0}), nullptr);
  EXPECT_EQ(lasterror(), -1);
}

TEST_F(Sound, MetersAreZeroUnlessTheToolboxAnswers) {
  int32_t channels = 1, left = 2, right = 3;
  call<void>(kMeter, &channels, &left, &right);
  EXPECT_EQ((std::vector{channels, left, right}), (std::vector{-2, 200, 255}));
  toolbox().answers["MediaGetSoundLevelMeterInfo"] = -36;
  call<void>(kMeter, &channels, &left, &right);
  EXPECT_EQ((std::vector{channels, left, right, lasterror()}), (std::vector{0, 0, 0, -36}));
  toolbox().answers["metering"] = 2;
  EXPECT_TRUE(call<Boolean>("SoundLevelMeteringEnabled as boolean"));
  assign("SoundLevelMeteringEnabled as boolean", Boolean{1});
  EXPECT_EQ(last_call(), "MediaSetSoundLevelMeteringEnabled(9, 1)");
}

TEST_F(Sound, ColoursAreWidenedAndCutByTheirHighBytes) {
  call<void>(kSetMode, int32_t{36}, uint32_t{0x00FF8000});
  EXPECT_EQ(last_call(), "MediaSetGraphicsMode(9, 36, 65535, 32896, 0)");
  call<void>(kSetMode, int32_t{-1}, uint32_t{0x01020304});
  EXPECT_EQ(last_call(), "MediaSetGraphicsMode(9, -1, 770, 771, 1028)") << "red wraps";
  int32_t mode = 1;
  uint32_t color = 2;
  toolbox().answers["mode"] = 64;
  call<void>(kGetMode, &mode, &color);
  EXPECT_EQ(mode, 64);
  EXPECT_EQ(color, 0x0012ABFFu);
  toolbox().answers["MediaGetGraphicsMode"] = -50;
  call<void>(kGetMode, &mode, &color);
  EXPECT_EQ(mode, 0);
  EXPECT_EQ(color, 0u);
  EXPECT_EQ(lasterror(), -50);
}

TEST_F(Sound, ApertureDimensionsOfATrackLeaveItsError) {
  for (const std::string name :
       {"GenerateTrackApertureModeDimensions", "RemoveTrackApertureModeDimensions",
        "SetTrackApertureModeDimensionsUsingSampleDescription"}) {
    toolbox().answers[name] = -2041;
    EXPECT_EQ(call((name + " as integer").c_str()), -2041);
    const bool takes_description = name.starts_with("Set");
    EXPECT_EQ(toolbox().calls, Calls{name + (takes_description ? "(7, 0)" : "(7)")});
    field<int32_t>(object_, "QTTrackKRZ", "TrackHandle") = 0;
    EXPECT_EQ(call((name + " as integer").c_str()), -1);
    EXPECT_EQ(toolbox().calls, Calls{});
    field<int32_t>(object_, "QTTrackKRZ", "TrackHandle") = 7;
  }
  EXPECT_EQ(lasterror(), 55);
}

TEST_F(Sound, OnlyModesBesideTheClassicOneNeedDimensions) {
  REALmovieStruct* movie = fake_host::make_movie(3);
  const auto set_mode = [&](const char* mode) {
    toolbox().calls.clear();
    const REALstring text = fake_host::make_string(mode, 0x600);
    const MethodEntry& row = fake_host::method("movie", kSetAperture);
    const int32_t result =
        fake_host::function<int32_t(REALmovieStruct*, REALstring)>(row.function)(movie, text);
    fake_host::unlock(text);
    return result;
  };
  const std::string set = "QTSetMovieProperty(3, 1986622325, 1634757988, 4)";
  const std::string has = "QTGetMovieProperty(3, 1986622325, 1751215460, 1)";
  EXPECT_EQ(set_mode("clas"), 0);
  EXPECT_EQ(toolbox().calls, Calls{set});
  EXPECT_EQ(set_mode("clea"), 0);
  EXPECT_EQ(toolbox().calls, (Calls{has, "GenerateMovieApertureModeDimensions(3)", set}));
  toolbox().answers["property"] = 1;
  toolbox().answers["QTSetMovieProperty"] = -50;
  EXPECT_EQ(set_mode("what"), -50);
  EXPECT_EQ(toolbox().calls, (Calls{has, set}));
  toolbox().answers["QTGetMovieProperty"] = -2184;
  EXPECT_EQ(set_mode("clea"), -2184);
  EXPECT_EQ(toolbox().calls, Calls{has});

  const MethodEntry& get = fake_host::method("movie", "GetMovieApertureModeKRZ as string");
  const auto mode_of = fake_host::function<REALstring(REALmovieStruct*)>(get.function);
  EXPECT_EQ(mode_of(movie), nullptr);
  toolbox().answers["QTGetMovieProperty"] = 0;
  toolbox().answers["property"] = 0x636C6561;
  const REALstring mode = mode_of(movie);
  EXPECT_EQ(fake_host::bytes_of(mode), "clea");
  fake_host::unlock(mode);
  EXPECT_EQ(mode_of(nullptr), nullptr);
  fake_host::unlock(fake_host::as_object(movie));
}

TEST_F(Sound, BandsWithoutABlockRaiseBeforeAnythingElse) {
  EXPECT_EQ(call(kSetBands, int32_t{0}, static_cast<REALmemoryBlockStruct*>(nullptr)), 0);
  EXPECT_EQ(toolbox().calls, Calls{});
  EXPECT_EQ(lasterror(), 55);
  ASSERT_EQ(fake_host::host().raised.size(), 1u);
  EXPECT_EQ(fake_host::host().raised[0].class_name, "NilObjectException");
  EXPECT_EQ(fake_host::host().raised[0].message, "memoryblock is nil");
}

}  // namespace
