// Every atom, read and written: known bytes, cut bytes, hostile counts, and the choice of versions.
#include <gtest/gtest.h>

#include "atoms/all_atoms.h"
#include "atoms/atom_reader.h"
#include "atoms/atom_writer.h"
#include "golden_atoms.h"

namespace toolbox {
namespace {

template <class Atom>
std::optional<Atom> decode(const MemorySource& source, AtomFailure& failure) {
  return decode_atom<Atom>(source.whole(), failure);
}

template <class Atom>
Bytes encode(const Atom& atom) {
  AtomWriter writer;
  writer.payload(atom);
  EXPECT_TRUE(writer.status().ok()) << writer.status().message();
  return writer.take();
}

template <class List>
struct AsTestTypes;
template <class... Atoms>
struct AsTestTypes<AtomList<Atoms...>> {
  using Types = testing::Types<Atoms...>;
};

template <class Atom>
class EveryAtom : public testing::Test {};
TYPED_TEST_SUITE(EveryAtom, AsTestTypes<AllAtoms>::Types);

TYPED_TEST(EveryAtom, ReencodesKnownBytesExactly) {
  for (const Golden& golden : golden_atoms<TypeParam>()) {
    const MemorySource source(golden.payload, "golden");
    AtomFailure failure;
    const auto atom = decode<TypeParam>(source, failure);
    ASSERT_TRUE(atom) << failure.field << ": " << failure.text;
    EXPECT_EQ(encode(*atom), golden.payload);
  }
}

TYPED_TEST(EveryAtom, CutAtAnyByteIsRefusedOrKeptWhole) {
  for (const Golden& golden : golden_atoms<TypeParam>()) {
    for (size_t length = 0; length < golden.payload.size(); ++length) {
      SCOPED_TRACE(length);
      const Bytes cut(golden.payload.begin(),
                      golden.payload.begin() + static_cast<ptrdiff_t>(length));
      const MemorySource source(cut, "cut");
      AtomFailure failure;
      const auto atom = decode<TypeParam>(source, failure);
      ASSERT_EQ(atom.has_value(), length >= golden.needed);
      if (atom) {
        EXPECT_EQ(encode(*atom), cut);
      } else {
        EXPECT_EQ(failure.code, badPublicMovieAtom);
        EXPECT_FALSE(failure.field.empty());
        EXPECT_LE(failure.offset, length);
      }
    }
  }
}

TYPED_TEST(EveryAtom, UnknownVersionIsToldApartFromDamage) {
  if (!TypeParam::kType.full) return;
  Bytes payload = golden_atoms<TypeParam>().front().payload;
  payload[0] = 9;
  const MemorySource source(payload, "future");
  AtomFailure failure;
  EXPECT_FALSE(decode<TypeParam>(source, failure));
  EXPECT_EQ(failure.code, featureUnsupported);
}

// A count is compared with the bytes that are there before memory is asked for: no count below may
// cost any.
TYPED_TEST(EveryAtom, AnyFourBytesMayBeAllOnes) {
  for (const Golden& golden : golden_atoms<TypeParam>()) {
    for (size_t at = 0; at + 4 <= golden.payload.size(); ++at) {
      SCOPED_TRACE(at);
      Bytes payload = golden.payload;
      std::fill_n(payload.begin() + static_cast<ptrdiff_t>(at), 4, uint8_t{0xFF});
      const MemorySource source(payload, "hostile");
      AtomFailure failure;
      const auto atom = decode<TypeParam>(source, failure);
      if (atom) {
        EXPECT_EQ(encode(*atom), payload);
      } else {
        EXPECT_FALSE(failure.text.empty());
      }
    }
  }
}

TEST(AtomReader, NamesTheRowTheFieldAndTheByte) {
  const struct {
    const char* payload;
    const char* field;
    uint64_t offset;
  } cases[] = {
      {"00000000 00000002 | 0000000C 616C6973 00000001 | 00000100 75726C20", "entries[2].size", 20},
      {"00000000 00000001 | 00000004 616C6973", "entries[1].size", 8},
      {"00000000 000000FF | 0000000C 616C6973 00000001", "entries", 8},
  };
  for (const auto& each : cases) {
    const MemorySource source(hex(each.payload), "dref");
    AtomFailure failure;
    EXPECT_FALSE(decode<DataReferenceAtom>(source, failure));
    EXPECT_EQ(failure.field, each.field);
    EXPECT_EQ(failure.offset, each.offset);
  }
}

TEST(AtomReader, LoadsNoTableAndNoOversizedAtom) {
  struct Endless : ByteSource {
    uint64_t size() const override { return UINT64_C(1) << 40; }
    const std::string& name() const override { return name_; }
    Status read(uint64_t, std::span<uint8_t> bytes) const override {
      EXPECT_LE(bytes.size(), 4096u);
      std::fill(bytes.begin(), bytes.end(), uint8_t{0});
      return {};
    }
    std::string name_ = "endless";
  } source;
  const ByteRange everything{&source, 0, source.size()};
  AtomFailure failure;
  EXPECT_TRUE(decode_atom<SampleSizeAtom>(everything, failure));
  const auto dependencies = decode_atom<SampleDependencyAtom>(everything, failure);
  ASSERT_TRUE(dependencies);
  EXPECT_EQ(dependencies->rows.row_count(), source.size() - 4);
  EXPECT_FALSE(decode_atom<EditListAtom>(everything, failure));
  EXPECT_EQ(failure.code, memFullErr);
}

TEST(AtomReader, CompactSizesHaveThreeWidths) {
  const MemorySource source(hex("00000000 000000 07 00000001 | 12"), "stz2");
  AtomFailure failure;
  EXPECT_FALSE(decode<CompactSampleSizeAtom>(source, failure));
  EXPECT_EQ(failure.field, "field_size");
}

TEST(AtomWriter, PicksTheNarrowestVersionThatFits) {
  const struct {
    uint64_t length;
    int64_t media_start;
    uint8_t version;
  } cases[] = {
      {0xFFFFFFFF, -1, 0},         {UINT64_C(0x100000000), 0, 1}, {0, 0x7FFFFFFF, 0},
      {0, INT64_C(0x80000000), 1}, {0, -INT64_C(0x80000000), 0},  {0, -INT64_C(0x80000001), 1},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.media_start);
    EditListAtom list;
    list.entries = {{1, 0, kFixedOne}, {each.length, each.media_start, kFixedOne}};
    const Bytes bytes = encode(list);
    EXPECT_EQ(bytes[0], each.version);
    const MemorySource source(bytes, "elst");
    AtomFailure failure;
    const auto again = decode<EditListAtom>(source, failure);
    ASSERT_TRUE(again);
    EXPECT_EQ(again->entries[1].length, each.length);
    EXPECT_EQ(again->entries[1].media_start, each.media_start);
  }
}

TEST(AtomWriter, NestsContainers) {
  AtomWriter writer;
  const auto outer = writer.begin(four_cc("edts"));
  writer.atom(EditListAtom());
  writer.end(outer);
  EXPECT_EQ(writer.bytes(), hex("00000018 65647473 | 00000010 656C7374 00000000 00000000"));
}

TEST(HandlerName, IsReadInEveryFormItIsStoredIn) {
  using namespace std::string_literals;
  const struct {
    std::string stored;
    std::string_view name;
  } cases[] = {
      {"\x05Video"s, "Video"},
      {"\x05Video\0"s, "Video"},
      {"Video\0"s, "Video"},
      {"Video"s, "Video"},
      {""s, ""},
      {"\0"s, ""},
      {"\0\0"s, ""},
      {"\x07short"s, "\x07short"},
  };
  for (const auto& each : cases) {
    HandlerAtom handler;
    handler.raw_name = each.stored;
    EXPECT_EQ(handler.name(), each.name);
  }
  HandlerAtom handler;
  handler.component_type = four_cc("mhlr");
  handler.set_name(std::string(300, 'x'));
  EXPECT_EQ(handler.name().size(), 255u);
  handler.component_type = 0;
  handler.set_name("Sound");
  EXPECT_EQ(handler.raw_name, "Sound\0"s);
}

}  // namespace
}  // namespace toolbox
