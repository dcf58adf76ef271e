// User data lists and metadata: what is not understood stays, damage ends where it is, and what was
// added can be taken back to the last byte.
#include <gtest/gtest.h>

#include <random>

#include "file/memory_source.h"
#include "metadata/child_atoms.h"
#include "metadata/common_keys.h"
#include "metadata/metadata.h"
#include "movie/movie.h"
#include "saving/compose.h"

namespace toolbox {
namespace {

constexpr FourCC kTitle = 0xA96E616D;    // '©nam'
constexpr FourCC kComment = 0xA9636D74;  // '©cmt'

Bytes atom(FourCC type, const Bytes& payload) {
  Bytes out;
  const size_t mark = begin_child(out, type);
  append(out, payload);
  end_child(out, mark);
  return out;
}

Bytes joined(std::initializer_list<Bytes> parts) {
  Bytes out;
  for (const Bytes& part : parts) append(out, part);
  return out;
}

Bytes bytes_of(std::string_view text) { return Bytes(text.begin(), text.end()); }

Bytes handler(FourCC type) {
  Bytes out(25);
  store_big_endian(out.data() + 8, type);
  return atom(four_cc("hdlr"), out);
}

Bytes value(std::string_view text) {
  return atom(four_cc("data"), joined({{0, 0, 0, 1, 0, 0, 0, 0}, bytes_of(text)}));
}

/// A movie atom with nothing but what is given, opened.
std::unique_ptr<Movie> movie_with(const Bytes& children) {
  MovieHeaderAtom header;
  header.time_scale = 600;
  AtomWriter writer;
  const auto moov = writer.begin(four_cc("moov"));
  writer.atom(header);
  writer.raw(children);
  writer.end(moov);
  auto opened = open_movie_source(std::make_unique<MemorySource>(writer.take(), "lists.mov"));
  if (!opened.ok()) return nullptr;
  auto movie = Movie::load(opened.take());
  return movie.ok() ? movie.take() : nullptr;
}

/// The movie atom as it would be saved, without the header, whose date changes.
Bytes composed(const Movie& movie) {
  OffsetMap map = OffsetMap::in_place(0);
  auto pieces = compose_movie(movie, {.map = &map});
  EXPECT_TRUE(pieces.ok());
  auto bytes = pieces.value().to_bytes();
  EXPECT_TRUE(bytes.ok());
  constexpr size_t kHead = 8 + 108;
  return Bytes(bytes.value().begin() + kHead, bytes.value().end());
}

MetaData& metadata_of(Movie& movie) { return movie.annotations().value()->metadata(); }
UserDataList& user_data_of(Movie& movie) { return movie.annotations().value()->user_data(); }

Result<ItemId> add(MetaData& metadata, FourCC storage, FourCC common, std::string_view text) {
  const auto* key = reinterpret_cast<const uint8_t*>(&common);
  return metadata.add({storage, key_format::kCommon, ByteView(key, 4)}, {1, bytes_of(text)});
}

std::vector<std::string> values_of(MetaData& metadata) {
  std::vector<std::string> values;
  for (auto id = metadata.next(0, {}); id.ok(); id = metadata.next(id.value(), {})) {
    const auto value = metadata.value(id.value());
    values.emplace_back(value.value().bytes.begin(), value.value().bytes.end());
  }
  return values;
}

const Bytes kShortMeta =
    atom(four_cc("meta"), joined({{0, 0, 0, 0},
                                  handler(four_cc("mdir")),
                                  atom(four_cc("ilst"), joined({atom(kTitle, value("short")),
                                                                atom(four_cc("odd "), {1, 2})})),
                                  atom(four_cc("free"), Bytes(9, 7))}));
const Bytes kKeyedMeta =
    atom(four_cc("meta"),
         joined({handler(four_cc("mdta")),
                 atom(four_cc("keys"), joined({{0, 0, 0, 0, 0, 0, 0, 2},
                                               atom(four_cc("mdta"), bytes_of("used")),
                                               atom(four_cc("mdta"), bytes_of("unused"))})),
                 atom(four_cc("ilst"), joined({atom(1, joined({value("one"), value("two")})),
                                               atom(77, value("no such key"))}))}));
const Bytes kText =
    atom(kTitle, joined({{0, 5, 0, 0}, bytes_of("Roman"), {0, 3, 0x55, 0xC4}, bytes_of("UTF")}));

/// Movie atoms of many kinds: none, empty, ended or not, with lists that others wrote.
const std::vector<Bytes> kMovies = {
    {},
    atom(four_cc("udta"), {}),
    atom(four_cc("udta"), {0, 0, 0, 0}),
    atom(four_cc("udta"), joined({kText, atom(four_cc("WLOC"), {1, 2, 3, 4}), {0, 0, 0, 0}})),
    joined({atom(four_cc("udta"), joined({kShortMeta, kText})), kKeyedMeta}),
    joined({kKeyedMeta,
            atom(four_cc("udta"), joined({atom(kComment, bytes_of("raw text")), kShortMeta})),
            atom(four_cc("udta"), kText), atom(four_cc("abcd"), {9}), kKeyedMeta}),
    atom(four_cc("udta"), joined({kText, {0, 0, 0, 99}, bytes_of("cut off")})),
    atom(four_cc("udta"),
         atom(four_cc("meta"),
              joined({{0, 0, 0, 0}, atom(four_cc("ilst"), atom(kTitle, value("bare")))}))),
    atom(four_cc("meta"), joined({{0, 0, 0, 0}, handler(four_cc("ID32")), bytes_of("whatever")})),
};

TEST(MetaData, AddingAndRemovingReturnsTheMovieAtomToItsFormerBytes) {
  for (size_t i = 0; i < kMovies.size(); ++i) {
    SCOPED_TRACE("movie " + std::to_string(i));
    const auto movie = movie_with(kMovies[i]);
    ASSERT_TRUE(movie);
    MetaData& metadata = metadata_of(*movie);
    const size_t before = metadata.count({}).value();
    std::vector<ItemId> added;
    for (const FourCC storage :
         {storage_format::kUserData, storage_format::kQuickTime, storage_format::kShortList}) {
      for (const FourCC common : {four_cc("name"), four_cc("cmmt"), four_cc("name")}) {
        const auto id = add(metadata, storage, common, "added");
        ASSERT_TRUE(id.ok()) << id.status().message();
        added.push_back(id.value());
      }
    }
    EXPECT_EQ(metadata.count({}).value(), before + 9);
    const Bytes with_more = composed(*movie);
    EXPECT_GT(with_more.size(), kMovies[i].size());
    // What was written reads the same.
    EXPECT_EQ(values_of(metadata_of(*movie_with(with_more))), values_of(metadata));
    std::shuffle(added.begin(), added.end(), std::mt19937(static_cast<unsigned>(i)));
    for (const ItemId id : added) EXPECT_TRUE(metadata.remove(id).ok());
    EXPECT_EQ(composed(*movie), kMovies[i]);
  }
}

TEST(MetaData, AListThatWasMadeForAnItemLeavesWithItInALaterSession) {
  for (const FourCC storage :
       {storage_format::kUserData, storage_format::kQuickTime, storage_format::kShortList}) {
    const auto movie = movie_with({});
    ASSERT_TRUE(add(metadata_of(*movie), storage, four_cc("name"), "for a while").ok());
    const auto later = movie_with(composed(*movie));
    MetaData& metadata = metadata_of(*later);
    ASSERT_EQ(values_of(metadata), std::vector<std::string>{"for a while"});
    EXPECT_TRUE(metadata.remove(metadata.next(0, {}).value()).ok());
    EXPECT_EQ(composed(*later), Bytes());
  }
}

TEST(MetaData, ReadsWhatOthersWriteInOrder) {
  const auto movie =
      movie_with(joined({atom(four_cc("udta"), joined({kShortMeta, kText})), kKeyedMeta}));
  EXPECT_EQ(values_of(metadata_of(*movie)),
            (std::vector<std::string>{"one", "two", "short", "Roman", "UTF"}));
  EXPECT_EQ(values_of(metadata_of(*movie_with(kMovies[7]))), std::vector<std::string>{"bare"});
}

TEST(MetaData, DamageLeavesTheRestReadableAndEveryByteInPlace) {
  const Bytes good = kMovies[5];
  std::mt19937 random(11);
  for (int round = 0; round < 3000; ++round) {
    Bytes bad = good;
    const int hits = 1 + static_cast<int>(random() % 3);
    for (int i = 0; i < hits; ++i) {
      // The sizes of the movie atom's own children are another matter.
      const size_t at = random() % bad.size();
      bad[at] = static_cast<uint8_t>(random());
    }
    const auto movie = movie_with(bad);
    if (!movie) continue;
    auto lists = movie->annotations();
    ASSERT_TRUE(lists.ok());
    MetaData& metadata = lists.value()->metadata();
    const auto before = values_of(metadata);
    for (FourCC type = lists.value()->user_data().next_type(0); type != 0;
         type = lists.value()->user_data().next_type(type)) {
      ASSERT_GT(lists.value()->user_data().count(type), 0u);
    }
    const auto id = add(metadata, storage_format::kUserData, four_cc("prod"), "added");
    ASSERT_TRUE(id.ok());
    const auto again = movie_with(composed(*movie));
    if (!again) continue;
    EXPECT_EQ(values_of(metadata_of(*again)).size(), before.size() + 1) << "round " << round;
    ASSERT_TRUE(metadata.remove(id.value()).ok());
    const Bytes back = composed(*movie);
    const auto differ = std::mismatch(back.begin(), back.end(), bad.begin(), bad.end());
    ASSERT_TRUE(differ.first == back.end() && differ.second == bad.end())
        << "round " << round << ": byte " << differ.first - back.begin() << " of " << back.size()
        << ", before " << bad.size();
  }
}

TEST(MetaData, RefusesNewKeysWhereTheListOfKeysIsDamaged) {
  Bytes keys = kKeyedMeta;
  const Bytes count = {0, 0, 0, 0, 0, 0, 0, 2};
  const auto at = std::search(keys.begin(), keys.end(), count.begin(), count.end());
  ASSERT_NE(at, keys.end());
  *(at + 7) = 200;
  const auto movie = movie_with(keys);
  EXPECT_EQ(values_of(metadata_of(*movie)).size(), 2u);
  EXPECT_EQ(
      add(metadata_of(*movie), storage_format::kQuickTime, four_cc("name"), "x").status().code(),
      badPublicMovieAtom);
}

TEST(UserDataList, FlattensWithoutMetadataAndReadsBackWhatItFlattened) {
  const auto movie = movie_with(kMovies[4]);
  const Bytes flat = user_data_of(*movie).flat();
  EXPECT_EQ(flat, joined({kText, {0, 0, 0, 0}}));
  UserDataList list(UserDataList::Owner::kCaller);
  ASSERT_TRUE(list.read_flat(flat).ok());
  EXPECT_EQ(list.flat(), flat);
  for (size_t cut = 1; cut < kText.size(); ++cut) {
    UserDataList broken(UserDataList::Owner::kCaller);
    EXPECT_EQ(broken.read_flat(ByteView(flat).first(cut)).code(), cut == 0 ? 0 : paramErr) << cut;
    EXPECT_EQ(broken.flat().size(), 4u);
  }
}

TEST(MetaData, ManyItemsAreKeptInEveryStorage) {
  constexpr int kItems = 100000;
  for (const FourCC storage :
       {storage_format::kUserData, storage_format::kQuickTime, storage_format::kShortList}) {
    const auto movie = movie_with({});
    MetaData& metadata = metadata_of(*movie);
    for (int i = 0; i < kItems / 3; ++i) {
      ASSERT_TRUE(add(metadata, storage, four_cc("name"), "item").ok());
    }
    EXPECT_EQ(values_of(metadata).size(), static_cast<size_t>(kItems / 3));
    EXPECT_GT(composed(*movie).size(), static_cast<size_t>(kItems / 3 * 12));
  }
}

TEST(Locale, IsWrittenAsPeopleWriteIt) {
  for (const char* text : {"en_GB", "de", "_US", "sgn", ""}) {
    const auto locale = parse_locale(text);
    ASSERT_TRUE(locale) << text;
    EXPECT_EQ(locale_text(*locale), text);
  }
  EXPECT_EQ(locale_text({0x5553, kPackedEnglish}), "en_US");
  for (const char* text : {"english", "e", "en_", "en_G", "en_GBR", "12", "zz"}) {
    EXPECT_FALSE(parse_locale(text)) << text;
  }
}

}  // namespace
}  // namespace toolbox
