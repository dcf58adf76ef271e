#include "handlers/text_handler.h"

#include "atoms/atom_writer.h"
#include "foundation/frameworks.h"
#include "graphics/classic_fonts.h"

namespace toolbox {

namespace {

constexpr size_t kLongestText = 65535;
constexpr size_t kLongestName = 255;

template <class... Numbers>
void write_atom(AtomWriter& writer, FourCC type, Numbers... numbers) {
  const auto mark = writer.begin(type);
  (writer("", numbers), ...);
  writer.end(mark);
}

}  // namespace

Result<Bytes> text_sample(ByteView text, const TextSampleExtras& extras) {
  if (text.size() > kLongestText) {
    return Status(paramErr, "a text of " + std::to_string(text.size()) +
                                " bytes does not fit a sample, which holds 65535");
  }
  AtomWriter writer;
  auto length = static_cast<uint16_t>(text.size());
  writer("length", length);
  writer.raw(text);
  if (extras.highlight_end > extras.highlight_start) {
    write_atom(writer, four_cc("hlit"), static_cast<uint32_t>(extras.highlight_start),
               static_cast<uint32_t>(extras.highlight_end));
  }
  if (extras.highlight_color) write_atom(writer, four_cc("hclr"), *extras.highlight_color);
  if (extras.scroll_delay != 0) write_atom(writer, four_cc("dlay"), extras.scroll_delay);
  const NextTextSample& announced = extras.announced;
  if (announced.shadow_offset) write_atom(writer, four_cc("drpo"), *announced.shadow_offset);
  if (announced.shadow_transparency)
    write_atom(writer, four_cc("drpt"), *announced.shadow_transparency);
  if (announced.encoding) write_atom(writer, four_cc("encd"), *announced.encoding);
  return writer.take();
}

Bytes text_description(TextDescription description, std::string_view font_name) {
  font_name = font_name.substr(0, kLongestName);
  description.tail.assign(1, static_cast<uint8_t>(font_name.size()));
  description.tail.insert(description.tail.end(), font_name.begin(), font_name.end());
  AtomWriter writer;
  writer.atom(four_cc("text"), description);
  return writer.take();
}

std::string text_font_name(int16_t font) {
  if (font == 0) return {};
  if (const ClassicFont* classic = find_classic_font(font)) return std::string(classic->name);
  using NameOfFont = void(int16_t, Str255);
  static NameOfFont* name_of_font = nullptr;
  if (name_of_font == nullptr) {
    name_of_font =
        reinterpret_cast<NameOfFont*>(find_framework_function("Carbon.framework", "GetFontName"));
  }
  if (name_of_font == nullptr) return {};
  Str255 name = {};
  name_of_font(font, name);
  return {reinterpret_cast<const char*>(name + 1), name[0]};
}

}  // namespace toolbox
