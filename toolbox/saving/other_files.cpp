#include "saving/other_files.h"

#include <algorithm>

#include "base/big_endian.h"
#include "movie/media_data.h"
#include "saving/chunk_walk.h"
#include "saving/offset_map.h"

namespace toolbox {

namespace {

constexpr size_t kMostFiles = 256;

/// A chunk in another file.
struct OtherChunk {
  size_t file = 0;
  uint64_t begin = 0;
  uint64_t end = 0;
  uint8_t* row = nullptr;  // where its offset goes
};

// Damaged lists are copied as they stand, and mean the own file.
bool may_have_others(const Media& media) {
  const auto references = media.data_references();
  const auto descriptions = media.descriptions();
  if (!references.ok() || !descriptions.ok()) return false;
  for (uint32_t i = 1; i <= descriptions.value()->size(); ++i) {
    const Result<uint16_t> reference = external_reference_of(media, i);
    if (reference.ok() && reference.value() != 0) return true;
  }
  return false;
}

class Finder {
 public:
  explicit Finder(OtherFiles mode) : mode_(mode) {}

  /// Answers the rows of the media's new table of chunk offsets, or none.
  Result<Bytes> visit(const Media& media, std::vector<Bytes>& references) {
    TRY_ASSIGN(const SampleTable* table, media.samples());
    TRY_ASSIGN(Bytes rows, marked_as_left(table->tables().chunk_offsets));
    bool has_others = false;
    const auto place_chunk = [&](const SampleTable& tables, const SampleChunk& chunk,
                                 uint16_t reference) -> Status {
      uint8_t* const row = rows.data() + uint64_t{chunk.chunk} * 8;
      if (reference == 0 || PendingData::is_pending(chunk.offset)) {
        store_big_endian(row,
                         chunk.offset < OffsetMap::kTakenBase ? chunk.offset : OffsetMap::kLost);
        return {};
      }
      has_others = true;
      if (mode_ == OtherFiles::kLeft) return {};
      TRY_ASSIGN(const uint64_t bytes, chunk_bytes(media, tables, chunk));
      TRY(take(media, reference, chunk, bytes, row));
      references[reference - 1u] = self_reference(media.track().movie());
      return {};
    };
    TRY(for_each_chunk(media, place_chunk));
    return has_others ? std::move(rows) : Bytes();
  }

  /// Everything that is taken, each byte once; the rows get their offsets.
  std::vector<OtherFilesData::Range> lay_out() {
    std::sort(chunks_.begin(), chunks_.end(), [](const OtherChunk& a, const OtherChunk& b) {
      return a.file != b.file ? a.file < b.file : a.begin < b.begin;
    });
    std::vector<OtherFilesData::Range> ranges;
    size_t file = files_.size();
    uint64_t place = 0;
    for (const OtherChunk& chunk : chunks_) {
      if (file != chunk.file || chunk.begin > ranges.back().end) {
        if (!ranges.empty()) place += ranges.back().end - ranges.back().begin;
        ranges.push_back({files_[chunk.file], chunk.begin, chunk.end, place});
        file = chunk.file;
      }
      OtherFilesData::Range& range = ranges.back();
      range.end = std::max(range.end, chunk.end);
      store_big_endian(chunk.row,
                       OffsetMap::kTakenBase + range.place + (chunk.begin - range.begin));
    }
    return ranges;
  }

 private:
  /// The offsets as they are: chunks without samples keep theirs.
  static Result<Bytes> marked_as_left(const TableView& offsets) {
    Bytes rows(offsets.row_count() * 8);
    for (uint64_t i = 0; i < offsets.row_count(); ++i) {
      TRY_ASSIGN(const uint8_t* row, offsets.row(i));
      const uint64_t offset =
          offsets.row_size() == 8 ? load_big_endian<uint64_t>(row) : load_big_endian<uint32_t>(row);
      const bool is_a_place = offset < OffsetMap::kLost - OffsetMap::kLeftBase;
      store_big_endian(rows.data() + i * 8,
                       is_a_place ? OffsetMap::kLeftBase + offset : OffsetMap::kLost);
    }
    return rows;
  }

  Status take(const Media& media, uint16_t reference, const SampleChunk& chunk, uint64_t bytes,
              uint8_t* row) {
    TRY_ASSIGN(const std::shared_ptr<const ExternalFile> external, open_external(media, reference));
    TRY_ASSIGN(const size_t file, number_of(external));
    const uint64_t size = external->source->size();
    if (chunk.offset > size || bytes > size - chunk.offset) {
      return {endOfDataReached, external->path + ": track " + std::to_string(media.track().id()) +
                                    " has media data at byte " + std::to_string(chunk.offset) +
                                    " of this file, behind its end; the file is not the one that "
                                    "the movie was made with"};
    }
    chunks_.push_back({file, chunk.offset, chunk.offset + bytes, row});
    return {};
  }

  Result<size_t> number_of(const std::shared_ptr<const ExternalFile>& file) {
    const auto known = std::find_if(files_.begin(), files_.end(),
                                    [&](const auto& each) { return each->path == file->path; });
    if (known != files_.end()) return static_cast<size_t>(known - files_.begin());
    if (files_.size() == kMostFiles) {
      return Status(featureUnsupported, "the movie has media data in more than " +
                                            std::to_string(kMostFiles) + " other files");
    }
    files_.push_back(file);
    return files_.size() - 1;
  }

  OtherFiles mode_;
  std::vector<std::shared_ptr<const ExternalFile>> files_;
  std::vector<OtherChunk> chunks_;
};

}  // namespace

Result<OtherFilesData> OtherFilesData::find(const Movie& movie, OtherFiles mode) {
  OtherFilesData data;
  Finder finder(mode);
  std::map<const Media*, Bytes> rows;
  for (const auto& track : movie.tracks()) {
    if (track->media() == nullptr || !may_have_others(*track->media())) continue;
    const Media& media = *track->media();
    TRY_ASSIGN(const std::vector<Bytes>* references, media.data_references());
    std::vector<Bytes> new_references = *references;
    TRY_ASSIGN(Bytes media_rows, finder.visit(media, new_references));
    if (media_rows.empty()) continue;
    // The finder knows the place of each row, which moving the rows does not change.
    rows[&media] = std::move(media_rows);
    data.tables_[&media].data_references = std::move(new_references);
  }
  data.taken_ = finder.lay_out();
  for (auto& [media, media_rows] : rows) {
    Tables& tables = data.tables_[media];
    const uint64_t count = media_rows.size() / 8;
    tables.rows = std::make_unique<MemorySource>(std::move(media_rows),
                                                 movie.opened().file->name() + " (chunk offsets)");
    tables.chunk_offsets = TableView(tables.rows->whole(), 8, count);
  }
  return data;
}

const OtherFilesData::Tables* OtherFilesData::tables_of(const Media& media) const {
  const auto found = tables_.find(&media);
  return found == tables_.end() ? nullptr : &found->second;
}

}  // namespace toolbox
