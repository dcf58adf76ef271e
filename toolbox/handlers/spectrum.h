// How loud a short piece of sound is, all of it and in bands of frequencies.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace toolbox {

/// A level as callers have it: 255 for full scale (1.0), and beyond.
uint8_t level_byte(double level);

/// The amplitude of the sound in each band: what a sine wave has that is as strong. `bands`: centre
/// frequencies, Hz, unsigned 16.16, in any order; `rate`: frames a second, above 0.
///
/// The piece is weighted with a raised cosine and taken apart by a discrete Fourier transform. A
/// band reaches to the geometric middle between its frequency and the next one of another band; the
/// outermost reach as far outwards as inwards, a single one half an octave to both sides. So the
/// bands together hold the whole power of what lies between them. A band is at least three steps of
/// the transform wide.
std::vector<double> band_amplitudes(std::span<const float> sound, double rate,
                                    std::span<const uint32_t> bands);

}  // namespace toolbox
