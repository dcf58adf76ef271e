// Reads the headers of a media from the atoms of its file.
#include "atoms/read_atom.h"
#include "movie/media.h"

namespace toolbox {

Result<std::unique_ptr<Media>> Media::load(Track& track, const AtomTree& tree, AtomIndex mdia) {
  std::unique_ptr<Media> media(new Media(track, &tree, mdia));
  TRY_ASSIGN(std::optional<MediaHeaderAtom> header, read_child<MediaHeaderAtom>(tree, mdia));
  if (header) media->header_ = std::move(*header);
  if (media->header_.time_scale == 0) media->header_.time_scale = 600;
  TRY_ASSIGN(std::optional<HandlerAtom> handler, read_child<HandlerAtom>(tree, mdia));
  if (handler) media->handler_atom_ = std::move(*handler);
  return media;
}

}  // namespace toolbox
