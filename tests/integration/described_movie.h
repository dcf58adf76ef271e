// A movie whose sample descriptions hold a different value in every field.
#pragma once

#include "file/movie_builder.h"

namespace krz::test {

/// Tracks, in order: video, sound, text, sprite, music, three-dee, flash, timecode. The first
/// description of each is whole; what its fields do not cover is filled with other bytes, so that a
/// value read from another place shows. Video has one of 16 bytes and one that ends inside its
/// name, sound has versions 0, 1, 2, 3, -1 and a version 2 that ends inside the rate, text one that
/// ends inside its box, and the sprite one of 12 bytes.
toolbox::BuiltMovie described_movie();

}  // namespace krz::test
