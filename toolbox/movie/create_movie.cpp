// Makes a movie that has no file yet.
#include <cassert>

#include "atoms/atom_writer.h"
#include "atoms/file_atoms.h"
#include "base/mac_time.h"
#include "movie/movie.h"

namespace toolbox {

Result<std::unique_ptr<Movie>> Movie::create(uint32_t time_scale) {
  assert(time_scale > 0);
  FileTypeAtom brand;
  brand.compatible_brands = {four_cc("qt  ")};
  MovieHeaderAtom header;
  header.creation_time = header.modification_time = current_mac_time();
  header.time_scale = time_scale;
  AtomWriter writer;
  writer.atom(brand);
  const auto moov = writer.begin(four_cc("moov"));
  writer.atom(header);
  writer.end(moov);
  // The name is that of the file, which a first save gives.
  TRY_ASSIGN(OpenedMovie opened,
             open_movie_source(std::make_unique<MemorySource>(writer.take(), std::string())));
  return Movie::load(std::move(opened));
}

}  // namespace toolbox
