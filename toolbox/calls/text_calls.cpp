// The calls of QuickTime/MediaHandlers.h for text media.
#include <cstring>

#include "calls/handler_guard.h"
#include "calls/references.h"
#include "movie/add_samples.h"

using namespace toolbox::calls;
using toolbox::ByteView;
using toolbox::FourCC;
using toolbox::Result;
using toolbox::Status;
using toolbox::TextDescription;

namespace {

constexpr FourCC kText = toolbox::four_cc("text");
constexpr uint16_t kMostTransparent = 256;
constexpr RGBColor kBlack = {0, 0, 0};
constexpr RGBColor kWhite = {0xFFFF, 0xFFFF, 0xFFFF};

TextDescription::Color color_of(const RGBColor* color, const RGBColor& otherwise) {
  const RGBColor& given = color != nullptr ? *color : otherwise;
  return {given.red, given.green, given.blue};
}

template <class T>
T value_at(const void* data) {
  T value;
  std::memcpy(&value, data, sizeof value);
  return value;
}

// The track's size in whole pixels, from 0,0.
std::array<int16_t, 4> box_of(const toolbox::Track& track) {
  return {0, 0, static_cast<int16_t>(track.header().height >> 16),
          static_cast<int16_t>(track.header().width >> 16)};
}

}  // namespace

TOOLBOX_CALL ComponentResult TextMediaSetTextSampleData(MediaHandler mh, void* data,
                                                        OSType dataType) {
  return guarded_handler(mh, kText, [&](toolbox::MediaHandler& handler) -> Status {
    if (data == nullptr) return {paramErr, "the extension of the next text sample has no data"};
    toolbox::NextTextSample& next = handler.next_text();
    switch (dataType) {
      case sampleEncodingType:
        next.encoding = value_at<uint32_t>(data);
        return {};
      case dropShadowOffsetType: {
        const auto offset = value_at<Point>(data);
        next.shadow_offset = {offset.v, offset.h};
        return {};
      }
      case dropShadowTranslucencyType: {
        const auto transparency = value_at<uint16_t>(data);
        if (transparency > kMostTransparent)
          return {paramErr, "a shadow is transparent from 0 to 256"};
        next.shadow_transparency = transparency;
        return {};
      }
      default:
        return {paramErr, "a text sample has no extension of that type"};
    }
  });
}

TOOLBOX_CALL ComponentResult TextMediaAddTextSample(
    MediaHandler mh, Ptr text, UInt32 size, SInt16 fontNumber, SInt16 fontSize, Style textFace,
    const RGBColor* textColor, const RGBColor* backColor, SInt16 textJustification,
    const Rect* textBox, SInt32 displayFlags, TimeValue scrollDelay, SInt16 hiliteStart,
    SInt16 hiliteEnd, const RGBColor* hiliteColor, TimeValue duration, TimeValue* sampleTime) {
  return guarded_handler(mh, kText, [&](toolbox::MediaHandler& handler) -> Status {
    if (text == nullptr && size > 0) return {paramErr, "the text of the sample is missing"};
    if (duration < 0) return {invalidDuration, "a sample cannot last less than nothing"};
    toolbox::TextSampleExtras extras{.scroll_delay = static_cast<uint32_t>(scrollDelay),
                                     .highlight_start = hiliteStart,
                                     .highlight_end = hiliteEnd,
                                     .highlight_color = std::nullopt,
                                     .announced = handler.next_text()};
    if (hiliteColor != nullptr) extras.highlight_color = color_of(hiliteColor, kBlack);
    TRY_ASSIGN(const toolbox::Bytes sample,
               text_sample({reinterpret_cast<const uint8_t*>(text), size}, extras));
    toolbox::Media& media = handler.media();
    TextDescription description;
    description.display_flags = static_cast<uint32_t>(displayFlags);
    description.justification = textJustification;
    description.background = color_of(backColor, kWhite);
    description.box = textBox == nullptr ? box_of(media.track())
                                         : std::array<int16_t, 4>{textBox->top, textBox->left,
                                                                  textBox->bottom, textBox->right};
    description.font = fontNumber;
    description.face = textFace;
    description.size = static_cast<uint16_t>(fontSize);
    description.color = color_of(textColor, kBlack);
    TRY_ASSIGN(const int64_t begin,
               add_samples(media,
                           {.data = sample,
                            .count = 1,
                            .duration = static_cast<uint32_t>(duration),
                            .is_sync = true},
                           text_description(description, toolbox::text_font_name(fontNumber))));
    handler.next_text() = {};
    if (sampleTime != nullptr) *sampleTime = to_time_value(begin);
    return {};
  });
}
