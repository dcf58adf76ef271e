#include "file/movie_builder.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "atoms/atom_writer.h"
#include "file/built_movie.h"
#include "file/byte_sink.h"
#include "file/zlib.h"

namespace toolbox {

Rows Rows::of(std::vector<Row> rows) {
  const auto count = static_cast<uint32_t>(rows.size());
  return {count, [rows = std::move(rows)](uint32_t row) { return rows[row]; }};
}

Bytes atom_bytes(FourCC type, ByteView payload) {
  AtomWriter writer;
  const auto mark = writer.begin(type);
  writer.raw(payload);
  writer.end(mark);
  return writer.take();
}

namespace {

constexpr uint64_t kHeaderBytes = 8;

/// Composes the file piece by piece into a sink.
class FileComposer {
 public:
  FileComposer(const BuiltMovie& movie, ByteSink& sink)
      : movie_(movie), layout_(lay_out(movie)), sink_(sink) {}

  Status compose() {
    TRY(check_description(movie_));
    write_brand();
    return movie_.place == BuiltMovie::MoviePlace::kBeforeMedia ? movie_first() : movie_last();
  }

 private:
  bool wide_header() const {
    return movie_.wide_media_header || layout_.media_bytes + kHeaderBytes > UINT32_MAX;
  }
  uint64_t media_header_bytes() const { return wide_header() ? 16 : 2 * kHeaderBytes; }

  Status movie_last() {
    const uint64_t media_offset = sink_.position() + media_header_bytes();
    write_media();
    TRY(write_movie_atom(media_offset));
    sink_.write(movie_.behind_movie);
    return {};
  }

  Status movie_first() {
    // Offsets do not change the length of a plain movie atom, so a first pass that only counts
    // tells where the media data will begin. A packed one does change: it gets some room, and
    // padding fills the rest.
    constexpr uint64_t kPackingRoom = 1024;
    uint64_t room = 0;
    if (movie_.compressed) {
      TRY_ASSIGN(const Bytes packed, packed_movie(0));
      room = packed.size() + packed.size() / 4 + kPackingRoom;
    } else {
      CountingSink count;
      TRY(compose_movie_atom(movie_, layout_, 0, count));
      room = count.position();
    }
    const uint64_t media_offset = sink_.position() + room + media_header_bytes();
    const uint64_t end = sink_.position() + room;
    TRY(write_movie_atom(media_offset));
    if (movie_.compressed) {
      if (sink_.position() + kHeaderBytes > end) {
        return {paramErr, "the packed movie atom does not fit the room kept for it; put it last"};
      }
      const uint64_t padding = end - sink_.position();
      sink_.number(static_cast<uint32_t>(padding));
      sink_.number(four_cc("free"));
      sink_.skip(padding - kHeaderBytes);
    }
    write_media();
    sink_.write(movie_.behind_movie);
    return {};
  }

  void write_brand() {
    if (movie_.brand == BuiltMovie::Brand::kNone) return;
    FileTypeAtom brand;
    brand.compatible_brands = {four_cc("qt  ")};
    if (movie_.brand == BuiltMovie::Brand::kIso) {
      brand.major_brand = four_cc("isom");
      brand.minor_version = 0x200;
      brand.compatible_brands = {four_cc("isom"), four_cc("iso2"), four_cc("mp41")};
    }
    AtomWriter writer;
    writer.atom(brand);
    sink_.write(writer.bytes());
  }

  void write_media() {
    if (wide_header()) {
      sink_.number(uint32_t{1});
      sink_.number(four_cc("mdat"));
      sink_.number(layout_.media_bytes + 16);
    } else {
      sink_.number(uint32_t{kHeaderBytes});
      sink_.number(four_cc("wide"));
      sink_.number(static_cast<uint32_t>(layout_.media_bytes + kHeaderBytes));
      sink_.number(four_cc("mdat"));
    }
    for (size_t i = 0; i < movie_.tracks.size(); ++i) {
      const BuiltTrack& track = movie_.tracks[i];
      const uint64_t bytes = layout_.tracks[i].media_bytes;
      const uint64_t given = std::min<uint64_t>(bytes, track.data.size());
      sink_.write(ByteView(track.data).first(given));
      if (bytes > given) sink_.skip(bytes - given);
    }
  }

  Status write_movie_atom(uint64_t media_offset) {
    if (!movie_.compressed) return compose_movie_atom(movie_, layout_, media_offset, sink_);
    TRY_ASSIGN(const Bytes packed, packed_movie(media_offset));
    sink_.write(packed);
    return {};
  }

  Result<Bytes> packed_movie(uint64_t media_offset) {
    MemorySink plain;
    TRY(compose_movie_atom(movie_, layout_, media_offset, plain));
    const Bytes bytes = plain.take();
    TRY_ASSIGN(const Bytes packed, zlib_pack(bytes));
    AtomWriter writer;
    const auto moov = writer.begin(four_cc("moov"));
    const auto cmov = writer.begin(four_cc("cmov"));
    writer.atom(DataCompressionAtom());
    const auto cmvd = writer.begin(four_cc("cmvd"));
    auto unpacked_size = static_cast<uint32_t>(bytes.size());
    writer("unpacked_size", unpacked_size);
    writer.raw(packed);
    writer.end(cmvd);
    writer.end(cmov);
    writer.end(moov);
    if (!writer.status().ok()) return Status(paramErr, writer.status().message());
    return writer.take();
  }

  const BuiltMovie& movie_;
  MovieLayout layout_;
  ByteSink& sink_;
};

}  // namespace

Result<Bytes> build_movie(const BuiltMovie& movie) {
  MemorySink sink;
  TRY(FileComposer(movie, sink).compose());
  TRY(sink.finish());
  return sink.take();
}

Status write_movie(const BuiltMovie& movie, const std::string& path) {
  const int descriptor = ::open(path.c_str(), O_RDWR | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
  if (descriptor < 0) {
    return {ioErr, path + ": the file cannot be made (" + std::strerror(errno) + ")"};
  }
  FileSink sink(descriptor, path);
  Status status = FileComposer(movie, sink).compose();
  if (status.ok()) status = sink.finish();
  ::close(descriptor);
  return status;
}

}  // namespace toolbox
