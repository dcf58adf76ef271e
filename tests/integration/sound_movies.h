// Movies with sound that can be measured, with pixels that are not square, and with damage in both.
#pragma once

#include "file/movie_builder.h"

namespace krz::test {

/// Half a second of nothing, then a second of 1 kHz at 48000 Hz, 16 bits, left at 0.4 of full
/// scale, right at 0.2; then half a second of digital silence.
toolbox::BuiltMovie tone_movie();

/// Sound that cannot be measured, a track each: of no channels; that claims more bytes than the
/// file has; of an unknown code; of 4294967295 frames a second; whose samples last no time; of
/// 8-bit samples in a description cut to 20 bytes; with a layout that claims 2^31 descriptions in a
/// wave atom that claims more than there is.
toolbox::BuiltMovie broken_sound_movie();

/// Pictures of 720x480 with pixels of 10:11; of 720x576 with pixels of 59:54, 41472/59 wide when
/// clean; of 1440x1080 with pixels of 4:3, 1416x1062 when clean; of 640x480 with nothing said;
/// text.
toolbox::BuiltMovie anamorphic_movie();

/// Pictures of 64x48 whose description has: a clean aperture over 0; one larger than the picture; a
/// negative one; one cut short; pixels of 4294967295:1; a shape of pixels cut short; pixels of 0:0,
/// which count for nothing.
toolbox::BuiltMovie bad_aperture_movie();

}  // namespace krz::test
