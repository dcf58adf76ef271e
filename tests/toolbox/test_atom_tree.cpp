// The tree of a movie file: what is found, what opening costs, and what damaged files are answered
// with.
#include <gtest/gtest.h>

#include "atoms/atom_writer.h"
#include "atoms/read_atom.h"
#include "atoms/sample_tables.h"
#include "file/compressed_movie.h"
#include "file/movie_file.h"
#include "test_bytes.h"
#include "test_movies.h"

namespace toolbox {
namespace {

Result<OpenedMovie> open_bytes(Bytes bytes) {
  return open_movie_source(std::make_unique<MemorySource>(std::move(bytes), "clip.mov"));
}

Bytes built(const BuiltMovie& movie) {
  Result<Bytes> bytes = build_movie(movie);
  EXPECT_TRUE(bytes.ok()) << bytes.status().message();
  return bytes.ok() ? bytes.take() : Bytes();
}

Bytes atom(const char (&type)[5], const Bytes& payload) {
  const FourCC code = load_big_endian<FourCC>(type);
  return atom_bytes(code, payload);
}

std::vector<std::string> paths(const AtomTree& tree) {
  std::vector<std::string> all;
  for (AtomIndex i = 0; i < tree.size(); ++i) all.push_back(tree.path(i));
  return all;
}

void expect_failure(const Bytes& file, OSErr code, const char* text) {
  const auto opened = open_bytes(file);
  ASSERT_FALSE(opened.ok()) << "expected: " << text;
  EXPECT_EQ(opened.status().code(), code) << opened.status().message();
  EXPECT_NE(opened.status().message().find(text), std::string::npos) << opened.status().message();
}

TEST(AtomTree, FindsTheAtomsOfEveryPlacement) {
  for (const auto place :
       {BuiltMovie::MoviePlace::kBeforeMedia, BuiltMovie::MoviePlace::kBehindMedia}) {
    for (const auto brand :
         {BuiltMovie::Brand::kQuickTime, BuiltMovie::Brand::kIso, BuiltMovie::Brand::kNone}) {
      for (const bool compressed : {false, true}) {
        BuiltMovie movie = test_movie("chapters");
        movie.place = place;
        movie.brand = brand;
        movie.compressed = compressed;
        movie.wide_media_header = brand == BuiltMovie::Brand::kIso;
        auto opened = open_bytes(built(movie));
        ASSERT_TRUE(opened.ok()) << opened.status().message();
        const AtomTree& tree = opened.value().tree;
        EXPECT_EQ(tree.is_compressed(), compressed);
        EXPECT_TRUE(tree.warnings().empty());

        const AtomIndex first = tree.find_child(tree.movie(), four_cc("trak"));
        const AtomIndex second = tree.find_next(first, four_cc("trak"));
        ASSERT_NE(second, kNoAtom);
        EXPECT_EQ(tree.find_next(second, four_cc("trak")), kNoAtom);
        EXPECT_EQ(tree.path(tree.find_path(second, {four_cc("mdia"), four_cc("minf"),
                                                    four_cc("gmhd"), four_cc("gmin")})),
                  "moov/trak[2]/mdia/minf/gmhd/gmin");
        const auto media =
            read_child<MediaHeaderAtom>(tree, tree.find_child(second, four_cc("mdia")));
        ASSERT_TRUE(media.ok() && media.value());
        EXPECT_EQ(media.value()->duration, 6000u);
        const AtomIndex chapters = tree.find_path(first, {four_cc("tref"), four_cc("chap")});
        ASSERT_NE(chapters, kNoAtom);
        EXPECT_EQ(read_atom<TrackReferenceAtom>(tree, chapters).value().track_ids,
                  std::vector<uint32_t>{2});
      }
    }
  }
}

TEST(AtomTree, FirstWholeMovieAtomWins) {
  const Bytes one = atom("moov", atom("udta", hex("01")));
  const Bytes two = atom("moov", {});
  auto opened = open_bytes(atom("free", one) + one + two + hex("0000"));
  ASSERT_TRUE(opened.ok());
  const AtomTree& tree = opened.value().tree;
  EXPECT_EQ(tree.node(tree.movie()).offset, 25u);
  EXPECT_EQ(paths(tree), (std::vector<std::string>{"free", "moov[1]", "moov[2]", "moov[1]/udta"}));
  EXPECT_EQ(tree.warnings().size(), 1u);  // the loose bytes
}

TEST(AtomTree, ReadsEveryFormOfHeader) {
  const Bytes wide = hex("00000001 6D646174 0000000000000012 ABCD");
  const Bytes extended = hex("0000001A 75756964 000102030405060708090A0B0C0D0E0F BEEF");
  auto opened = open_bytes(wide + extended + atom("moov", extended) + hex("00000000 66726565 01"));
  ASSERT_TRUE(opened.ok()) << opened.status().message();
  const AtomTree& tree = opened.value().tree;
  EXPECT_EQ(tree.payload(0).offset, 16u);
  EXPECT_EQ(tree.payload(0).size, 2u);
  EXPECT_EQ(tree.payload(1).size, 2u);
  EXPECT_EQ(tree.node(3).size, 9u);  // to the end of the file
  EXPECT_TRUE(tree.warnings().empty());
}

TEST(AtomTree, MediaDataMayClaimMoreThanTheFileHas) {
  auto opened = open_bytes(atom("moov", {}) + hex("00001000 6D646174 0000"));
  ASSERT_TRUE(opened.ok());
  EXPECT_TRUE(opened.value().tree.node(1).is_clipped);
  ASSERT_EQ(opened.value().tree.warnings().size(), 1u);
  EXPECT_NE(opened.value().tree.warnings()[0].find("mdat at byte 8 claims 4096"),
            std::string::npos);
}

TEST(AtomTree, FilesWithoutAMovieSayWhatIsThere) {
  expect_failure({}, noMovieFound, "clip.mov: the file is empty");
  expect_failure(hex("0000"), noMovieFound, "no movie atom");
  expect_failure(atom("mdat", Bytes(100)), noMovieFound, "no movie atom");
  expect_failure(atom("moof", {}), noMovieFound, "fragments only");
  expect_failure(hex("00001000 6D646174 0000"), noMovieFound, "cut short");
  expect_failure(hex("00000004 6D646174 0000"), noMovieFound, "no atom can begin at byte 0");
  expect_failure(hex("00000001 6D6F6F76 000000000000000F"), noMovieFound, "at byte 0");
  expect_failure(hex("00000001 6D6F6F76 FFFFFFFFFFFFFFFF"), badPublicMovieAtom, "moov at byte 0");
  expect_failure(hex("00001000 6D6F6F76 0000"), badPublicMovieAtom, "inside the movie atom");
}

TEST(AtomTree, DamageThatHidesTheMovieNamesPathAndOffset) {
  const struct {
    const char* stbl;
    const char* text;
  } cases[] = {
      {"00000004 73747473",
       "moov/trak[1]/mdia/minf/stbl at byte 48: the atom \"stts\" claims 4 bytes"},
      {"00000100 73747473", "moov/trak[1]/mdia/minf/stbl at byte 48: the atom \"stts\" claims 256"},
      {"FFFFFFFF 7374636F", "moov/trak[1]/mdia/minf/stbl at byte 48"},
      {"00000001 7374636F", "moov/trak[1]/mdia/minf/stbl at byte 48"},
      {"00000008 66726565 00000001 7374636F FFFFFFFFFFFFFFFF", "stbl at byte 56"},
  };
  for (const auto& each : cases) {
    const Bytes nested =
        atom("moov", atom("trak", atom("mdia", atom("minf", atom("stbl", hex(each.stbl))))));
    expect_failure(atom("free", {}) + nested, badPublicMovieAtom, each.text);
  }
}

TEST(AtomTree, DamageElsewhereIsKeptAsItIs) {
  const struct {
    Bytes movie;
    uint64_t loose;
  } cases[] = {
      {atom("udta", hex("00000003 6E616D65 FFFFFFFF")), 0},       // never looked into
      {hex("00000000"), 4},                                       // a terminator
      {hex("00000000 00000000 00"), 9},                           // likewise
      {atom("free", {}) + hex("000102"), 3},                      // too short for an atom
      {hex("0000FFFF 75647461 00"), 0},                           // clipped
      {atom("trak", atom("tref", hex("00000002 63686170"))), 0},  // a damaged reference list
      {atom("trak", atom("tapt", hex("00000100 636C6566 00"))), 0},
  };
  for (const auto& each : cases) {
    const auto opened = open_bytes(atom("moov", each.movie));
    ASSERT_TRUE(opened.ok()) << opened.status().message();
    EXPECT_EQ(opened.value().tree.loose_tail(0).size, each.loose);
  }
}

TEST(AtomTree, NestingAndCountAreBounded) {
  Bytes bomb;
  for (int depth = 0; depth < 2000; ++depth) bomb = atom(depth % 2 == 0 ? "trak" : "moov", bomb);
  const auto nested = open_bytes(atom("moov", bomb));
  ASSERT_TRUE(nested.ok());
  EXPECT_LT(nested.value().tree.size(), 5u);

  Bytes many;
  for (size_t i = 0; i <= AtomTree::kMostAtoms; ++i) many = std::move(many) + atom("free", {});
  expect_failure(atom("moov", many), memFullErr, "one too many");
  expect_failure(many, memFullErr, "one too many");
}

TEST(AtomTree, CompressedMovieIsBoundedBeforeItIsUnpacked) {
  const Bytes packed = hex("789C030000000001");  // of nothing
  const auto file = [&](const char* method, const char* length, const Bytes& data) {
    return atom("moov", atom("cmov", atom("dcom", hex(method)) + atom("cmvd", hex(length) + data)));
  };
  const char zlib[] = "7A6C6962";
  expect_failure(file("61646563", "00000010", packed), featureUnsupported, "\"adec\"");
  expect_failure(file(zlib, "FFFFFFFF", packed), badPublicMovieAtom, "not plausible");
  expect_failure(file(zlib, "00010000", packed), badPublicMovieAtom, "not plausible");
  expect_failure(file(zlib, "00000000", packed), badPublicMovieAtom, "less than a movie atom");
  expect_failure(file(zlib, "00000100", packed), badPublicMovieAtom, "unpacks to 0");
  expect_failure(file(zlib, "00000100", hex("789C")), badPublicMovieAtom, "cut short");
  expect_failure(file(zlib, "00000100", hex("FFFFFFFF")), badPublicMovieAtom, "damaged");
  expect_failure(atom("moov", atom("cmov", {})), badPublicMovieAtom, "lacks the packed movie");
}

TEST(AtomTree, CompressedMovieMustUnpackToOneMovieOfTheStatedLength) {
  BuiltMovie movie = test_movie("two-tracks");
  movie.compressed = true;
  const Bytes file = built(movie);
  auto opened = open_bytes(file);
  ASSERT_TRUE(opened.ok());
  const AtomTree& tree = opened.value().tree;
  const AtomIndex data = tree.find_path(tree.movie_in_file(), {four_cc("cmov"), four_cc("cmvd")});
  const uint64_t length_at = tree.payload(data).offset;
  const auto stated = load_big_endian<uint32_t>(file.data() + length_at);
  for (const int difference : {-1, 1}) {
    Bytes changed = file;
    store_big_endian(changed.data() + length_at, stated + difference);
    expect_failure(changed, badPublicMovieAtom, "states an unpacked length");
  }
}

TEST(AtomTree, FragmentsAreNotedAndListedOnDemand) {
  const Bytes media = atom("mdat", Bytes(10));
  const Bytes fragment = atom("moof", Bytes(20));
  auto opened =
      open_bytes(atom("moov", atom("mvex", {})) + fragment + media + fragment + media + fragment);
  ASSERT_TRUE(opened.ok());
  OpenedMovie& movie = opened.value();
  EXPECT_TRUE(movie.tree.is_fragmented());
  EXPECT_EQ(movie.tree.first_fragment(), 16u);
  const auto fragments = find_fragments(movie.tree, *movie.file);
  ASSERT_TRUE(fragments.ok());
  ASSERT_EQ(fragments.value().size(), 3u);
  EXPECT_EQ(fragments.value()[1].offset, 16u + 28 + 18);
  EXPECT_EQ(fragments.value()[2].size, 28u);
}

// Cut at any byte, a movie opens (what is missing is media data) or is refused with its name and a
// reason; nothing reads what is not there.
TEST(AtomTree, CutAtAnyByteOpensOrSaysWhy) {
  for (const auto place :
       {BuiltMovie::MoviePlace::kBeforeMedia, BuiltMovie::MoviePlace::kBehindMedia}) {
    for (const bool compressed : {false, true}) {
      BuiltMovie movie = test_movie("tables");
      movie.place = place;
      movie.compressed = compressed;
      const Bytes whole = built(movie);
      const auto opened = open_bytes(whole);
      ASSERT_TRUE(opened.ok());
      const uint64_t movie_end =
          opened.value().tree.node(opened.value().tree.movie_in_file()).end();
      for (size_t length = 0; length < whole.size(); ++length) {
        SCOPED_TRACE(length);
        auto cut = open_bytes(Bytes(whole.begin(), whole.begin() + static_cast<ptrdiff_t>(length)));
        ASSERT_EQ(cut.ok(), length >= movie_end);
        if (cut.ok()) continue;
        const OSErr code = cut.status().code();
        EXPECT_TRUE(code == noMovieFound || code == badPublicMovieAtom) << code;
        EXPECT_EQ(cut.status().message().rfind("clip.mov: ", 0), 0u);
      }
    }
  }
}

// Any one byte of a movie atom may be wrong; whatever then opens can be decoded or refused, atom by
// atom.
TEST(AtomTree, AnyByteMayBeWrong) {
  BuiltMovie movie = test_movie("tables");
  movie.place = BuiltMovie::MoviePlace::kBeforeMedia;
  const Bytes whole = built(movie);
  for (size_t at = 0; at < whole.size(); ++at) {
    for (const int value : {0x00, 0x01, 0x7F, 0xFF}) {
      Bytes changed = whole;
      changed[at] = static_cast<uint8_t>(value);
      const auto opened = open_bytes(std::move(changed));
      if (!opened.ok()) {
        EXPECT_EQ(opened.status().message().rfind("clip.mov: ", 0), 0u);
        continue;
      }
      const AtomTree& tree = opened.value().tree;
      for (AtomIndex i = 0; i < tree.size(); ++i) {
        const AtomNode& node = tree.node(i);
        ASSERT_LE(node.end(), whole.size());
        if (node.parent != kNoAtom) {
          ASSERT_LE(node.end(), tree.node(node.parent).end());
        }
      }
    }
  }
}

TEST(Opening, SmallMovieCostsTwoReadsOrThree) {
  for (const auto place :
       {BuiltMovie::MoviePlace::kBeforeMedia, BuiltMovie::MoviePlace::kBehindMedia}) {
    BuiltMovie movie = test_movie("two-tracks");
    movie.tracks[0].samples_per_chunk = 2;
    movie.place = place;
    ReadCount count;
    const Bytes file = built(movie);
    auto opened = open_movie_source(
        std::make_unique<CountedSource>(std::make_unique<MemorySource>(file, "small.mov"), count));
    ASSERT_TRUE(opened.ok());
    EXPECT_LE(count.reads, 2u);
    EXPECT_LE(count.bytes, 8 * 1024u);
    const uint64_t reads = count.reads;
    const AtomTree& tree = opened.value().tree;
    const AtomIndex track = tree.find_child(tree.movie(), four_cc("trak"));
    EXPECT_TRUE(read_child<TrackHeaderAtom>(tree, track).value().has_value());
    EXPECT_EQ(count.reads, reads);
  }
}

TEST(Opening, LargeTablesAreSteppedOver) {
  BuiltMovie movie = test_movie("two-tracks");
  constexpr uint32_t kSamples = 400'000;
  for (BuiltTrack& track : movie.tracks) {
    track.sample_count = kSamples;
    track.sample_size = 0;
    track.size_of = [](uint32_t sample) { return sample % 7 == 0 ? 2u : 1u; };
    track.samples_per_chunk = 100;
    track.durations = Rows::generated(kSamples, [](uint32_t) { return Rows::Row{1, 1}; });
    track.display_offsets = Rows::generated(kSamples, [](uint32_t row) {
      return Rows::Row{1, row % 3};
    });
  }
  ReadCount count;
  Bytes file = built(movie);
  ASSERT_GT(file.size(), 16'000'000u);
  auto opened = open_movie_source(std::make_unique<CountedSource>(
      std::make_unique<MemorySource>(std::move(file), "large.mov"), count));
  ASSERT_TRUE(opened.ok()) << opened.status().message();
  EXPECT_LE(count.reads, 20u);
  EXPECT_LE(count.bytes, 300 * 1024u);

  const AtomTree& tree = opened.value().tree;
  const AtomIndex table = tree.find_path(
      tree.movie(),
      {four_cc("trak"), four_cc("mdia"), four_cc("minf"), four_cc("stbl"), four_cc("ctts")});
  const auto offsets = read_atom<CompositionOffsetAtom>(tree, table);
  ASSERT_TRUE(offsets.ok());
  ASSERT_EQ(offsets.value().rows.row_count(), kSamples);
  const auto row = offsets.value().rows.row(kSamples - 1);
  ASSERT_TRUE(row.ok());
  EXPECT_EQ(load_big_endian<uint32_t>(row.value() + 4), (kSamples - 1) % 3);
  EXPECT_LE(count.bytes, 700 * 1024u);
}

TEST(Opening, ManyTracksAreReadInOnePass) {
  BuiltMovie movie;
  for (int i = 0; i < 200; ++i) {
    movie.tracks.push_back(sound_track(2, 1000));
    movie.tracks.back().samples_per_chunk = 2;
  }
  ReadCount count;
  Bytes file = built(movie);
  ASSERT_GT(file.size() - 200 * 4000, AtomTree::kSmallMovieAtom);
  auto opened = open_movie_source(std::make_unique<CountedSource>(
      std::make_unique<MemorySource>(std::move(file), "many.mov"), count));
  ASSERT_TRUE(opened.ok()) << opened.status().message();
  EXPECT_LE(count.reads, 20u);
}

}  // namespace
}  // namespace toolbox
