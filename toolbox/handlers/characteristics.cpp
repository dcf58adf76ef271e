#include "handlers/characteristics.h"

#include <algorithm>
#include <iterator>

namespace toolbox {

namespace {

enum : unsigned { kVisual = 1, kAudible = 2, kReadable = 4, kFrames = 8 };

struct TypeTraits {
  FourCC type;
  unsigned characteristics;
};

constexpr TypeTraits kTypes[] = {
    {four_cc("vide"), kVisual | kFrames},
    {four_cc("MPEG"), kVisual | kAudible | kFrames},
    {four_cc("soun"), kAudible},
    {four_cc("musi"), kAudible},
    {four_cc("text"), kVisual | kReadable},
    {four_cc("sbtl"), kVisual | kReadable},
    {four_cc("subt"), kVisual | kReadable},
    {four_cc("clcp"), kVisual | kReadable},
    {four_cc("tmcd"), kVisual},
    {four_cc("sprt"), kVisual},
    {four_cc("qd3d"), kVisual},
    {four_cc("flsh"), kVisual},
};

unsigned bit_of(FourCC characteristic) {
  switch (characteristic) {
    case four_cc("eyes"):
      return kVisual;
    case four_cc("ears"):
      return kAudible;
    case four_cc("text"):
      return kReadable;
    case four_cc("vfrr"):
      return kFrames;
    default:
      return 0;
  }
}

}  // namespace

bool has_characteristic(FourCC media_type, FourCC characteristic) {
  const auto* found =
      std::find_if(std::begin(kTypes), std::end(kTypes),
                   [&](const TypeTraits& traits) { return traits.type == media_type; });
  return found != std::end(kTypes) && (found->characteristics & bit_of(characteristic)) != 0;
}

}  // namespace toolbox
