#include "integration/described_movie.h"

#include <bit>
#include <string_view>

#include "base/big_endian.h"

namespace krz::test {
namespace {

using toolbox::Bytes;
using toolbox::four_cc;
using toolbox::store_big_endian;

/// A description whose bytes say nothing but where they are, until fields are written over them.
class Record {
 public:
  Record(toolbox::FourCC format, uint32_t size) : bytes_(size) {
    for (uint32_t i = 0; i < size; ++i) bytes_[i] = static_cast<uint8_t>(0x91 + i);
    put(0, size);
    if (size >= 8) put(4, format);
    for (uint32_t i = 8; i < 14 && i < size; ++i) bytes_[i] = 0;
    if (size >= 16) put(14, uint16_t{1});
  }

  template <class Number>
  Record& put(size_t at, Number value) {
    store_big_endian(bytes_.data() + at, value);
    return *this;
  }
  Record& text(size_t at, std::string_view value) {
    bytes_[at] = static_cast<uint8_t>(value.size());
    std::copy(value.begin(), value.end(), bytes_.begin() + static_cast<ptrdiff_t>(at) + 1);
    return *this;
  }
  /// The same record, ending early.
  Bytes cut(uint32_t size) {
    bytes_.resize(size);
    put(0, size);
    return bytes_;
  }
  Bytes bytes() const { return bytes_; }

 private:
  Bytes bytes_;
};

Record video() {
  return Record(four_cc("SVQ3"), 86)
      .put(20, four_cc("appl"))
      .put(24, uint32_t{513})
      .put(28, uint32_t{0xFFFFFFFE})
      .put(32, uint16_t{640})
      .put(34, uint16_t{0xFFFF})
      .put(36, uint32_t{0x00480000})
      .put(40, uint32_t{0xFFFF8000})
      .put(44, uint32_t{0x7FFFFFFF})
      .put(48, uint16_t{3})
      .text(50, "Sorenson Video 3")
      .put(82, uint16_t{24});
}

Record sound(uint16_t version, uint32_t size) {
  return Record(four_cc("QDM2"), size)
      .put(16, version)
      .put(20, four_cc("QDes"))
      .put(24, uint16_t{6})
      .put(26, uint16_t{0xFFF0})
      .put(32, uint32_t{0xAC440000});
}

Record sound_version_2() {
  return sound(2, 72)
      .put(40, std::bit_cast<uint64_t>(192000.25))
      .put(48, uint32_t{70000})
      .put(56, uint32_t{24});
}

Record text() {
  return Record(four_cc("text"), 80)
      .put(16, uint32_t{0x00010004})
      .put(20, uint32_t{0xFFFFFFFF})
      .put(24, uint16_t{0x12FF})
      .put(26, uint16_t{0x34FF})
      .put(28, uint16_t{0x56FF})
      .put(30, uint16_t{10})
      .put(32, uint16_t{0xFFEC})
      .put(34, uint16_t{110})
      .put(36, uint16_t{220})
      .put(42, uint16_t{16})
      .put(44, uint16_t{13})
      .put(46, uint16_t{0xFFFF})
      .put(48, uint8_t{0x55})
      .put(50, uint16_t{12})
      .put(52, uint16_t{0xFE01})
      .put(54, uint16_t{0xDC01})
      .put(56, uint16_t{0xBA01})
      .text(58,
            "L\x9F"
            "cida");
}

}  // namespace

toolbox::BuiltMovie described_movie() {
  toolbox::BuiltTrack pictures = toolbox::video_track(16, 16, 1, 60);
  pictures.descriptions = {video().bytes(), video().cut(16), video().cut(55)};
  toolbox::BuiltTrack sounds = toolbox::sound_track(1, 1);
  sounds.descriptions = {sound(0, 36).bytes(),      sound(1, 52).bytes(),
                         sound_version_2().bytes(), sound(3, 36).bytes(),
                         sound(0xFFFF, 36).bytes(), sound_version_2().cut(44)};
  toolbox::BuiltTrack texts = toolbox::text_track({{"one", 60}});
  texts.descriptions = {text().bytes(), text().put(48, uint8_t{0xAA}).bytes(), text().cut(35)};
  const auto other = [](toolbox::FourCC type, const Bytes& description) {
    return toolbox::other_track(type, description, 1, 4, 60);
  };
  const Record codes =
      Record(four_cc("form"), 28).put(20, four_cc("one ")).put(24, four_cc("two "));
  toolbox::BuiltTrack sprites = other(four_cc("sprt"), codes.bytes());
  sprites.descriptions.push_back(Record(four_cc("form"), 12).bytes());

  toolbox::BuiltMovie movie;
  movie.tracks = {pictures,
                  sounds,
                  texts,
                  sprites,
                  other(four_cc("musi"), codes.bytes()),
                  other(four_cc("qd3d"), codes.bytes()),
                  other(four_cc("flsh"), codes.bytes()),
                  toolbox::timecode_track(0, 60, 600, 20, 30, 0)};
  return movie;
}

}  // namespace krz::test
