// Movies made by the C calls and saved: read back by us and by ffprobe, which knows nothing of us.
#include <gtest/gtest.h>

#include <numeric>

#include "made_movie.h"
#include "scratch_folder.h"
#include "test_bytes.h"

namespace toolbox::testing {
namespace {

bool has_ffprobe() { return !output_of("command -v ffprobe").empty(); }

/// One line a packet: display time, duration, bytes.
std::string packets(const std::string& path, const std::string& stream) {
  return output_of("ffprobe -v error -show_packets -select_streams " + stream +
                   " -show_entries packet=pts,duration,size -of csv=p=0 '" + path + "'");
}

class SavedMovie {
 public:
  explicit SavedMovie(const MadeMovie& made) {
    EXPECT_EQ(noErr, ToolboxSaveMovieAs(made, path().c_str(), 0)) << ToolboxErrorDetail();
    EXPECT_EQ(noErr, ToolboxOpenMovie(path().c_str(), &movie_)) << ToolboxErrorDetail();
  }
  ~SavedMovie() {
    if (movie_ != nullptr) ::DisposeMovie(movie_);
  }
  std::string path() const { return folder_.path("made.mov"); }
  ::Track track(SInt32 index) const { return GetMovieIndTrack(movie_, index); }
  ::Media media(SInt32 index) const { return GetTrackMedia(track(index)); }

 private:
  ScratchFolder folder_;
  ::Movie movie_ = nullptr;
};

void show_all(::Media media) {
  EXPECT_EQ(noErr,
            InsertMediaIntoTrack(GetMediaTrack(media), 0, 0, GetMediaDuration(media), 0x10000));
}

TEST(MadeFiles, TextsAreReadBackByUsAndByOthers) {
  const MadeMovie made(600);
  const ::Media media = made.add_media(TextMediaType, 1000);
  ASSERT_EQ(noErr, BeginMediaEdits(media));
  const Bytes first = hex("0003 4F6E65");
  const Bytes second = hex("0005 5477 6F2121");
  ASSERT_EQ(noErr, add_sample(media, first, 1500, text_description()));
  ASSERT_EQ(noErr, add_sample(media, second, 2500, text_description()));
  ASSERT_EQ(noErr, EndMediaEdits(media));
  show_all(media);
  const SavedMovie saved(made);
  EXPECT_EQ(2400, GetTrackDuration(saved.track(1)));
  EXPECT_EQ(first, read_sample(saved.media(1), 0).data);
  EXPECT_EQ(second, read_sample(saved.media(1), 3999).data);
  // The movie that was saved now stands over the file and goes on from there.
  ASSERT_EQ(noErr, BeginMediaEdits(media));
  ASSERT_EQ(noErr, add_sample(media, first, 100, text_description()));
  EXPECT_EQ(second, read_sample(media, 1500).data);
  EXPECT_EQ(first, read_sample(media, 4000).data);
  EXPECT_EQ(1, GetMediaSampleDescriptionCount(media));

  if (!has_ffprobe()) GTEST_SKIP() << "ffprobe is not installed";
  EXPECT_EQ("0,1500,5\n1500,2500,7\n", packets(saved.path(), "0"));
}

TEST(MadeFiles, SoundIsSoundToOthers) {
  const MadeMovie made(44100);
  const ::Media media = made.add_media(SoundMediaType, 44100);
  Bytes frames(size_t{50'000} * 4);
  std::iota(frames.begin(), frames.end(), uint8_t{0});
  ASSERT_EQ(noErr, BeginMediaEdits(media));
  ASSERT_EQ(noErr, add_sample(media, frames, 1, sound_description(), 50'000));
  show_all(media);
  const SavedMovie saved(made);
  EXPECT_EQ(frames, read_sample(saved.media(1), 0, 50'000).data);
  if (!has_ffprobe()) GTEST_SKIP() << "ffprobe is not installed";
  EXPECT_EQ("pcm_s16be,44100,2,50000\n",
            output_of("ffprobe -v error -show_entries "
                      "stream=codec_name,sample_rate,channels,duration_ts -of csv=p=0 '" +
                      saved.path() + "'"));
}

TEST(MadeFiles, TimecodeIsTimecodeToOthers) {
  const MadeMovie made(25);
  const ::Media media = made.add_media(TimeCodeMediaType, 25);
  const Bytes description =
      hex("00000026 746D6364 000000000000 0000 00000000 00000002 00000019 00000001 19 00 00000000");
  ASSERT_EQ(noErr, BeginMediaEdits(media));
  ASSERT_EQ(noErr, add_sample(media, hex("00015F90"), 250, description));  // one hour
  show_all(media);
  const SavedMovie saved(made);
  EXPECT_EQ(hex("00015F90"), read_sample(saved.media(1), 249).data);
  if (!has_ffprobe()) GTEST_SKIP() << "ffprobe is not installed";
  EXPECT_EQ("01:00:00:00\n", output_of("ffprobe -v error -show_entries stream_tags=timecode -of "
                                       "csv=p=0 '" +
                                       saved.path() + "'"));
}

TEST(MadeFiles, ATrackThatShowsNothingStillDoesSoAfterwards) {
  const MadeMovie made(600);
  const ::Media media = made.add_media(TextMediaType, 600);
  NewMovieTrack(made, 0, 0, 0);
  ASSERT_EQ(noErr, BeginMediaEdits(media));
  ASSERT_EQ(noErr, add_sample(media, hex("0000"), 600, text_description()));
  const SavedMovie saved(made);
  EXPECT_EQ(600, GetMediaDuration(saved.media(1)));
  EXPECT_EQ(0, GetTrackDuration(saved.track(1)));
  EXPECT_EQ(nullptr, saved.media(2));
}

}  // namespace
}  // namespace toolbox::testing
