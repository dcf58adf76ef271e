#include "movie/movie.h"

#include <algorithm>
#include <cassert>

namespace toolbox {

int64_t Movie::duration() const {
  int64_t longest = 0;
  for (const auto& track : tracks_) longest = std::max(longest, track->duration());
  return longest;
}

Track* Movie::find_track(uint32_t id) const {
  if (id == 0) return nullptr;
  const auto found = std::find_if(tracks_.begin(), tracks_.end(),
                                  [&](const auto& track) { return track->id() == id; });
  return found == tracks_.end() ? nullptr : found->get();
}

Result<const FragmentSamples*> Movie::fragments() const {
  if (!opened_.tree.first_fragment()) return nullptr;
  if (!fragments_ && fragments_failure_.ok()) {
    Result<std::unique_ptr<FragmentSamples>> samples = FragmentSamples::read(*this);
    if (samples.ok()) {
      fragments_ = samples.take();
    } else {
      fragments_failure_ = samples.take_status();
    }
  }
  if (fragments_failure_.ok()) return fragments_.get();
  return Status(fragments_failure_.code(), fragments_failure_.message());
}

void Movie::check_invariants() const {
  assert(header_.time_scale > 0);
  for ([[maybe_unused]] const auto& track : tracks_) {
    assert(&track->movie() == this);
    track->check_invariants();
  }
}

}  // namespace toolbox
