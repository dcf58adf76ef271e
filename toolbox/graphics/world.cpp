#include "graphics/world.h"

#include <algorithm>
#include <cstring>
#include <utility>
#include <vector>

namespace toolbox {

namespace {

/// Every world that there is. Drawing happens on one thread: that which calls the module.
std::vector<World*>& all_worlds() {
  static std::vector<World*>* const kAll = new std::vector<World*>;
  return *kAll;
}

World* current_world = nullptr;

template <class Is>
World* find_world(Is is) {
  const auto found = std::find_if(all_worlds().begin(), all_worlds().end(), is);
  return found == all_worlds().end() ? nullptr : *found;
}

// The mark of a pixel map in the row bytes of a bitmap, and what beside it they can say.
constexpr uint16_t kIsPixelMap = 0x8000;
constexpr int64_t kMostRowBytes = 0x3FFE;

}  // namespace

World::World() { all_worlds().push_back(this); }

World::~World() {
  std::erase(all_worlds(), this);
  if (current_world == this) current_world = nullptr;
}

std::unique_ptr<World> World::create(int depth, const Box& bounds, OSErr& error) {
  error = paramErr;
  if (bounds.empty()) return nullptr;
  error = cDepthErr;
  if (!is_known_depth(depth)) return nullptr;
  error = memFullErr;
  const int64_t row_bytes = (int64_t{bounds.width()} * depth + 31) / 32 * 4;
  const auto bytes = static_cast<size_t>(row_bytes * bounds.height());
  PixelMemory memory = allocate_pixels(bytes);
  if (!memory) return nullptr;
  // White, whatever the depth; the spare bit of 16 stays clear.
  if (depth != 1) std::memset(memory.get(), 0xFF, bytes);
  if (depth == 16) {
    for (size_t i = 0; i < bytes; i += 2) memory[i] = 0x7F;
  }
  auto world = std::make_unique<World>();
  world->pixels_ = {memory.get(), row_bytes, depth, bounds};
  world->memory_ = std::move(memory);
  world->describe_pixels();
  error = noErr;
  return world;
}

void World::swap_pixels(World& other) {
  std::swap(pixels_, other.pixels_);
  std::swap(memory_, other.memory_);
  describe_pixels();
  other.describe_pixels();
}

void World::describe_pixels() {
  BitMap& bitmap = pixel_map_.bitmap;
  bitmap.baseAddr = reinterpret_cast<Ptr>(pixels_.base);
  bitmap.rowBytes =
      static_cast<SInt16>(kIsPixelMap | std::min<int64_t>(pixels_.row_bytes, kMostRowBytes));
  const Box& box = pixels_.bounds;
  bitmap.bounds = {static_cast<SInt16>(box.top), static_cast<SInt16>(box.left),
                   static_cast<SInt16>(box.bottom), static_cast<SInt16>(box.right)};
}

namespace worlds {

World* find(CGrafPtr port) {
  return static_cast<World*>(tokens::find(Kind::kGraphicsWorld, reinterpret_cast<uintptr_t>(port)));
}

World* find(PixMapHandle pixel_map) {
  return find_world([&](World* each) { return each->pixel_map() == pixel_map; });
}

World* find(const BitMap* bitmap) {
  return find_world([&](World* each) { return each->bitmap() == bitmap; });
}

World& current() { return current_world != nullptr ? *current_world : default_port(); }

void set_current(World* world) { current_world = world; }

World& default_port() {
  static World* const kPort = new World;
  return *kPort;
}

}  // namespace worlds

}  // namespace toolbox
