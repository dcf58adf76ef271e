// The text media handler, the arithmetic that text tracks need, and the short chapter list.
#include <gtest/gtest.h>

#include "base/big_endian.h"
#include "made_movie.h"
#include "opened_movie.h"
#include "test_bytes.h"

namespace toolbox::testing {
namespace {

ComponentResult add_text(::MediaHandler handler, const std::string& text, TimeValue duration = 60,
                         TimeValue* begin = nullptr) {
  return TextMediaAddTextSample(handler, const_cast<char*>(text.data()),
                                static_cast<UInt32>(text.size()), 0, 12, 0, nullptr, nullptr, 0,
                                nullptr, 4, 0, 0, 0, nullptr, duration, begin);
}

Bytes bytes(std::string_view text) { return {text.begin(), text.end()}; }

TEST(TextMedia, KeepsWhatWasAnnouncedForOneSample) {
  using namespace std::string_literals;
  const MadeMovie made(600);
  const ::Media media = made.add_media(TextMediaType, 600);
  const ::MediaHandler handler = GetMediaHandler(media);
  UInt32 encoding = 0x100;
  Point offset = {-1, 2};
  SInt16 transparency = 256;
  EXPECT_EQ(noErr, TextMediaSetTextSampleData(handler, &encoding, sampleEncodingType));
  EXPECT_EQ(noErr, TextMediaSetTextSampleData(handler, &offset, dropShadowOffsetType));
  EXPECT_EQ(noErr, TextMediaSetTextSampleData(handler, &transparency, dropShadowTranslucencyType));
  transparency = 257;
  EXPECT_EQ(paramErr,
            TextMediaSetTextSampleData(handler, &transparency, dropShadowTranslucencyType));
  EXPECT_EQ(paramErr, TextMediaSetTextSampleData(handler, nullptr, sampleEncodingType));
  EXPECT_EQ(paramErr, TextMediaSetTextSampleData(handler, &encoding, 0x78787878));

  EXPECT_EQ(dataNotOpenForWrite, add_text(handler, "a")) << "and what was announced stays";
  ASSERT_EQ(noErr, BeginMediaEdits(media));
  TimeValue begin = -1;
  EXPECT_EQ(noErr, add_text(handler, "a"));
  EXPECT_EQ(noErr, add_text(handler, "b", 60, &begin));
  EXPECT_EQ(60, begin);
  EXPECT_EQ(bytes("\0\1a\0\0\0\x0C"s + "drpo\xFF\xFF\0\2"s + "\0\0\0\x0A"s + "drpt\1\0"s +
                  "\0\0\0\x0C"s + "encd\0\0\1\0"s),
            read_sample(media, 0).data);
  EXPECT_EQ(bytes("\0\1b"s), read_sample(media, 60).data);
  EXPECT_EQ(1, GetMediaSampleDescriptionCount(media)) << "samples that look alike share it";
}

TEST(TextMedia, RefusesWhatFitsNoSample) {
  const MadeMovie made(600);
  const ::Media media = made.add_media(TextMediaType, 600);
  const ::MediaHandler handler = GetMediaHandler(media);
  ASSERT_EQ(noErr, BeginMediaEdits(media));
  EXPECT_EQ(noErr, add_text(handler, std::string(65535, 'x')));
  EXPECT_EQ(65537, read_sample(media, 0).size);
  EXPECT_EQ(paramErr, add_text(handler, std::string(65536, 'x')));
  EXPECT_EQ(invalidDuration, add_text(handler, "x", -1));
  EXPECT_EQ(paramErr, TextMediaAddTextSample(handler, nullptr, 1, 0, 0, 0, nullptr, nullptr, 0,
                                             nullptr, 0, 0, 0, 0, nullptr, 1, nullptr));
  EXPECT_EQ(1, GetMediaSampleCount(media));

  const ::MediaHandler of_sound = GetMediaHandler(made.add_media(SoundMediaType, 600));
  EXPECT_EQ(badComponentSelector, add_text(of_sound, "x"));
  EXPECT_EQ(badComponentInstance, add_text(nullptr, "x"));
  EXPECT_EQ(static_cast<OSErr>(badComponentInstance), GetMoviesError());
  EXPECT_EQ(badComponentInstance,
            add_text(reinterpret_cast<::MediaHandler>(GetMediaTrack(media)), "x"));
}

TEST(Arithmetic, RoundsAsItsCallersExpect) {
  for (const auto& [value, whole] : std::vector<std::pair<double, SInt32>>{
           {20.5, 21}, {-0.5, -1}, {-20.4, -20}, {0.49, 0}, {32767.9, 32768}}) {
    EXPECT_EQ(whole, Fix2Long(static_cast<Fixed>(value * 65536))) << value;
  }
  EXPECT_EQ(20 << 16, FixRatio(20, 1));
  EXPECT_EQ(0x5555, FixRatio(1, 3));
  EXPECT_EQ(-0x5555, FixRatio(1, -3));
  EXPECT_EQ(INT32_MAX, FixRatio(1, 0));
  EXPECT_EQ(INT32_MIN, FixRatio(-1, 0));

  const struct {
    int64_t value;
    TimeScale from, to;
    int64_t result;
  } times[] = {{600, 600, 300, 300},
               {1, 600, 300, 1},
               {-1, 600, 300, 0},
               {1001, 30000, 600, 20},
               {5, 0, 600, 5},
               {5, 600, -1, 5},
               {int64_t{1} << 40, 1, 1000, (int64_t{1} << 40) * 1000}};
  for (const auto& one : times) {
    TimeRecord record = {};
    record.value.lo = static_cast<UInt32>(one.value);
    record.value.hi = static_cast<SInt32>(one.value >> 32);
    record.scale = one.from;
    ConvertTimeScale(&record, one.to);
    EXPECT_EQ(one.result, static_cast<int64_t>((uint64_t(record.value.hi) << 32) | record.value.lo))
        << one.value;
  }
  MatrixRecord matrix = {{{1, 2, 3}, {4, 5, 6}, {INT32_MAX, 8, 9}}};
  TranslateMatrix(&matrix, 1, -9);
  EXPECT_EQ(INT32_MIN, matrix.matrix[2][0]);
  EXPECT_EQ(-1, matrix.matrix[2][1]);
}

/// A movie with that payload in its user data.
BuiltMovie with_user_data(const Bytes& payload) {
  BuiltMovie movie;
  movie.tracks = {text_track({{"a", 600}})};
  movie.more_in_movie.resize(8 + payload.size());
  store_big_endian(movie.more_in_movie.data(), static_cast<uint32_t>(movie.more_in_movie.size()));
  store_big_endian(movie.more_in_movie.data() + 4, four_cc("udta"));
  std::copy(payload.begin(), payload.end(), movie.more_in_movie.begin() + 8);
  return movie;
}

Bytes item(const char* type, const Bytes& payload) {
  Bytes atom(8 + payload.size());
  store_big_endian(atom.data(), static_cast<uint32_t>(atom.size()));
  std::copy_n(type, 4, atom.begin() + 4);
  std::copy(payload.begin(), payload.end(), atom.begin() + 8);
  return atom;
}

const Bytes kOne = {0, 0, 0, 0, 0, 0, 0, 7, 2, 'h', 'i'};
const Bytes kTwo = {0, 0, 0, 1, 0, 0, 0, 0, 0};

Bytes short_chapters(::Movie movie) {
  const TestHandle entries(Bytes{1, 2, 3});
  EXPECT_EQ(noErr, ToolboxGetShortChapters(movie, entries)) << ToolboxErrorDetail();
  return entries.bytes();
}

TEST(ShortChapters, AreReadAsFarAsTheyAreWhole) {
  const Bytes name = item("name", {'x'});
  const struct {
    const char* what;
    Bytes user_data, entries;
  } cases[] = {
      {"of version 1", name + item("chpl", Bytes{1, 0, 0, 0, 0, 0, 0, 0, 2} + kOne + kTwo),
       kOne + kTwo},
      {"of version 0", item("chpl", Bytes{0, 0, 0, 0, 1} + kOne), kOne},
      {"count beyond what is there", item("chpl", Bytes{1, 0, 0, 0, 0, 0, 0, 0, 255} + kOne), kOne},
      {"count below what is there", item("chpl", Bytes{1, 0, 0, 0, 0, 0, 0, 0, 1} + kOne + kTwo),
       kOne},
      {"a title that is cut",
       item("chpl", {1, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 7, 200, 'h'}),
       {}},
      {"no count", item("chpl", {1, 0, 0, 0, 0, 0, 0, 0}), {}},
      {"nothing", item("chpl", {}), {}},
      {"behind the terminator", Bytes{0, 0, 0, 0} + item("chpl", Bytes{0, 0, 0, 0, 1} + kOne), {}},
      {"behind an item that lies",
       Bytes{0, 0, 0, 200, 'x', 'x', 'x', 'x'} + item("chpl", Bytes{0, 0, 0, 0, 1} + kOne),
       {}},
      {"no user data", {}, {}},
  };
  for (const auto& one : cases) {
    SCOPED_TRACE(one.what);
    const OpenedTestMovie movie(with_user_data(one.user_data));
    EXPECT_EQ(one.entries, short_chapters(movie));
    // What is set is read back, and a list that was there is gone.
    EXPECT_EQ(noErr,
              ToolboxSetShortChapters(movie, kTwo.data(), static_cast<uint32_t>(kTwo.size())));
    EXPECT_EQ(kTwo, short_chapters(movie));
    EXPECT_EQ(noErr, ToolboxSetShortChapters(movie, nullptr, 0));
    EXPECT_EQ(Bytes(), short_chapters(movie));
  }
}

TEST(ShortChapters, LeaveAllOtherUserDataInItsPlace) {
  const TemporaryFile file;
  const Bytes before = item("name", {'x'}), behind = item("WLOC", {1, 2, 3, 4}), end = {0, 0, 0, 0};
  const Status written = write_movie(
      with_user_data(before + item("chpl", Bytes{0, 0, 0, 0, 1} + kOne) + behind + end), file.path);
  ASSERT_TRUE(written.ok()) << written.message();
  ::Movie movie = nullptr;
  ASSERT_EQ(noErr, ToolboxOpenMovieForWriting(file.path.c_str(), &movie));
  EXPECT_EQ(noErr, ToolboxSetShortChapters(movie, kTwo.data(), static_cast<uint32_t>(kTwo.size())));
  EXPECT_EQ(noErr, ToolboxSaveMovie(movie)) << ToolboxErrorDetail();
  ::DisposeMovie(movie);
  std::ifstream stream(file.path, std::ios::binary);
  const std::string saved{std::istreambuf_iterator<char>(stream), {}};
  const Bytes wanted =
      before + item("chpl", Bytes{1, 0, 0, 0, 0, 0, 0, 0, 1} + kTwo) + behind + end;
  EXPECT_NE(std::string::npos, saved.find(std::string(wanted.begin(), wanted.end())));

  const OpenedTestMovie other(with_user_data(before));
  EXPECT_EQ(paramErr, ToolboxSetShortChapters(other, kOne.data(), 10)) << "an entry that is cut";
  EXPECT_EQ(paramErr, ToolboxSetShortChapters(other, nullptr, 10));
  EXPECT_EQ(invalidMovie, ToolboxSetShortChapters(nullptr, nullptr, 0));
  EXPECT_FALSE(ToolboxMovieIsModified(other));
}

}  // namespace
}  // namespace toolbox::testing
