// What a movie file that is written anew is made of.
#pragma once

#include <optional>
#include <vector>

#include "movie/movie.h"
#include "saving/atom_pieces.h"
#include "saving/other_files.h"
#include "saving/saving.h"

namespace toolbox {

/// An atom of the old file that goes into the new one, or bytes that stood in none.
struct FilePart {
  FourCC type = 0;
  ByteRange bytes;
  // Written in front of `bytes`: the header of an atom with a payload of that many bytes, which
  // begins with them; the parts that follow hold the rest.
  std::optional<uint64_t> new_payload = {};
};

/// Everything in its order. Does not move: the movie atom borrows the map.
struct FileLayout {
  FileLayout() = default;
  FileLayout(const FileLayout&) = delete;
  FileLayout& operator=(const FileLayout&) = delete;

  std::vector<FilePart> parts;
  size_t movie_place = 0;  // the movie atom comes before this part
  OtherFilesData other_files;
  AtomPieces movie_atom;
  OffsetMap map;
  uint64_t size = 0;  // of the whole file
};

/// Lays a movie out anew: its movie atom before the media data, offsets right, fragments joined,
/// free space left out unless media data stands in it, pending data and what is taken over of other
/// files at the end. Fails: as compose_movie(), OtherFilesData::find() and used_media_data().
Status lay_out_file(const Movie& movie, const SaveAsOptions& options, FileLayout& layout);

}  // namespace toolbox
