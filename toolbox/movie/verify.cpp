#include "movie/verify.h"

#include <algorithm>
#include <set>

#include "base/big_endian.h"
#include "base/work_watcher.h"
#include "movie/insert_media.h"
#include "movie/media_data.h"
#include "movie/movie.h"
#include "movie/sample_walk.h"

namespace toolbox {

namespace {

constexpr size_t kMostProblems = 100;
constexpr uint32_t kManySamples = UINT32_MAX;

class Verifier {
 public:
  explicit Verifier(const Movie& movie) : movie_(movie) {}

  Result<std::vector<std::string>> run() {
    problems_ = movie_.opened().tree.warnings();
    check_ids();
    for (const auto& track : movie_.tracks()) {
      if (track->media() == nullptr) continue;
      const Result<const SampleTable*> table = track->media()->samples();
      if (table.ok()) samples_ += table.value()->sample_count();
    }
    for (const auto& track : movie_.tracks()) {
      name_ = "track " + std::to_string(track->id());
      check_references(*track);
      if (track->media() == nullptr) {
        add("it has no media");
        continue;
      }
      TRY(check_media(*track->media()));
      check_edits(*track);
    }
    if (problems_.size() > kMostProblems) problems_.resize(kMostProblems);
    return std::move(problems_);
  }

 private:
  void add(const std::string& problem) {
    if (problems_.size() < kMostProblems) problems_.push_back(name_ + ": " + problem);
  }

  void check_ids() {
    std::set<uint32_t> ids;
    for (const auto& track : movie_.tracks()) {
      name_ = "track " + std::to_string(track->id());
      if (track->id() == 0) add("its ID is 0, which no reference can name");
      if (track->id() != 0 && !ids.insert(track->id()).second) add("another track has the same ID");
    }
  }

  void check_references(const Track& track) {
    for (const TrackReferenceList& list : track.references().lists) {
      for (const uint32_t id : list.track_ids) {
        if (id == 0 || movie_.find_track(id) != nullptr) continue;
        add("its reference \"" + four_cc_text(list.type) + "\" names track " + std::to_string(id) +
            ", which does not exist");
      }
    }
  }

  void check_edits(const Track& track) {
    int64_t end = track.media()->likely_duration();
    // Display offsets can move what is shown behind the sum of the durations.
    if (const Result<int64_t> displayed = media_end(*track.media()); displayed.ok()) {
      end = std::max(end, displayed.value());
    }
    for (const EditSpan& span : track.timeline().spans()) {
      if (span.is_empty() || span.media_start <= end) continue;
      add("the edit at " + std::to_string(span.start) + " begins at media time " +
          std::to_string(span.media_start) + ", behind the media's end at " + std::to_string(end));
    }
  }

  Status check_media(const Media& media) {
    if (Status status = media.check(); !status.ok()) {
      add(status.message());
      return {};
    }
    if (Status status = check_samples(media); !status.ok()) {
      if (status.code() == ioErr || status.code() == memFullErr) return status;
      const bool names_track = status.code() == couldNotResolveDataRef;
      if (!names_track) {
        add(status.message());
      } else if (problems_.size() < kMostProblems) {
        problems_.push_back(status.message());
      }
    }
    return {};
  }

  Status check_samples(const Media& media) {
    TRY_ASSIGN(const SampleTable* table, media.samples());
    TRY(check_times(*table));
    if (table->sample_count() == 0) return {};
    TRY_ASSIGN(const std::vector<Bytes>* descriptions, media.descriptions());
    TRY_ASSIGN(SampleWalk walk, SampleWalk::make(media, 0));
    for (;;) {
      TRY_ASSIGN(const std::optional<SamplePiece> piece, walk.next(kManySamples));
      if (!piece || problems_.size() >= kMostProblems) return {};
      tell_watcher(checked_, samples_);
      checked_ += piece->count;
      const std::string sample = "sample " + std::to_string(piece->first + 1);
      if (piece->description == 0 || piece->description > descriptions->size()) {
        add(sample + " has description " + std::to_string(piece->description) + " of " +
            std::to_string(descriptions->size()));
      }
      TRY_ASSIGN(const uint64_t room, data_bytes_at(media, piece->description, piece->offset));
      const uint64_t place = PendingData::is_pending(piece->offset)
                                 ? piece->offset - PendingData::kPendingBase
                                 : piece->offset;
      if (place > room || piece->bytes() > room - place) {
        add(sample + " at byte " + std::to_string(piece->offset) +
            " reaches beyond the end of the file");
        return {};  // and so do those behind it
      }
    }
  }

  Status check_times(const SampleTable& table) {
    const TableView& deltas = table.tables().times.deltas;
    uint64_t timed = 0;
    for (uint64_t i = 0; i < deltas.row_count(); ++i) {
      TRY_ASSIGN(const uint8_t* row, deltas.row(i));
      timed += load_big_endian<uint32_t>(row);
    }
    if (timed != table.sample_count()) {
      add("its time table is for " + std::to_string(timed) + " samples, its size table for " +
          std::to_string(table.sample_count()));
    }
    return {};
  }

  const Movie& movie_;
  std::string name_;
  std::vector<std::string> problems_;
  uint64_t samples_ = 0;  // of all tracks
  uint64_t checked_ = 0;
};

/// Two sums over the same bytes, mixed differently.
class Digest {
 public:
  void add(ByteView bytes) {
    number(bytes.size());
    size_t at = 0;
    for (; at + 8 <= bytes.size(); at += 8) number(load_big_endian<uint64_t>(bytes.data() + at));
    uint64_t rest = 0;
    for (; at < bytes.size(); ++at) rest = rest << 8 | bytes[at];
    number(rest);
  }
  std::string text() const {
    constexpr char kDigits[] = "0123456789abcdef";
    std::string text;
    for (const uint64_t sum : {first_, second_}) {
      for (int shift = 60; shift >= 0; shift -= 4) text += kDigits[sum >> shift & 15];
    }
    return text;
  }

 private:
  void number(uint64_t word) {
    first_ = (first_ ^ word) * 0x9E3779B97F4A7C15;
    first_ ^= first_ >> 29;
    second_ = (second_ + word) * 0xC2B2AE3D27D4EB4F;
    second_ ^= second_ >> 31;
  }

  uint64_t first_ = 0x6B727A;
  uint64_t second_ = 0x7A726B;
};

}  // namespace

Result<std::vector<std::string>> verify_movie(const Movie& movie) { return Verifier(movie).run(); }

Result<std::string> digest_samples(const Track& track, uint32_t count) {
  Digest digest;
  if (track.media() == nullptr) return digest.text();
  const Media& media = *track.media();
  TRY_ASSIGN(const SampleTable* table, media.samples());
  if (table->sample_count() == 0) return digest.text();
  TRY_ASSIGN(SampleWalk walk, SampleWalk::make(media, 0));
  Bytes bytes;
  const uint32_t total = std::min(count, table->sample_count());
  uint32_t done = 0;
  for (;;) {
    TRY_ASSIGN(const std::optional<SamplePiece> piece, walk.next(std::max(count, 1u)));
    if (!piece || count == 0) return digest.text();
    count -= std::min(count, piece->count);
    tell_watcher(done, total);
    done += piece->count;
    // Packet by packet, so that where chunks end makes no difference.
    for (uint32_t i = 0; i < piece->packet_count(); ++i) {
      bytes.resize(piece->packet.bytes);
      TRY(read_media_data(media, piece->description,
                          piece->offset + uint64_t{i} * piece->packet.bytes, bytes));
      digest.add(bytes);
    }
  }
}

}  // namespace toolbox
