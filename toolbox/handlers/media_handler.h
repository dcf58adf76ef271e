// What serves a media of some type: the base of all handlers.
#pragma once

#include "handlers/sound_controls.h"
#include "handlers/text_handler.h"
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
  /// What was announced for the next text sample; adding it forgets that.
  NextTextSample& next_text() { return next_text_; }
  /// What is set at a sound media.
  SoundControls& sound() { return sound_; }

  Token token() { return reference_.token(Kind::kMediaHandler, this); }

 private:
  Media* media_;
  NextTextSample next_text_;
  SoundControls sound_;
  Reference reference_;
};

}  // namespace toolbox
