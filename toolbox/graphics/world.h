// Offscreen worlds: pixels to draw into, with the settings of drawing; and which of them is
// current.
#pragma once

#include <ApplicationServices/QuickDraw.h>

#include <memory>

#include "graphics/font_measures.h"
#include "graphics/pixels.h"
#include "memory/pixel_memory.h"
#include "memory/tokens.h"

/// What a pixel map handle leads to. It begins as a bitmap does, so that callers can take it for
/// one; the calls know its world by its address and ask that, as large worlds have rows that 14
/// bits cannot count.
struct PixMapType {
  BitMap bitmap;
};

namespace toolbox {

class World {
 public:
  /// White pixels over `bounds`; black is drawn. Fails: null with cDepthErr, with paramErr for a
  /// box without pixels, with memFullErr.
  static std::unique_ptr<World> create(int depth, const Box& bounds, OSErr& error);

  /// A port without pixels: the one that there always is.
  World();
  ~World();
  World(const World&) = delete;
  World& operator=(const World&) = delete;

  const Pixels& pixels() const { return pixels_; }

  /// Takes the pixels of another world, which gets the old ones.
  void swap_pixels(World& other);

  PixMapHandle pixel_map() { return &pixel_map_address_; }
  const BitMap* bitmap() const { return &pixel_map_.bitmap; }

  Token token() { return reference_.token(Kind::kGraphicsWorld, this); }

  Color foreground = kBlack;
  TextSettings text;

 private:
  void describe_pixels();

  Pixels pixels_;
  PixelMemory memory_;
  PixMapType pixel_map_ = {};
  PixMapType* pixel_map_address_ = &pixel_map_;
  Reference reference_;
};

namespace worlds {

/// The world of a reference, a pixel map or a bitmap; null for any other. Nothing is read of what
/// they point at.
World* find(CGrafPtr port);
World* find(PixMapHandle pixel_map);
World* find(const BitMap* bitmap);

/// The world that is drawn into; the port without pixels when none was set or it is gone.
World& current();
void set_current(World* world);
World& default_port();

}  // namespace worlds

}  // namespace toolbox
