// Clip regions of tracks in files: read, kept as they stand, replaced and taken away.
#include <ApplicationServices/ApplicationServices.h>

#include "atoms/atom_writer.h"
#include "file/movie_builder.h"
#include "made_movie.h"
#include "opened_movie.h"
#include "saving_test.h"
#include "test_bytes.h"

namespace toolbox::testing {
namespace {

const char* const kCorner =
    "0024 0000 0000 0028 001E 0000 0000 000A 7FFF 0014 000A 001E 7FFF 0028 0000 001E 7FFF 7FFF";

Bytes clip_atom(const Bytes& record, const Bytes& beside = {}) {
  return atom_bytes(four_cc("clip"), atom_bytes(four_cc("crgn"), record) + beside);
}

/// A file with one video track, whose clip atom holds these bytes; opened for writing.
class ClippedMovie {
 public:
  explicit ClippedMovie(const Bytes& atoms) {
    BuiltMovie movie;
    movie.tracks = {video_track(32, 48, 2, 60)};
    movie.tracks[0].more_in_track = atoms;
    const Status written = write_movie(movie, file_.path);
    EXPECT_TRUE(written.ok()) << written.message();
    reopen();
  }
  ~ClippedMovie() { ::DisposeMovie(movie_); }

  void reopen() {
    if (movie_ != nullptr) ::DisposeMovie(movie_);
    EXPECT_EQ(noErr, ToolboxOpenMovieForWriting(file_.path.c_str(), &movie_))
        << ToolboxErrorDetail();
  }
  void save_and_reopen() {
    EXPECT_EQ(noErr, ToolboxSaveMovie(movie_)) << ToolboxErrorDetail();
    reopen();
  }
  ::Track track() const { return GetMovieIndTrack(movie_, 1); }
  bool is_modified() const { return ToolboxMovieIsModified(movie_); }
  /// The region's record; nothing for an unclipped track.
  std::optional<Bytes> clip() const {
    const auto region = reinterpret_cast<Handle>(GetTrackClipRgn(track()));
    if (region == nullptr) return std::nullopt;
    const Bytes record(*region, *region + GetHandleSize(region));
    DisposeHandle(region);
    return record;
  }
  void set(const Bytes& record) const {
    const TestHandle handle(record);
    SetTrackClipRgn(track(), reinterpret_cast<RgnHandle>(Handle(handle)));
  }
  /// Whether the bytes stand in the file's last movie atom.
  bool file_has(const Bytes& bytes) const {
    const Bytes file = read_file(file_.path);
    const Bytes moov = hex("6D6F6F76");
    const auto from = std::find_end(file.begin(), file.end(), moov.begin(), moov.end());
    return std::search(from, file.end(), bytes.begin(), bytes.end()) != file.end();
  }

 private:
  TemporaryFile file_;
  ::Movie movie_ = nullptr;
};

TEST(ClipRegions, AreKeptUntilTheyChange) {
  const Bytes other = atom_bytes(four_cc("junk"), hex("010203"));
  // A rectangle by rows and bytes behind the record: not how we write, and not ours to change.
  const Bytes by_rows =
      hex("001C 0001 0002 0003 0004 0001 0002 0004 7FFF 0003 0002 0004 7FFF 7FFF AAAA");
  ClippedMovie movie(clip_atom(by_rows, other));
  const uint32_t handles = ToolboxLiveHandles();
  EXPECT_EQ(hex("000A 0001 0002 0003 0004"), movie.clip());
  EXPECT_EQ(noErr, GetMoviesError());
  EXPECT_EQ(handles, ToolboxLiveHandles());
  movie.set(hex("000A 0001 0002 0003 0004"));
  EXPECT_EQ(noErr, GetMoviesError());
  EXPECT_FALSE(movie.is_modified());
  SetTrackLayer(movie.track(), 3);
  movie.save_and_reopen();
  EXPECT_TRUE(movie.file_has(clip_atom(by_rows, other)));

  movie.set(hex(kCorner));
  EXPECT_TRUE(movie.is_modified());
  EXPECT_EQ(hex(kCorner), movie.clip());
  movie.save_and_reopen();
  EXPECT_EQ(hex(kCorner), movie.clip());
  EXPECT_TRUE(movie.file_has(clip_atom(hex(kCorner), other)));

  SetTrackClipRgn(movie.track(), nullptr);
  EXPECT_EQ(std::nullopt, movie.clip());
  EXPECT_EQ(noErr, GetMoviesError());
  movie.save_and_reopen();
  EXPECT_EQ(std::nullopt, movie.clip());
  EXPECT_TRUE(movie.file_has(atom_bytes(four_cc("clip"), other))) << "what is beside it stays";
  SetTrackClipRgn(movie.track(), nullptr);
  EXPECT_FALSE(movie.is_modified());
}

TEST(ClipRegions, ComeAndGoWithTheirAtom) {
  ClippedMovie movie({});
  EXPECT_EQ(std::nullopt, movie.clip());
  EXPECT_EQ(noErr, GetMoviesError());
  movie.set(hex("000A 0000 0000 0000 0000"));
  movie.save_and_reopen();
  EXPECT_EQ(hex("000A 0000 0000 0000 0000"), movie.clip()) << "empty is not unclipped";
  SetTrackClipRgn(movie.track(), nullptr);
  movie.save_and_reopen();
  EXPECT_FALSE(movie.file_has(hex("636C6970")));
}

TEST(ClipRegions, OfDamagedRecordsAreTheirBox) {
  const struct {
    const char* what;
    Bytes atoms;
    const char* clip;  // null: an error that names the place
  } files[] = {
      {"rows that never end", clip_atom(hex("0014 0000 0000 0028 001E 0000 0000 001E 7FFF 7FFF")),
       "000A 0000 0000 0028 001E"},
      {"a record longer than its atom", clip_atom(hex("FFFE 0000 0000 0028 001E")),
       "000A 0000 0000 0028 001E"},
      {"a record too short for a box", clip_atom(hex("000A 0000")), nullptr},
      {"no record", clip_atom({}), nullptr},
      {"a clip far too large", clip_atom(Bytes(3 << 20)), nullptr},
  };
  for (const auto& each : files) {
    SCOPED_TRACE(each.what);
    ClippedMovie movie(each.atoms);
    if (each.clip != nullptr) {
      EXPECT_EQ(hex(each.clip), movie.clip());
      EXPECT_EQ(noErr, GetMoviesError());
      movie.set(hex(each.clip));
      EXPECT_FALSE(movie.is_modified());
    } else {
      EXPECT_EQ(std::nullopt, movie.clip());
      EXPECT_EQ(badPublicMovieAtom, GetMoviesError());
      EXPECT_NE(std::string::npos,
                std::string(ToolboxErrorDetail()).find("moov/trak[1]/clip.crgn at byte "))
          << ToolboxErrorDetail();
    }
    // However it is damaged, it can be replaced and taken away.
    movie.set(hex(kCorner));
    EXPECT_EQ(noErr, GetMoviesError());
    movie.save_and_reopen();
    EXPECT_EQ(hex(kCorner), movie.clip());
  }
  ClippedMovie damaged(clip_atom(hex("000A")));
  SetTrackClipRgn(damaged.track(), nullptr);
  damaged.save_and_reopen();
  EXPECT_EQ(std::nullopt, damaged.clip());
  EXPECT_EQ(noErr, GetMoviesError());
}

TEST(ClipRegions, RefuseWhatIsNoRegion) {
  ClippedMovie movie(clip_atom(hex(kCorner)));
  const auto made_up = reinterpret_cast<RgnHandle>(uintptr_t{0x12340});
  SetTrackClipRgn(movie.track(), made_up);
  EXPECT_EQ(paramErr, GetMoviesError());
  for (const char* record : {"", "000A", "0014 0000 0000 0028 001E 0000 0000 001E 7FFF 7FFF"}) {
    movie.set(hex(record));
    EXPECT_EQ(paramErr, GetMoviesError()) << record;
  }
  EXPECT_FALSE(movie.is_modified());
  EXPECT_EQ(nullptr, GetTrackClipRgn(nullptr));
  EXPECT_EQ(invalidTrack, GetMoviesError());
  SetTrackClipRgn(reinterpret_cast<::Track>(uintptr_t{0x12345}), nullptr);
  EXPECT_EQ(invalidTrack, GetMoviesError());
}

TEST(ClipRegions, OfClonesAreTheOriginals) {
  ClippedMovie movie(clip_atom(hex(kCorner)));
  ::Track clone = nullptr;
  ASSERT_EQ(noErr, AddClonedTrackToMovie(movie.track(), GetTrackMovie(movie.track()),
                                         kQTCloneShareSamples, &clone));
  const auto region = reinterpret_cast<Handle>(GetTrackClipRgn(clone));
  ASSERT_NE(nullptr, region);
  EXPECT_EQ(hex(kCorner), Bytes(*region, *region + GetHandleSize(region)));
  DisposeHandle(region);
  SetTrackClipRgn(clone, nullptr);
  EXPECT_EQ(hex(kCorner), movie.clip());
}

}  // namespace
}  // namespace toolbox::testing
