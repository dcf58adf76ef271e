// The built module in hosts of other versions and in hosts that offer less than all.
#include <gtest/gtest.h>

#include <algorithm>
#include <span>

#include "entries/entry_table.h"
#include "integration/whole_system.h"
#include "scripts/script_runner.h"
#include "toolbox/scratch_folder.h"

namespace krz::test {
namespace {

using Names = std::set<std::string, std::less<>>;

/// All host entries but those.
Names all_but(const Names& offered) {
  Names withheld;
  for (const auto group :
       {start_up_entries, object_entries, string_entries, data_entries, picture_entries}) {
    for (const HostEntry& entry : group()) {
      if (!offered.contains(entry.name)) withheld.insert(entry.name);
    }
  }
  return withheld;
}

/// What a host must offer before a script can ask a track for its type.
const Names kLeast = {
    "RegisterPluginVersion", "PluginRegisterClass", "PluginRegisterClassExtension",
    "getMovieMovie",         "PluginNewInstance",   "REALLockObject",
    "REALUnlockObject",      "REALBuildString"};

Names least_without(const std::string& name) {
  Names names = kLeast;
  EXPECT_EQ(names.erase(name), 1u) << name;
  return names;
}

class Hosts : public testing::Test {
 protected:
  ~Hosts() override {
    before_.handles += handles_kept_;
    EXPECT_EQ(ToolboxCounts(), before_);
  }

  /// Runs a script in a host that withholds entries, with a copy of the module that knows no host
  /// yet: it keeps the entries that it once found.
  std::string run(const std::string& script, const Names& withheld, double host_version = 2013,
                  bool in_runtime = true) {
    const std::string copy = folder_.path("module" + std::to_string(++copies_) + ".so");
    std::filesystem::copy_file(kModulePath, copy);
    RuntimeOptions options;
    options.host_version = host_version;
    options.withheld_entries = withheld;
    options.in_runtime = in_runtime;
    options.picture_kind = picture_kind_;
    const ScriptOutcome outcome = run_source(script, "test.bas", options,
                                             [&copy](Runtime& runtime) { prepare(runtime, copy); });
    EXPECT_EQ(outcome.leaked_strings, 0);
    EXPECT_EQ(outcome.leaked_objects, 0);
    return outcome.output + outcome.error;
  }

  REALpictureDescriptionType picture_kind_ = kPictureBitmapContext;
  uint32_t handles_kept_ = 0;  // by calls of which that is known

 private:
  ToolboxCounts before_;
  const toolbox::ScratchFolder folder_;
  int copies_ = 0;
};

constexpr char kAskTrack[] = R"(
Dim t As QTTrackKRZ = OpenMovie(TestMovie("edited")).GetVideoTrackKRZ(1)
Dim time, duration As Integer
Dim found As Boolean = t.NextInterestingTimeKRZ(time, duration)
Print t.MediaType, t.Duration, t.TimeOffset, found, time, duration, t.MediaSampleCount
)";
constexpr char kTrackAnswer[] = "vide 5100 300 True 300 60 100\n";

TEST_F(Hosts, OfAnyVersionGetTheSameAnswers) {
  for (const double version : {0.0, 2011.0, 2012.0, 2012.5, 2013.0, 2099.0}) {
    SCOPED_TRACE(version);
    EXPECT_EQ(run(kAskTrack, {}, version), kTrackAnswer);
  }
  EXPECT_EQ(run(kAskTrack, {"REALGetRBVersion"}), kTrackAnswer);
}

TEST_F(Hosts, ThatMerelyLoadTheModuleMayAskItToo) {
  EXPECT_EQ(run(kAskTrack, {}, 2013, false), kTrackAnswer);
}

TEST_F(Hosts, WithTheLeastEntriesStillAnswer) {
  EXPECT_EQ(run(kAskTrack, all_but(kLeast)), kTrackAnswer);
  EXPECT_EQ(run(kAskTrack, all_but(kLeast), 0), kTrackAnswer);
}

TEST_F(Hosts, WithoutAnEntryLoseOnlyWhatItIsFor) {
  const struct {
    const char* missing;
    const char* script;
    const char* output;
  } cases[] = {
      {"getMovieMovie",
       "Dim m As Movie = OpenMovie(TestMovie(\"lookup\"))\n"
       "Print m.TrackCountKRZ, m.GetTrackIndexKRZ(1) Is Nil, m.GetVideoTrackKRZ(1) Is Nil",
       "-1 True True\n"},
      {"PluginNewInstance",
       "Dim m As Movie = OpenMovie(TestMovie(\"lookup\"))\n"
       "Print m.TrackCountKRZ, m.GetTrackIndexKRZ(1) Is Nil, m.GetTrackIDKRZ(3) Is Nil",
       "5 True True\n"},
      {"REALBuildString",
       "Dim t As QTTrackKRZ = OpenMovie(TestMovie(\"lookup\")).GetTrackIndexKRZ(1)\n"
       "Print \"[\" + t.MediaType + \"]\", t.MediaSampleCount\n"
       "Dim p As New QTTimeCodeCreationParametersKRZ\n"
       "Print \"[\" + p.SourceName + \"]\", p.Height",
       "[] 10\n[] 20\n"},
      {"PluginRegisterClassExtension",
       "Dim t As New QTTrackKRZ\n"
       "Print t.Duration, OpenMovie(TestMovie(\"lookup\")).Duration",
       "0 600\n"},
  };
  for (const auto& one : cases) {
    SCOPED_TRACE(one.missing);
    EXPECT_EQ(run(one.script, all_but(least_without(one.missing))), one.output);
  }
}

TEST_F(Hosts, WithoutMemoryBlocksRaiseOrGiveNothing) {
  constexpr char kScript[] = R"(
Dim t As QTTrackKRZ = OpenMovie(TestMovie("descriptions")).GetVideoTrackKRZ(1)
Try
  Dim raw As MemoryBlock = t.MediaSampleDescriptionRaw(2)
  Print raw Is Nil, t.Lasterror
Catch e As OutOfMemoryException
  Print e.Message, t.Lasterror
End Try
)";
  EXPECT_EQ(run(kScript, {}), "False 0\n");
  EXPECT_EQ(run(kScript, {"newMemoryBlock"}),
            "Failed to allocate a memoryblock with 20 bytes in size. 0\n");
  EXPECT_EQ(run(kScript, {"newMemoryBlock", "RuntimeRaiseException"}), "True 0\n");
  EXPECT_EQ(run(kScript, {"memoryBlockGetPtr"}), "True 0\n");
}

TEST_F(Hosts, WithoutEncodingsGetTheSameBytes) {
  // The sign of copyright is one byte, whatever the host takes it for.
  constexpr char kScript[] = R"(
Dim code As String = QTMetaDataKRZ.kUserDataTextAlbum
Print LenB(code), AscB(code), MidB(code, 2)
)";
  EXPECT_EQ(run(kScript, {}), "4 169 alb\n");
  EXPECT_EQ(run(kScript, {"REALSetStringEncoding"}), "4 169 alb\n");
}

TEST_F(Hosts, WithNothingButTheVersionEntryLoadTheModuleWithoutClasses) {
  EXPECT_EQ(run("Print OpenMovie(TestMovie(\"two-tracks\")).Duration",
                all_but({"RegisterPluginVersion"})),
            "6000\n");
  const std::string refused = run("Dim t As QTTrackKRZ", all_but({"RegisterPluginVersion"}));
  EXPECT_NE(refused.find("QTTrackKRZ"), std::string::npos) << refused;
  EXPECT_NE(refused.find("error"), std::string::npos) << refused;
}

constexpr char kReadMask[] = R"(
Dim m As Movie = OpenMovie(TestMovie("clipped"))
Dim t As QTTrackKRZ = m.GetVideoTrackKRZ(1)
Dim mask As Picture = t.TrackClipMask
Dim pixels As RGBSurface = mask.RGBSurface
Print mask.Width, mask.Height, mask.HasAlphaChannel, t.Lasterror
Print pixels.Pixel(9, 0), pixels.Pixel(10, 0), pixels.Pixel(10, 20), pixels.Pixel(29, 39), pixels.Pixel(30, 39), pixels.Pixel(0, 40)
t.TrackClipMask = mask
Print m.IsModified, t.TrackClipMask.RGBSurface.Pixel(9, 0), t.Lasterror
)";

TEST_F(Hosts, ShowClipMasksInPicturesOfTheirKind) {
  const std::string mask = "32 48 False 0\n&c000000 &cFFFFFF &c000000 &c000000 &cFFFFFF &cFFFFFF\n";
  EXPECT_EQ(run(kReadMask, {}), mask + "False &c000000 0\n");
  // Older buffers are not drawn into ports: what is made of one is a region without pixels.
  picture_kind_ = kPicturePixelBuffer;
  EXPECT_EQ(run(kReadMask, {}), mask + "True &cFFFFFF 0\n");
}

TEST_F(Hosts, WithoutTheFrameworksDoWithoutDrawing) {
  const toolbox::ScratchFolder empty;
  setenv("KRZ_FRAMEWORKS", empty.path(".").c_str(), 1);
  const std::string output = run(R"(
Dim m As Movie = OpenMovie(TestMovie("clipped"))
Dim t As QTTrackKRZ = m.GetVideoTrackKRZ(1)
Print t.TrackClipMask Is Nil, t.Lasterror, m.IsModified
t.TrackClipMask = Nil
Print m.IsModified, t.Lasterror
m = OpenMovie(TestMovie("clipped"))
t = m.GetVideoTrackKRZ(1)
t.TrackClipMask = New Picture(4, 4, 32)
Print m.IsModified, t.TrackClipMask Is Nil, t.Lasterror
Dim chapter As New QTChapterDataKRZ
chapter.FontNumber = 9
chapter.FontName = "Monaco"
Print chapter.FontNumber
Print m.TrackCountKRZ, t.Width, t.MediaSampleCount
)",
                                 {});
  unsetenv("KRZ_FRAMEWORKS");
  EXPECT_EQ(output, "True 0 False\nTrue 0\nTrue True 0\n0\n1 32 2\n");
  handles_kept_ = 1;  // the region of the first line: what would dispose of it is missing, too
}

}  // namespace
}  // namespace krz::test
