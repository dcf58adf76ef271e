// Real movies: each opens, and every atom of it can be decoded and encoded again, or is refused for
// a known reason.
#include <gtest/gtest.h>

#include <map>

#include "atoms/all_atoms.h"
#include "atoms/atom_dump.h"
#include "atoms/atom_writer.h"
#include "atoms/read_atom.h"
#include "file/movie_file.h"
#include "test_movies.h"

namespace toolbox {
namespace {

struct Expected {
  OSErr code;
  const char* text;
};

/// The files that hold no movie, and what is said about them.
const std::map<std::string, Expected> kRefused = {
    {"droid-skeleton-preview.mov", {noMovieFound, "there is no movie atom (moov) in this file"}},
    {"exiv2-crafted-fgw8.mov", {noMovieFound, "claims 1969517665 bytes"}},
};

/// The files that open with a remark about damage beside the movie.
const std::map<std::string, const char*> kRemarked = {
    {"androidx-sample-mdat-too-long.mp4", "mdat at byte 2184 claims 99421 bytes"},
    {"mutagen-truncated-64bit.mp4", "mdat at byte 1442 claims 9741 bytes"},
    {"streamio-ios9.mov", "2 loose bytes follow the last atom"},
};

/// Decodes each atom that has a layout, and expects its encoding to be the bytes of the file.
size_t expect_atoms_to_reencode(const AtomTree& tree) {
  size_t decoded = 0;
  for (AtomIndex index = 0; index < tree.size(); ++index) {
    const AtomNode& node = tree.node(index);
    if (node.is_container) continue;
    const FourCC parent = node.parent == kNoAtom ? kAnyType : tree.node(node.parent).type;
    AllAtoms::any([&]<class Atom>() {
      if (!matches(Atom::kType, node.type, parent)) return false;
      const Result<Atom> atom = read_atom<Atom>(tree, index);
      EXPECT_TRUE(atom.ok()) << atom.status().message();
      if (!atom.ok()) return true;
      AtomWriter writer;
      writer.payload(atom.value());
      const ByteRange range = tree.payload(index);
      Bytes bytes(range.size);
      EXPECT_TRUE(range.source->read(range.offset, bytes).ok());
      EXPECT_EQ(writer.bytes(), bytes) << tree.path(index);
      ++decoded;
      return true;
    });
  }
  return decoded;
}

TEST(Corpus, EveryFileOpensOrIsRefusedForAKnownReason) {
  const auto files = corpus();
  if (files.empty()) GTEST_SKIP() << "the folder of real movies is not there";
  size_t refused = 0;
  size_t remarked = 0;
  for (const auto& file : files) {
    const std::string name = file.filename();
    SCOPED_TRACE(name);
    const auto opened = open_movie_file(file);
    if (const auto known = kRefused.find(name); known != kRefused.end()) {
      ASSERT_FALSE(opened.ok());
      EXPECT_EQ(opened.status().code(), known->second.code);
      EXPECT_NE(opened.status().message().find(known->second.text), std::string::npos)
          << opened.status().message();
      ++refused;
      continue;
    }
    ASSERT_TRUE(opened.ok()) << opened.status().message();
    const AtomTree& tree = opened.value().tree;
    const auto remark = kRemarked.find(name);
    ASSERT_EQ(tree.warnings().size(), remark != kRemarked.end() ? 1u : 0u);
    if (remark != kRemarked.end()) {
      EXPECT_NE(tree.warnings()[0].find(remark->second), std::string::npos) << tree.warnings()[0];
      ++remarked;
    }
    const bool has_tracks = tree.find_child(tree.movie(), four_cc("trak")) != kNoAtom;
    EXPECT_EQ(has_tracks, name != "tika-testmp4-udtalocation.mp4");
    EXPECT_GE(expect_atoms_to_reencode(tree), has_tracks ? 10u : 1u);
  }
  EXPECT_EQ(refused, kRefused.size());
  EXPECT_EQ(remarked, kRemarked.size());
}

TEST(Corpus, DumpShowsTheFieldsOfRealMovies) {
  const auto opened =
      open_movie_file(std::string(KRZ_SOURCE_DIR) + "/../shared/corpus/fq-stz2.mp4");
  if (opened.status().code() == fnfErr) GTEST_SKIP() << "the folder of real movies is not there";
  ASSERT_TRUE(opened.ok()) << opened.status().message();
  const std::string text = dump_tree(opened.value().tree, true);
  for (const char* line : {"    tkhd offset=165 size=92\n", "  time_scale: 44100\n",
                           "    1: length=50 media_start=1105 rate=65536\n", "  field_size: 8\n"}) {
    EXPECT_NE(text.find(line), std::string::npos) << line << "in\n" << text;
  }
}

}  // namespace
}  // namespace toolbox
