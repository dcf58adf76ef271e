// Timecode media through the C calls: samples, descriptions and edits of every form, and damage.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <fstream>

#include "base/big_endian.h"
#include "made_movie.h"
#include "opened_movie.h"
#include "scratch_folder.h"
#include "test_bytes.h"

namespace toolbox::testing {
namespace {

/// A description: fields up to the source reference, then whatever is given.
Bytes description(uint32_t flags, uint32_t scale, uint32_t duration, uint8_t frames,
                  const Bytes& source = hex("00000000")) {
  Bytes entry =
      hex("00000000 746D6364 000000000000 0001 00000000 00000000 00000000 00000000 00 00");
  store_big_endian(&entry[20], flags);
  store_big_endian(&entry[24], scale);
  store_big_endian(&entry[28], duration);
  entry[32] = frames;
  entry = entry + source;
  store_big_endian(&entry[0], static_cast<uint32_t>(entry.size()));
  return entry;
}

/// A movie of 600 units a second whose timecode media has its samples added one by one.
class TimecodeMedia : public ::testing::Test {
 protected:
  void add(const Bytes& sample, TimeValue duration, const Bytes& entry) {
    ASSERT_EQ(noErr, BeginMediaEdits(media_));
    ASSERT_EQ(noErr, add_sample(media_, sample, duration, entry)) << ToolboxErrorDetail();
    ASSERT_EQ(noErr, EndMediaEdits(media_));
  }
  void show(TimeValue media_time, TimeValue duration) {
    ASSERT_EQ(noErr, InsertMediaIntoTrack(track(), -1, media_time, duration, 0x10000));
  }
  ::Track track() const { return GetMediaTrack(media_); }
  MediaHandler handler() const { return GetMediaHandler(media_); }

  /// "frame text" at a media time, or the error.
  std::string at(TimeValue time) const {
    SInt32 frame = 0;
    TimeCodeDef definition = {};
    TimeCodeRecord record = {};
    const ComponentResult result =
        TCGetTimeCodeAtTime(handler(), time, &frame, &definition, &record, nullptr);
    return said(result, frame, definition, record);
  }
  std::string now(TimeValue movie_time) const {
    SetMovieTimeValue(movie_, movie_time);
    SInt32 frame = 0;
    TimeCodeDef definition = {};
    TimeCodeRecord record = {};
    const ComponentResult result =
        TCGetCurrentTimeCode(handler(), &frame, &definition, &record, nullptr);
    return said(result, frame, definition, record);
  }
  std::string said(ComponentResult result, SInt32 frame, TimeCodeDef definition,
                   TimeCodeRecord record) const {
    if (result != noErr) return std::to_string(result);
    Str255 text;
    EXPECT_EQ(noErr, TCTimeCodeToString(handler(), &definition, &record, text));
    return std::to_string(frame) + " " + std::string(reinterpret_cast<char*>(text) + 1, text[0]);
  }
  TimeValue find(const char* text) const {
    TimeValue time = -1;
    const OSErr error = ToolboxFindTimeCode(track(), text, &time);
    return error == noErr ? time : error;
  }

  MadeMovie movie_{600};
  ::Media media_ = movie_.add_media(TimeCodeMediaType, 600);
};

TEST_F(TimecodeMedia, CountsOnFromTheSampleThatCoversATime) {
  add(hex("0001A574"), 1200, description(1, 30000, 1001, 30));  // 107892
  add(hex("00000064"), 600, description(0, 25, 1, 25));
  add(hex("FFFFFFFB"), 600, description(4, 25, 1, 25));
  add(hex("FFFFFFFB"), 600, description(8, 25, 1, 0));
  add(hex("00000001 00000005"), 600, description(2, 25, 1, 25));
  EXPECT_EQ(at(0), "107892 01:00:00;00");
  EXPECT_EQ(at(20), "107892 01:00:00;00") << "the frame lasts 20.02 units";
  EXPECT_EQ(at(21), "107893 01:00:00;01");
  EXPECT_EQ(at(1199), "107951 01:00:01;29");
  EXPECT_EQ(at(1200), "100 00:00:04:00");
  EXPECT_EQ(at(1799), "124 00:00:04:24");
  EXPECT_EQ(at(1800), "-5 -00:00:00:05");
  EXPECT_EQ(at(1920), "0 00:00:00:00");
  EXPECT_EQ(at(2400), "-5 -5");
  // The low half of a large number, and its place in the day.
  EXPECT_EQ(at(3000), "5 09:51:32:01") << "4294967301 modulo 2160000 frames";
  EXPECT_EQ(at(3600), std::to_string(timeNotInMedia));
  EXPECT_EQ(at(-1), std::to_string(timeNotInMedia));
}

TEST_F(TimecodeMedia, NumbersHaveASignWhereNegativeOnesMayBe) {
  add(hex("FFFFFFFF"), 600, description(2, 25, 1, 25));
  EXPECT_EQ(at(0), "-1 09:51:31:20") << "4294967295 frames; callers have 32 bits";
}

TEST_F(TimecodeMedia, FollowsTheEditsToTheTimeOfTheMovie) {
  add(hex("00000000"), 600, description(0, 25, 1, 25));
  add(hex("000003E8"), 600, description(0, 25, 1, 25));
  show(300, 600);  // 12.5 frames of one sample, and as many of the next
  ASSERT_EQ(noErr, InsertEmptyTrackSegment(track(), 300, 100));
  show(24, 24);
  EXPECT_EQ(now(0), "12 00:00:00:12");
  EXPECT_EQ(now(299), "24 00:00:00:24");
  EXPECT_EQ(now(300), std::to_string(invalidTime));
  EXPECT_EQ(now(400), "1000 00:00:40:00");
  EXPECT_EQ(now(699), "1012 00:00:40:12");
  EXPECT_EQ(now(700), "1 00:00:00:01");
  EXPECT_EQ(now(724), std::to_string(invalidTime)) << "where the movie ends";

  EXPECT_EQ(find("00:00:00:12"), 0);
  EXPECT_EQ(find("00:00:00:13"), 12) << "media time 312";
  EXPECT_EQ(find("00:00:40:00"), 400);
  EXPECT_EQ(find("00:00:40:12"), 688);
  EXPECT_EQ(find("00:00:00:01"), 700);
  EXPECT_EQ(find("00:00:00:02"), timeNotInTrack);
  EXPECT_EQ(find("00:00:40:13"), timeNotInTrack);
  EXPECT_EQ(find("00:00:40:25"), paramErr);
  TimeValue time = 0;
  EXPECT_EQ(invalidTrack, ToolboxFindTimeCode(nullptr, "00:00:00:00", &time));
}

TEST_F(TimecodeMedia, TheNextDayIsFoundBehindMidnight) {
  add(hex("0020F577"), 600, description(2, 25, 1, 25));  // 2159991: nine frames before midnight
  show(0, 600);
  EXPECT_EQ(at(9 * 24), "2160000 00:00:00:00");
  EXPECT_EQ(find("00:00:00:00"), 9 * 24);
  EXPECT_EQ(find("23:59:59:16"), 0);
  EXPECT_EQ(find("00:00:00:15"), 24 * 24);
  EXPECT_EQ(find("00:00:00:16"), timeNotInTrack);
}

TEST_F(TimecodeMedia, DamageIsAnErrorAndNothingElse) {
  const struct {
    Bytes sample, entry;
    ComponentResult error;
    const char* text;
  } cases[] = {
      {hex("000001"), description(0, 25, 1, 25), invalidSampleTable, "4 or 8 bytes"},
      {Bytes(100), description(0, 25, 1, 25), invalidSampleTable, "this one has 100"},
      {hex("00000001"), description(0, 0, 1, 25), paramErr, "none may be 0"},
      {hex("00000001"), description(0, 25, 0, 25), paramErr, "none may be 0"},
      {hex("00000001"), description(0, 0x80000000, 1, 25), paramErr, "none may be 0"},
      {hex("00000001"), description(0, 300, 1, 0), paramErr, "none may be 0"},
      {hex("00000001"), hex("00000014 746D6364 000000000000 0001 00000000"),
       invalidSampleDescription, "takes 34"},
  };
  TimeValue time = 0;
  for (const auto& one : cases) {
    SCOPED_TRACE(one.text);
    add(one.sample, 600, one.entry);
    show(time, 600);
    SInt32 frame = 77;
    UserData source = reinterpret_cast<UserData>(1);
    EXPECT_EQ(one.error, TCGetTimeCodeAtTime(handler(), time, &frame, nullptr, nullptr, &source));
    EXPECT_NE(std::string(ToolboxErrorDetail()).find(one.text), std::string::npos)
        << ToolboxErrorDetail();
    EXPECT_EQ(frame, 77) << "nothing is put out on failure";
    EXPECT_EQ(source, reinterpret_cast<UserData>(1));
    EXPECT_LT(find("00:00:00:00"), 0);
    time += 600;
  }
}

TEST_F(TimecodeMedia, OneFrameTooFewForItsRateIsSetRight) {
  add(hex("00000708"), 600, description(1, 30000, 1001, 29));
  add(hex("00000708"), 600, description(0, 25, 2, 12));  // 12.5 a second, counted as 12 or 13
  add(hex("00000708"), 600, description(0, 62, 5, 12));  // 12.4: 12 is right
  EXPECT_EQ(at(0), "1800 00:01:00;02");
  EXPECT_EQ(at(600), "1800 00:02:18:06");
  EXPECT_EQ(at(1200), "1800 00:02:30:00");
}

TEST_F(TimecodeMedia, TheNameOfTheSourceIsReadFromEitherPlace) {
  const Bytes name = hex("00000011 6E616D65 0005 0000 5265656C37");
  add(hex("00000000"), 600, description(0, 25, 1, 25, name));
  add(hex("00000000"), 600, description(0, 25, 1, 25, name + hex("00000000")));
  add(hex("00000000"), 600, description(0, 25, 1, 25, hex("0000") + name));
  add(hex("00000000"), 600, description(0, 25, 1, 25, hex("0000")));
  add(hex("00000000"), 600, description(0, 25, 1, 25, hex("FFFFFFFF 6E616D65")));
  for (int i = 0; i < 5; ++i) {
    SCOPED_TRACE(i);
    UserData source = nullptr;
    ASSERT_EQ(noErr, TCGetTimeCodeAtTime(handler(), i * 600, nullptr, nullptr, nullptr, &source));
    ASSERT_NE(nullptr, source);
    const TestHandle text;
    const OSErr found = GetUserDataText(source, text, 0x6E616D65, 1, 0);
    EXPECT_EQ(found, i < 3 ? noErr : userDataItemNotFound);
    if (i < 3) {
      EXPECT_EQ(text.bytes(), hex("5265656C37"));
    }
    EXPECT_EQ(noErr, DisposeUserData(source));
  }
}

TEST_F(TimecodeMedia, ASourceReferenceGoesIntoDescriptionsOfBothOrders) {
  UserData list = nullptr;
  ASSERT_EQ(noErr, NewUserData(&list));
  ASSERT_EQ(noErr, AddUserDataText(list, TestHandle(hex("5265656C37")), 0x6E616D65, 1, 0));
  for (const bool is_native : {false, true}) {
    Bytes entry = description(1, 30000, 1001, 30);
    uint32_t size = 38;
    if (is_native) std::memcpy(entry.data(), &size, 4);
    const TestHandle handle(entry);
    ASSERT_EQ(noErr, TCSetSourceRef(handler(), handle, list));
    const Bytes named = handle.bytes();
    ASSERT_EQ(named.size(), 55u);
    std::memcpy(&size, named.data(), 4);
    EXPECT_EQ(is_native ? size : load_big_endian<uint32_t>(named.data()), 55u);
    EXPECT_EQ(Bytes(named.begin() + 34, named.end()),
              hex("00000011 6E616D65 0005 0000 5265656C37 00000000"));
    ASSERT_EQ(noErr, TCSetSourceRef(handler(), handle, nullptr));
    EXPECT_EQ(handle.bytes(), entry);
  }
  EXPECT_EQ(invalidSampleDescription, TCSetSourceRef(handler(), TestHandle(Bytes(33)), list));
  EXPECT_EQ(invalidSampleDescription, TCSetSourceRef(handler(), TestHandle(Bytes(38)), list));
  EXPECT_EQ(paramErr, TCSetSourceRef(handler(), nullptr, list));
  EXPECT_EQ(noErr, DisposeUserData(list));
}

TEST_F(TimecodeMedia, OtherHandlersDoNotAnswer) {
  const MediaHandler text = GetMediaHandler(movie_.add_media(TextMediaType, 600));
  SInt32 flags = 5;
  EXPECT_EQ(badComponentSelector, TCGetTimeCodeFlags(text, &flags));
  EXPECT_EQ(badComponentInstance, TCGetTimeCodeFlags(nullptr, &flags));
  EXPECT_EQ(flags, 5);
  TimeCodeDef definition = {};
  TimeCodeRecord record = {};
  EXPECT_EQ(paramErr, TCFrameNumberToTimeCode(handler(), 1, &definition, &record));
  EXPECT_EQ(paramErr, TCTimeCodeToFrameNumber(handler(), nullptr, &record, &flags));
}

TEST_F(TimecodeMedia, HowItIsDrawnIsKeptByTheFile) {
  TCTextOptions options = {};
  ASSERT_EQ(noErr, TCGetDisplayOptions(handler(), &options));
  EXPECT_EQ(options.txFont, 0);
  EXPECT_EQ(options.txSize, 12);
  EXPECT_EQ(options.backColor.green, 0xFFFF);
  options = {22, 1, 24, 0, {1, 2, 3}, {4, 5, 6}};
  ASSERT_EQ(noErr, TCSetDisplayOptions(handler(), &options));
  ASSERT_EQ(noErr, TCSetTimeCodeFlags(handler(), 3, 1));
  add(hex("00000000"), 600, description(0, 25, 1, 25));
  show(0, 600);
  const ScratchFolder folder;
  const std::string path = folder.path("made.mov");
  ASSERT_EQ(noErr, ToolboxSaveMovieAs(movie_, path.c_str(), false)) << ToolboxErrorDetail();
  // The movie moves on, and lets go of the file.
  ASSERT_EQ(noErr, ToolboxSaveMovieAs(movie_, folder.path("other.mov").c_str(), false));
  ::Movie opened = nullptr;
  ASSERT_EQ(noErr, ToolboxOpenMovieForWriting(path.c_str(), &opened));
  const MediaHandler again = GetMediaHandler(GetTrackMedia(GetMovieIndTrack(opened, 1)));
  SInt32 flags = 0;
  ASSERT_EQ(noErr, TCGetTimeCodeFlags(again, &flags));
  EXPECT_EQ(flags, 1) << "what the mask leaves out is not set";
  TCTextOptions read = {};
  ASSERT_EQ(noErr, TCGetDisplayOptions(again, &read));
  EXPECT_EQ(0, std::memcmp(&options, &read, sizeof read));
  // Changed in the file that was read, the rest of the header stays.
  ASSERT_EQ(noErr, TCSetTimeCodeFlags(again, 0, 1));
  ASSERT_EQ(noErr, ToolboxSaveMovie(opened)) << ToolboxErrorDetail();
  ASSERT_EQ(noErr, TCGetTimeCodeFlags(again, &flags));
  EXPECT_EQ(flags, 0);
  ASSERT_EQ(noErr, TCGetDisplayOptions(again, &read));
  EXPECT_EQ(0, std::memcmp(&options, &read, sizeof read));
  ::DisposeMovie(opened);
}

/// A file whose timecode media has `nmhd` and what is given in place of its own header.
void write_with_header(const std::string& path, const Bytes& header) {
  BuiltMovie built;
  built.tracks = {timecode_track(0, 600, 600, 24, 25, 0)};
  built.tracks[0].more_in_media_info = header;
  Bytes bytes = build_movie(built).take();
  const std::string_view own = "gmhd";
  const auto found = std::search(bytes.begin(), bytes.end(), own.begin(), own.end());
  ASSERT_NE(found, bytes.end());
  *found = 'n';
  std::ofstream(path, std::ios::binary)
      .write(reinterpret_cast<const char*>(bytes.data()),
             static_cast<std::streamsize>(bytes.size()));
}

TEST(TimecodeDisplay, IsReadInEveryFormThatFilesHave) {
  const Bytes fields = hex("00000001 0016 0000 000C");
  const Bytes rest = hex("FFFF00000000 00000000FFFF 07 436F7572696572");
  const auto header = [](const Bytes& info) {
    return atom_bytes(four_cc("gmhd"),
                      atom_bytes(four_cc("tmcd"), atom_bytes(four_cc("tcmi"), info)));
  };
  const struct {
    const char* what;
    Bytes header;
    SInt32 flags;
    SInt16 font;
    UInt16 red;
  } cases[] = {
      {"padded", header(fields + hex("0000") + rest), 1, 22, 0xFFFF},
      {"without padding", header(fields + rest), 1, 22, 0xFFFF},
      {"zeros behind it", header(fields + hex("0000") + rest + hex("0000")), 1, 22, 0xFFFF},
      {"cut short", header(fields + hex("0000 FFFF")), 0, 0, 0},
      {"a later version", header(hex("02") + Bytes(40)), 0, 0, 0},
      {"none", {}, 0, 0, 0},
  };
  const ScratchFolder folder;
  const std::string path = folder.path("made.mov");
  for (const auto& one : cases) {
    SCOPED_TRACE(one.what);
    write_with_header(path, one.header);
    ::Movie movie = nullptr;
    ASSERT_EQ(noErr, ToolboxOpenMovieForWriting(path.c_str(), &movie)) << ToolboxErrorDetail();
    const MediaHandler handler = GetMediaHandler(GetTrackMedia(GetMovieIndTrack(movie, 1)));
    SInt32 flags = -1;
    TCTextOptions options = {};
    ASSERT_EQ(noErr, TCGetTimeCodeFlags(handler, &flags));
    ASSERT_EQ(noErr, TCGetDisplayOptions(handler, &options));
    EXPECT_EQ(flags, one.flags);
    EXPECT_EQ(options.txFont, one.font);
    EXPECT_EQ(options.foreColor.red, one.red);
    // Whatever was there, what is set now is what the saved file has.
    ASSERT_EQ(noErr, TCSetTimeCodeFlags(handler, 1, 1));
    ASSERT_EQ(noErr, ToolboxSaveMovie(movie)) << ToolboxErrorDetail();
    ASSERT_EQ(noErr, TCGetTimeCodeFlags(handler, &flags));
    EXPECT_EQ(flags & 1, 1);
    ::DisposeMovie(movie);
  }
}

}  // namespace
}  // namespace toolbox::testing
