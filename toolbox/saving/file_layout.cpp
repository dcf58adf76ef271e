#include "saving/file_layout.h"

#include <algorithm>
#include <array>

#include "file/atom_header.h"
#include "saving/compose.h"
#include "saving/file_writer.h"
#include "saving/used_data.h"

namespace toolbox {

namespace {

constexpr FourCC kMediaData = four_cc("mdat");

/// What describes fragments or finds places in them: wrong or idle once they are joined.
bool is_of_fragments(FourCC type) {
  constexpr std::array kTypes = {four_cc("moof"), four_cc("mfra"), four_cc("sidx"), four_cc("ssix"),
                                 four_cc("styp"), four_cc("prft"), four_cc("emsg")};
  return std::find(kTypes.begin(), kTypes.end(), type) != kTypes.end();
}

/// Collects the parts of a movie's file.
class PartCollector {
 public:
  PartCollector(const Movie& movie, bool keep_free, FileLayout& layout)
      : movie_(movie), opened_(movie.opened()), keep_free_(keep_free), layout_(layout) {}

  /// All atoms of the file, but in place of its media data only what is used of it.
  Status collect_used() {
    TRY(collect());
    std::vector<FilePart>& parts = layout_.parts;
    std::erase_if(parts, [](const FilePart& part) {
      return part.type == kMediaData || part.type == four_cc("wide");
    });
    layout_.movie_place = std::min(layout_.movie_place, parts.size());
    TRY_ASSIGN(const std::vector<ByteRange> used, used_media_data(movie_));
    uint64_t total = 0;
    for (const ByteRange& range : used) total += range.size;
    for (const ByteRange& range : used) {
      parts.push_back({kMediaData, range});
      if (&range == &used.front()) parts.back().new_payload = total;
    }
    return {};
  }

  Status collect() {
    const AtomTree& tree = opened_.tree;
    const bool has_fragments = tree.first_fragment().has_value();
    const uint64_t end = has_fragments ? *tree.first_fragment() : opened_.file->size();
    bool media_seen = false;
    for (AtomIndex atom = tree.first_top_level(); atom != kNoAtom;
         atom = tree.node(atom).next_sibling) {
      const AtomNode& node = tree.node(atom);
      if (node.offset >= end) break;
      media_seen = media_seen || node.type == kMediaData || node.type == four_cc("wide");
      // Where it stood, if that is in front of the media; else right in front of them.
      if (!media_seen && atom == tree.movie_in_file()) movie_stood_ = layout_.parts.size();
      TRY(add(node.type, node.offset, node.header_size, node.size, node.is_clipped));
    }
    if (has_fragments) {
      TRY(collect_fragments(end));
    } else if (tree.top_level_end() < end) {
      add_loose(tree.top_level_end(), end);
    }
    place_movie();
    return {};
  }

 private:
  /// The walk of the tree stops at the first fragment.
  Status collect_fragments(uint64_t from) {
    const uint64_t end = opened_.file->size();
    while (from + 8 <= end) {
      TRY_ASSIGN(const AtomHeader header, read_atom_header(*opened_.file, from, end));
      if (header.form == AtomHeader::Form::kDamaged) break;
      const bool is_clipped =
          header.form == AtomHeader::Form::kToTheEnd || header.size > end - from;
      const uint64_t size = is_clipped ? end - from : header.size;
      TRY(add(header.type, from, header.header_size, size, is_clipped));
      from += size;
    }
    if (from < end) add_loose(from, end);
    return {};
  }

  Status add(FourCC type, uint64_t offset, uint8_t header_size, uint64_t size, bool is_clipped) {
    if (type == four_cc("moov") || is_of_fragments(type)) return {};
    if ((type == four_cc("free") || type == four_cc("skip")) && !keep_free_) return {};
    uint8_t stated[4];
    TRY(opened_.file->read(offset, stated));
    const bool new_header = is_clipped || load_big_endian<uint32_t>(stated) == 0;
    const uint64_t skipped = new_header ? header_size : 0;
    layout_.parts.push_back({type, {opened_.file.get(), offset + skipped, size - skipped}});
    if (new_header) layout_.parts.back().new_payload = size - skipped;
    return {};
  }

  /// Bytes that stand in no atom may be media data all the same.
  void add_loose(uint64_t begin, uint64_t end) {
    layout_.parts.push_back({kMediaData, {opened_.file.get(), begin, end - begin}, end - begin});
  }

  void place_movie() {
    const auto& parts = layout_.parts;
    const auto media = std::find_if(parts.begin(), parts.end(), [](const FilePart& part) {
      return part.type == kMediaData || part.type == four_cc("wide");
    });
    layout_.movie_place =
        std::min(movie_stood_, static_cast<size_t>(std::distance(parts.begin(), media)));
  }

  const Movie& movie_;
  const OpenedMovie& opened_;
  bool keep_free_;
  FileLayout& layout_;
  size_t movie_stood_ = SIZE_MAX;
};

/// Puts everything behind each other with a movie atom of `movie_bytes`.
void place_parts(const Movie& movie, uint64_t movie_bytes, FileLayout& layout) {
  layout.map = OffsetMap();
  struct Kept {
    ByteRange bytes;
    uint64_t place;
  };
  std::vector<Kept> kept;
  uint64_t place = 0;
  for (size_t i = 0; i <= layout.parts.size(); ++i) {
    if (i == layout.movie_place) place += movie_bytes;
    if (i == layout.parts.size()) break;
    const FilePart& part = layout.parts[i];
    if (part.new_payload) place += header_bytes(*part.new_payload);
    kept.push_back({part.bytes, place});
    place += part.bytes.size;
  }
  std::sort(kept.begin(), kept.end(),
            [](const Kept& a, const Kept& b) { return a.bytes.offset < b.bytes.offset; });
  for (const Kept& each : kept) {
    layout.map.keep(each.bytes.offset, each.bytes.offset + each.bytes.size, each.place);
  }
  const uint64_t pending = movie.pending().size();
  if (pending > 0) place += header_bytes(pending);
  layout.map.set_pending_offset(place);
  place += pending;
  const uint64_t taken = layout.other_files.taken_size();
  if (taken > 0) place += header_bytes(taken);
  if (layout.other_files.has_any()) layout.map.set_taken_offset(place);
  layout.size = place + taken;
}

}  // namespace

Status lay_out_file(const Movie& movie, const SaveAsOptions& options, FileLayout& layout) {
  TRY_ASSIGN(layout.other_files, OtherFilesData::find(movie, options.other_files));
  const bool is_flat = movie.opened().tree.first_fragment().has_value();
  for (const bool keep_free : {false, true}) {
    layout.parts.clear();
    PartCollector parts(movie, keep_free, layout);
    TRY(options.media_data == MediaDataKept::kUsed ? parts.collect_used() : parts.collect());
    // The movie atom's size depends on the offsets in it, and they on its size. Offsets only grow
    // with the atom, and only so many tables can become wide.
    uint64_t movie_bytes = 0;
    Status status;
    for (bool is_settled = false; !is_settled;) {
      place_parts(movie, movie_bytes, layout);
      Result<AtomPieces> composed = compose_movie(
          movie, {.map = &layout.map, .is_flat = is_flat, .other_files = &layout.other_files});
      status = composed.take_status();
      if (!status.ok()) break;
      layout.movie_atom = composed.take();
      // A smaller atom than planned for cannot come of a larger guess.
      is_settled = layout.movie_atom.size() == movie_bytes;
      movie_bytes = layout.movie_atom.size();
    }
    if (status.ok()) return {};
    // Media data in free space: some programs leave it there.
    if (status.code() != cantPutPublicMovieAtom || keep_free) return status;
  }
  return {};
}

}  // namespace toolbox
