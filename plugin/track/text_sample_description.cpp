// The class "QTTextSampleDescriptionKRZ": samples that are text and how it is drawn.
#include "track/sample_description.h"

namespace krz {
namespace {

PropertyEntry text_properties[] = {
    FIELD_PROPERTY(default_font_name, "DefaultFontName", "String"),
    FIELD_PROPERTY(display_flags, "DisplayFlags", "Integer"),
    FIELD_PROPERTY(text_justification, "TextJustification", "Integer"),
    FIELD_PROPERTY(background_color, "BackgroundColor", "Color"),
    FIELD_PROPERTY(left, "Left", "Integer"),
    FIELD_PROPERTY(top, "Top", "Integer"),
    FIELD_PROPERTY(width, "Width", "Integer"),
    FIELD_PROPERTY(height, "Height", "Integer"),
    FIELD_PROPERTY(text_height, "TextHeight", "Integer"),
    FIELD_PROPERTY(text_ascent, "TextAscent", "Integer"),
    FIELD_PROPERTY(text_font_id, "TextFontID", "Integer"),
    FIELD_PROPERTY(text_size, "TextSize", "Integer"),
    FIELD_PROPERTY(text_color, "TextColor", "Color"),
    FIELD_PROPERTY(text_face, "TextFace", "Integer"),
    FIELD_PROPERTY(bold, "Bold", "Boolean"),
    FIELD_PROPERTY(italic, "Italic", "Boolean"),
    FIELD_PROPERTY(underline, "Underline", "Boolean"),
    FIELD_PROPERTY(outline, "Outline", "Boolean"),
    FIELD_PROPERTY(shadow, "Shadow", "Boolean"),
    FIELD_PROPERTY(condense, "Condense", "Boolean"),
    FIELD_PROPERTY(extend, "Extend", "Boolean"),
};

}  // namespace

REALclassDefinition QTTextSampleDescriptionClass = {
    .version = kPluginInterfaceVersion,
    .name = "QTTextSampleDescriptionKRZ",
    .superclass = "QTSampleDescriptionKRZ",
    .properties = text_properties,
    .property_count = std::size(text_properties),
};

}  // namespace krz
