// Composed movies: what is described is in the file, at the places its tables name.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "atoms/read_atom.h"
#include "file/movie_builder.h"
#include "file/movie_file.h"
#include "scratch_folder.h"
#include "test_movies.h"

namespace toolbox {
namespace {

/// The bytes of a sample table's chunks, in order, read through the offsets in the file.
Bytes chunk_bytes(const OpenedMovie& movie, AtomIndex track, uint64_t bytes_a_chunk) {
  const AtomTree& tree = movie.tree;
  const AtomIndex tables =
      tree.find_path(track, {four_cc("mdia"), four_cc("minf"), four_cc("stbl")});
  Bytes all;
  const auto append = [&](const TableView& rows, bool wide) {
    for (uint64_t i = 0; i < rows.row_count(); ++i) {
      const uint8_t* row = rows.row(i).value();
      const uint64_t offset =
          wide ? load_big_endian<uint64_t>(row) : load_big_endian<uint32_t>(row);
      Bytes chunk(bytes_a_chunk);
      const Status status = movie.file->read(offset, chunk);
      EXPECT_TRUE(status.ok()) << status.message();
      all.insert(all.end(), chunk.begin(), chunk.end());
    }
  };
  if (auto narrow = read_child<ChunkOffsetAtom>(tree, tables).take()) append(narrow->rows, false);
  if (auto wide = read_child<WideChunkOffsetAtom>(tree, tables).take()) append(wide->rows, true);
  return all;
}

TEST(MovieBuilder, ChunkOffsetsPointAtTheMediaData) {
  ScratchFolder folder;
  for (const bool wide : {false, true}) {
    for (const auto place :
         {BuiltMovie::MoviePlace::kBeforeMedia, BuiltMovie::MoviePlace::kBehindMedia}) {
      for (const bool compressed : {false, true}) {
        BuiltMovie movie;
        for (const uint8_t first : {uint8_t{10}, uint8_t{90}}) {
          BuiltTrack track =
              other_track(four_cc("gnrc"), atom_bytes(four_cc("gnrc"), {}), 12, 5, 10);
          for (int i = 0; i < 60; ++i) track.data.push_back(static_cast<uint8_t>(first + i));
          track.samples_per_chunk = 4;
          track.wide_chunk_offsets = wide;
          movie.tracks.push_back(track);
        }
        movie.place = place;
        movie.compressed = compressed;
        movie.wide_media_header = wide;
        ASSERT_TRUE(write_movie(movie, folder.path("built.mov")).ok());
        const auto opened = open_movie_file(folder.path("built.mov"));
        ASSERT_TRUE(opened.ok()) << opened.status().message();
        const AtomTree& tree = opened.value().tree;
        const AtomIndex first = tree.find_child(tree.movie(), four_cc("trak"));
        EXPECT_EQ(chunk_bytes(opened.value(), first, 20), movie.tracks[0].data);
        EXPECT_EQ(chunk_bytes(opened.value(), tree.find_next(first, four_cc("trak")), 20),
                  movie.tracks[1].data);

        // The file and the bytes in memory are composed by the same rules.
        const auto bytes = build_movie(movie);
        ASSERT_TRUE(bytes.ok());
        Bytes written(opened.value().file->size());
        ASSERT_TRUE(opened.value().file->read(0, written).ok());
        EXPECT_EQ(written, bytes.value());
      }
    }
  }
}

TEST(MovieBuilder, MissingMediaDataIsAHole) {
  ScratchFolder folder;
  BuiltMovie movie = test_movie("two-tracks");
  constexpr uint32_t kFrames = 20000;
  movie.tracks[0] = video_track(320, 240, kFrames, 60);
  movie.tracks[0].wide_chunk_offsets = true;
  movie.tracks[1].wide_chunk_offsets = true;
  ASSERT_TRUE(write_movie(movie, folder.path("holes.mov")).ok());
  struct stat info;
  ASSERT_EQ(::stat(folder.path("holes.mov").c_str(), &info), 0);
  EXPECT_GT(info.st_size, int64_t{kFrames} * 320 * 240 * 3);
  EXPECT_LT(info.st_blocks * 512, 1024 * 1024);
  const auto opened = open_movie_file(folder.path("holes.mov"));
  ASSERT_TRUE(opened.ok()) << opened.status().message();
  EXPECT_TRUE(opened.value().tree.warnings().empty());
}

TEST(MovieBuilder, RefusesWhatNoFileCanSay) {
  BuiltMovie no_samples = test_movie("two-tracks");
  no_samples.tracks[0].samples_per_chunk = 0;
  BuiltMovie too_large = test_movie("tables");
  too_large.tracks[0].compact_size_bits = 4;
  BuiltMovie too_far = test_movie("two-tracks");
  too_far.tracks[0] = video_track(4000, 4000, 100, 60);
  for (const BuiltMovie* movie : {&no_samples, &too_large}) {
    EXPECT_EQ(build_movie(*movie).status().code(), paramErr);
  }
  ScratchFolder folder;
  EXPECT_EQ(write_movie(too_far, folder.path("far.mov")).code(), paramErr);
  EXPECT_EQ(write_movie(too_far, folder.path("no/such/folder.mov")).code(), ioErr);
}

TEST(MovieBuilder, PacksSizesInEveryWidth) {
  for (const uint8_t bits : {uint8_t{4}, uint8_t{8}, uint8_t{16}}) {
    BuiltMovie movie = test_movie("tables");
    BuiltTrack& track = movie.tracks[0];
    track.compact_size_bits = bits;
    track.sample_count = 3;
    track.size_of = [](uint32_t sample) { return 5 + sample; };
    const auto bytes = build_movie(movie);
    ASSERT_TRUE(bytes.ok()) << bytes.status().message();
    auto opened = open_movie_source(std::make_unique<MemorySource>(bytes.value(), "stz2.mov"));
    ASSERT_TRUE(opened.ok());
    const AtomTree& tree = opened.value().tree;
    const auto sizes = read_child<CompactSampleSizeAtom>(
        tree, tree.find_path(tree.movie(),
                             {four_cc("trak"), four_cc("mdia"), four_cc("minf"), four_cc("stbl")}));
    ASSERT_TRUE(sizes.ok() && sizes.value());
    const uint8_t* packed = sizes.value()->packed.row(0).value();
    if (bits == 4) {
      EXPECT_EQ(load_big_endian<uint16_t>(packed), 0x5670);
    } else if (bits == 8) {
      EXPECT_EQ(packed[2], 7);
    } else {
      EXPECT_EQ(load_big_endian<uint16_t>(packed + 4), 7);
    }
  }
}

}  // namespace
}  // namespace toolbox
