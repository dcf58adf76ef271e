#include "movie/media_data.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "atoms/atom_writer.h"
#include "atoms/data_references.h"
#include "atoms/file_atoms.h"
#include "atoms/read_atom.h"
#include "foundation/file_locations.h"
#include "movie/movie.h"

namespace toolbox {

namespace {

constexpr size_t kReferenceFlagsAt = 8;   // version and flags of a data reference
constexpr size_t kReferenceIndexAt = 14;  // data reference index of a sample description
// Empty for a movie without a file.
}  // namespace

std::string own_path(const Movie& movie) {
  return movie.opened().disk == nullptr ? std::string() : movie.opened().disk->name();
}

bool is_classic(const Movie& movie) {
  const AtomTree& tree = movie.opened().tree;
  for (AtomIndex index = tree.first_top_level(); index != kNoAtom;
       index = tree.node(index).next_sibling) {
    if (tree.node(index).type != four_cc("ftyp")) continue;
    const Result<FileTypeAtom> brand = read_atom<FileTypeAtom>(tree, index);
    return !brand.ok() || brand.value().major_brand == four_cc("qt  ");
  }
  return true;
}

Bytes self_reference(const Movie& movie) {
  DataReferenceEntry entry;
  entry.flags = DataReferenceEntry::kSelfReference;
  AtomWriter writer;
  writer.atom(is_classic(movie) ? four_cc("alis") : four_cc("url "), entry);
  return writer.take();
}

Bytes external_reference(const Movie& movie, const std::string& path) {
  const bool classic = is_classic(movie);
  DataReferenceEntry entry;
  entry.data = classic ? file_locations::alias_to(path)
                       : file_locations::url_to(path, file_locations::folder_of(own_path(movie)));
  AtomWriter writer;
  writer.atom(classic ? four_cc("alis") : four_cc("url "), entry);
  return writer.take();
}

bool is_self_reference(ByteView entry) {
  return entry.size() >= kReferenceFlagsAt + 4 &&
         (load_big_endian<uint32_t>(&entry[kReferenceFlagsAt]) &
          DataReferenceEntry::kSelfReference) != 0;
}

Result<uint16_t> external_reference_of(const Media& media, uint32_t description) {
  TRY_ASSIGN(const std::vector<Bytes>* descriptions, media.descriptions());
  TRY_ASSIGN(const std::vector<Bytes>* references, media.data_references());
  if (references->empty() || description == 0 || description > descriptions->size()) return 0;
  const Bytes& entry = (*descriptions)[description - 1];
  if (entry.size() < kReferenceIndexAt + 2) return 0;
  auto index = load_big_endian<uint16_t>(&entry[kReferenceIndexAt]);
  // Damaged files name reference 0 or one beyond the last.
  if (index == 0 || index > references->size()) index = 1;
  return is_self_reference((*references)[index - 1]) ? uint16_t{0} : index;
}

Result<std::shared_ptr<const ExternalFile>> open_external(const Media& media, uint16_t reference) {
  TRY_ASSIGN(const std::vector<Bytes>* references, media.data_references());
  const Movie& movie = media.track().movie();
  auto file = movie.external_files().open(references->at(reference - 1u), own_path(movie));
  if (file.ok()) return file;
  return file.take_status().in_context("track " + std::to_string(media.track().id()) + ": ");
}

Result<uint64_t> data_bytes_at(const Media& media, uint32_t description, uint64_t offset) {
  const Movie& movie = media.track().movie();
  if (PendingData::is_pending(offset)) return movie.pending().size();
  TRY_ASSIGN(const uint16_t reference, external_reference_of(media, description));
  if (reference == 0) return movie.opened().file->size();
  TRY_ASSIGN(const std::shared_ptr<const ExternalFile> external, open_external(media, reference));
  return external->source->size();
}

Status read_media_data(const Media& media, uint32_t description, uint64_t offset,
                       std::span<uint8_t> bytes) {
  const Movie& movie = media.track().movie();
  if (PendingData::is_pending(offset)) return movie.pending().read(offset, bytes);
  TRY_ASSIGN(const uint16_t reference, external_reference_of(media, description));
  const ByteSource* source = movie.opened().file.get();
  std::shared_ptr<const ExternalFile> external;
  if (reference != 0) {
    TRY_ASSIGN(external, open_external(media, reference));
    source = external->source.get();
  }
  Status status = source->read(offset, bytes);
  if (status.code() == eofErr) return {endOfDataReached, status.message()};
  return status;
}

Status check_writable(const Movie& movie) {
  const FileSource* disk = movie.opened().disk;
  if (disk == nullptr || disk->access() == FileAccess::kWriting) return {};
  if (::access(disk->name().c_str(), W_OK) == 0) return {};
  // A file that is gone is written anew under another name.
  if (errno != EACCES && errno != EROFS && errno != EPERM) return {};
  return {wrPermErr, disk->name() + ": you may not write to this file; save the movie under " +
                         "another name first, or change its permissions"};
}

}  // namespace toolbox
