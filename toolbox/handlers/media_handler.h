// What serves a media of some type: the base of all handlers.
#pragma once

#include "memory/tokens.h"

namespace toolbox {

class Media;

/// The handler of one media, which owns it.
class MediaHandler {
 public:
  explicit MediaHandler(Media& media) : media_(&media) {}
  MediaHandler(const MediaHandler&) = delete;
  MediaHandler& operator=(const MediaHandler&) = delete;

  Media& media() const { return *media_; }
  Token token() { return reference_.token(Kind::kMediaHandler, this); }

 private:
  Media* media_;
  Reference reference_;
};

}  // namespace toolbox
