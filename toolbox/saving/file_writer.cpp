#include "saving/file_writer.h"

#include <algorithm>

#include "base/work_watcher.h"

namespace toolbox {

Result<std::span<uint8_t>> FileWriter::room(uint64_t wanted) {
  // All writes but the first begin with a page.
  const size_t full = kGathered - position_ % kPage;
  if (filled_ == full) {
    TRY(finish());
    return room(wanted);
  }
  if (!buffer_) buffer_ = std::make_unique_for_overwrite<uint8_t[]>(kGathered);
  return std::span(buffer_.get() + filled_, std::min<uint64_t>(wanted, full - filled_));
}

Status FileWriter::write(ByteView bytes) {
  if (bytes.size() > kGathered) {
    TRY(finish());
    TRY(Storage::current().write(file_, position_, bytes, name_));
    position_ += bytes.size();
    return {};
  }
  while (!bytes.empty()) {
    TRY_ASSIGN(const std::span<uint8_t> to, room(bytes.size()));
    std::copy_n(bytes.begin(), to.size(), to.begin());
    filled_ += to.size();
    bytes = bytes.subspan(to.size());
  }
  return {};
}

Status FileWriter::write_zeros(uint64_t count) {
  while (count > 0) {
    TRY_ASSIGN(const std::span<uint8_t> to, room(count));
    std::fill(to.begin(), to.end(), uint8_t{0});
    filled_ += to.size();
    count -= to.size();
  }
  return {};
}

Status FileWriter::write_number(uint32_t value) {
  uint8_t bytes[4];
  store_big_endian(bytes, value);
  return write(bytes);
}

Status FileWriter::copy(const ByteRange& range, const OpenedMovie& movie) {
  const bool on_disk =
      movie.disk != nullptr && (range.source == movie.file.get() || range.source == movie.disk);
  if (on_disk && range.size >= kWorthCopying) {
    return copy_file(*movie.disk, range.offset, range.size);
  }
  return copy_through_memory(range);
}

Status FileWriter::copy(const FileSource& file, uint64_t offset, uint64_t size) {
  if (size >= kWorthCopying) return copy_file(file, offset, size);
  return copy_through_memory({&file, offset, size});
}

Status FileWriter::copy_file(const FileSource& file, uint64_t offset, uint64_t size) {
  TRY(finish());
  for (uint64_t done = 0; done < size;) {
    const uint64_t count = std::min(size - done, kAtOnce);
    TRY(Storage::current().copy(file.descriptor(), offset + done, file_, position_, count, name_));
    position_ += count;
    done += count;
    tell_watcher();
  }
  return {};
}

Status FileWriter::copy_through_memory(const ByteRange& range) {
  for (uint64_t done = 0; done < range.size;) {
    TRY_ASSIGN(const std::span<uint8_t> to, room(range.size - done));
    TRY(range.source->read(range.offset + done, to));
    if (passing_ != nullptr) TRY(passing_->saw(range.source, range.offset + done, to));
    filled_ += to.size();
    done += to.size();
  }
  tell_watcher();
  return {};
}

void FileWriter::tell_watcher() const {
  if (total_ > 0) toolbox::tell_watcher(position(), total_);
}

Status FileWriter::write(const AtomPieces& pieces, const OpenedMovie& movie) {
  return pieces.write([&](ByteView bytes) { return write(bytes); },
                      [&](const ByteRange& range) { return copy(range, movie); });
}

Status FileWriter::write_header(FourCC type, uint64_t payload) {
  const bool is_wide = header_bytes(payload) == 16;
  TRY(write_number(is_wide ? 1 : static_cast<uint32_t>(payload + 8)));
  TRY(write_number(type));
  if (!is_wide) return {};
  TRY(write_number(static_cast<uint32_t>((payload + 16) >> 32)));
  return write_number(static_cast<uint32_t>(payload + 16));
}

Status FileWriter::finish() {
  if (filled_ == 0) return {};
  TRY(Storage::current().write(file_, position_, ByteView(buffer_.get(), filled_), name_));
  position_ += filled_;
  filled_ = 0;
  return {};
}

Status write_pending(FileWriter& writer, const PendingData& pending) {
  Bytes window;
  for (uint64_t done = 0; done < pending.size(); done += window.size()) {
    window.resize(std::min<uint64_t>(pending.size() - done, 256 * 1024));
    TRY(pending.read(PendingData::kPendingBase + done, window));
    TRY(writer.write(ByteView(window)));
  }
  return {};
}

}  // namespace toolbox
