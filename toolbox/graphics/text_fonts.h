// The fonts that a text is drawn with: the one asked for, and others for characters that it lacks.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace toolbox {

/// A glyph of one of them, at the size that was asked for.
struct DrawnGlyph {
  const uint8_t* coverage;  // until the next glyph is drawn
  int32_t left;             // of where the pen stands
  int32_t above;            // rows above the line
  int32_t width;
  int32_t height;
  int32_t bytes_per_row;
  double advance;  // pixels
};

class TextFonts {
 public:
  TextFonts(const std::string& family, bool bold);
  ~TextFonts();
  TextFonts(const TextFonts&) = delete;
  TextFonts& operator=(const TextFonts&) = delete;

  /// Draws a character `shift` (0 to 1) to the right of a whole pixel, or only measures it. False
  /// when no font has even a sign for what is missing.
  bool glyph(char32_t character, int size, double shift, bool draw, DrawnGlyph& glyph);

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace toolbox
