// The class "QTChapterDataKRZ": one chapter or caption, as a script describes it.
#include "text/chapter_data.h"

#include <ApplicationServices/ApplicationServices.h>

#include "host/class_table.h"
#include "host/encodings.h"
#include "host/entries.h"
#include "host/instance_data.h"
#include "host/registration.h"
#include "host/strings.h"

namespace krz {
namespace {

// Both are handed to the host, which knows what they mean.
constexpr uint32_t kPropertyFlags = 6;
constexpr uint32_t kClassFlags = 4;

constexpr int32_t kCenter = 1;
constexpr int32_t kClipToTextBox = 4;

QTChapterDataClassData& chapter_data(REALobject object) {
  return instance_data<QTChapterDataClassData>(object, QTChapterDataClass);
}

void ChapterDataConstructor(REALobject object) {
  QTChapterDataClassData& data = chapter_data(object);
  data.text_justification = kCenter;
  data.display_flags = kClipToTextBox;
  data.scroll_delay = 0;
}

void ChapterDataDestructor(REALobject object) {
  QTChapterDataClassData& data = chapter_data(object);
  if (!data.text) return;
  REALUnlockString(data.text);
  data.text = nullptr;
}

REALstring rbGetFontName(REALobject object, intptr_t) {
  // Where there are no fonts the name stays empty.
  Str255 name = {};
  GetFontName(static_cast<SInt16>(chapter_data(object).font_number), name);
  return BuildPascalString(name, kMacRoman);
}

void rbSetFontName(REALobject object, intptr_t, REALstring value) {
  Str255 name = {};
  PutSystemString(name, value);
  // A name that no font has gives 0, unless the lookup says otherwise.
  SInt16 number = 0;
  GetFNum(name, &number);
  chapter_data(object).font_number = number;
}

#define CHAPTER_FIELD(field, name, type) \
  FLAGGED_DIRECT_FIELD(QTChapterDataClassData, field, name, type, kPropertyFlags)

PropertyEntry chapter_properties[] = {
    CHAPTER_FIELD(text, "Text", "String"),
    CHAPTER_FIELD(frame_duration, "FrameDuration", "Integer"),
    CHAPTER_FIELD(font_number, "FontNumber", "Integer"),
    FLAGGED_PROPERTY(rbGetFontName, rbSetFontName, "FontName", "String", kPropertyFlags),
    CHAPTER_FIELD(font_size, "FontSize", "Integer"),
    CHAPTER_FIELD(bold, "bold", "Boolean"),
    CHAPTER_FIELD(italic, "italic", "Boolean"),
    CHAPTER_FIELD(underline, "underline", "Boolean"),
    CHAPTER_FIELD(outline, "outline", "Boolean"),
    CHAPTER_FIELD(shadow, "shadow", "Boolean"),
    CHAPTER_FIELD(condense, "condense", "Boolean"),
    CHAPTER_FIELD(extend, "extend", "Boolean"),
    CHAPTER_FIELD(has_back_color, "HasBackColor", "Boolean"),
    CHAPTER_FIELD(has_text_color, "HasTextColor", "Boolean"),
    CHAPTER_FIELD(has_highlight_color, "HasHighLightColor", "Boolean"),
    CHAPTER_FIELD(highlight_color, "HighLightColor", "Color"),
    CHAPTER_FIELD(back_color, "BackColor", "Color"),
    CHAPTER_FIELD(text_color, "TextColor", "Color"),
    CHAPTER_FIELD(text_justification, "TextJustification", "Integer"),
    CHAPTER_FIELD(display_flags, "DisplayFlags", "Integer"),
    CHAPTER_FIELD(scroll_delay, "ScrollDelay", "Integer"),
    CHAPTER_FIELD(highlight_start, "HighLightStart", "Integer"),
    CHAPTER_FIELD(highlight_end, "HighLightEnd", "Integer"),
    CHAPTER_FIELD(left, "Left", "Integer"),
    CHAPTER_FIELD(top, "Top", "Integer"),
    CHAPTER_FIELD(width, "Width", "Integer"),
    CHAPTER_FIELD(height, "Height", "Integer"),
};

ConstantEntry chapter_constants[] = {
    CONSTANT("dfDontDisplay = 1"),
    CONSTANT("dfDontAutoScale = 2"),
    CONSTANT("dfClipToTextBox = 4"),
    CONSTANT("dfUseMovieBGColor = 8"),
    CONSTANT("dfShrinkTextBoxToFit = 16"),
    CONSTANT("dfScrollIn = 32"),
    CONSTANT("dfScrollOut = 64"),
    CONSTANT("dfHorizScroll = 128"),
    CONSTANT("dfReverseScroll = 256"),
    CONSTANT("dfContinuousScroll = 512"),
    CONSTANT("dfFlowHoriz = 1024"),
    CONSTANT("dfContinuousKaraoke = 2048"),
    CONSTANT("dfDropShadow = 4096"),
    CONSTANT("dfAntiAlias = 8192"),
    CONSTANT("dfKeyedText = 16384"),
    CONSTANT("dfInverseHilite = 32768"),
    CONSTANT("dfTextColorHilite = 65536"),
    CONSTANT("teCenter = 1"),
    CONSTANT("teDefault = 0"),
    CONSTANT("teRight = -1"),
    CONSTANT("teLeft = -2"),
};

}  // namespace

REALclassDefinition QTChapterDataClass = {
    .version = kPluginInterfaceVersion,
    .name = "QTChapterDataKRZ",
    .data_size = sizeof(QTChapterDataClassData),
    .constructor = HOST_FUNCTION(ChapterDataConstructor),
    .destructor = HOST_FUNCTION(ChapterDataDestructor),
    .properties = chapter_properties,
    .property_count = std::size(chapter_properties),
    .constants = chapter_constants,
    .constant_count = std::size(chapter_constants),
    .flags = kClassFlags,
};

}  // namespace krz
