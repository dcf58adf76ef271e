// The class "QTTimeCodeCreationParametersKRZ": the timecode track that a script wants, 29.97
// drop-frame from zero unless it says otherwise.
#include "timecode/creation_parameters.h"

#include <string_view>

#include "host/class_table.h"
#include "host/encodings.h"
#include "host/entries.h"
#include "host/instance_data.h"
#include "host/registration.h"
#include "host/strings.h"

namespace krz {
namespace {

constexpr std::string_view kDefaultSourceName = "KRZ REALbasic Plugin";
constexpr std::string_view kDefaultFontName = "Monaco";

QTTimeCodeCreationParametersClassData& parameters_data(REALobject object) {
  return instance_data<QTTimeCodeCreationParametersClassData>(object,
                                                              QTTimeCodeCreationParametersClass);
}

REALstring ascii_string(std::string_view text) {
  return REALBuildUnicodeString(text.data(), static_cast<int64_t>(text.size()), kASCII);
}

void TimeCodeCreationParametersConstructor(REALobject object) {
  parameters_data(object) = {
      .height = 20,
      .is_negative = false,
      .frame_duration = 100,
      .number_of_frames = 30,
      .drop_frames = true,
      .hours = 0,
      .use_time_code = true,
      .minutes = 0,
      .use_24_hours = true,
      .seconds = 0,
      .time_scale = 2997,
      .frames = 0,
      .counter_start_value = 0,
      .display_below_video = true,
      .source_name = ascii_string(kDefaultSourceName),
      .font_name = ascii_string(kDefaultFontName),
      .display_time_code = false,
      .font_face = -1,
      .font_size = -1,
      .font_fore_color = 0x000000,
      .font_back_color = 0xFFFFFF,
  };
}

/// Also the method "Close": a later destruction finds nothing left to release.
void TimeCodeCreationParametersDestructor(REALobject object) {
  QTTimeCodeCreationParametersClassData& data = parameters_data(object);
  for (REALstring* string : {&data.source_name, &data.font_name}) {
    if (!*string) continue;
    REALUnlockString(*string);
    *string = nullptr;
  }
}

#define PARAMETER(field, name, type) \
  DIRECT_FIELD(QTTimeCodeCreationParametersClassData, field, name, type)

PropertyEntry parameters_properties[] = {
    PARAMETER(height, "Height", "Integer"),
    PARAMETER(use_time_code, "UseTimeCode", "Boolean"),
    PARAMETER(drop_frames, "DropFrames", "Boolean"),
    PARAMETER(is_negative, "IsNeg", "Boolean"),
    PARAMETER(use_24_hours, "Use24Hours", "Boolean"),
    PARAMETER(frame_duration, "FrameDuration", "Integer"),
    PARAMETER(number_of_frames, "NumberOfFrames", "Integer"),
    PARAMETER(hours, "Hours", "Integer"),
    PARAMETER(minutes, "Minutes", "Integer"),
    PARAMETER(seconds, "Seconds", "Integer"),
    PARAMETER(time_scale, "TimeScale", "Integer"),
    PARAMETER(frames, "Frames", "Integer"),
    PARAMETER(counter_start_value, "CounterStartValue", "Integer"),
    PARAMETER(display_below_video, "DisplayBelowVideo", "Boolean"),
    PARAMETER(source_name, "SourceName", "String"),
    PARAMETER(font_name, "FontName", "String"),
    PARAMETER(display_time_code, "DisplayTimeCode", "Boolean"),
    PARAMETER(font_face, "FontFace", "Integer"),
    PARAMETER(font_size, "FontSize", "Integer"),
    PARAMETER(font_fore_color, "FontForeColor", "Color"),
    PARAMETER(font_back_color, "FontBackColor", "Color"),
};

MethodEntry parameters_methods[] = {
    METHOD(TimeCodeCreationParametersDestructor, "Close"),
};

}  // namespace

REALclassDefinition QTTimeCodeCreationParametersClass = {
    .version = kPluginInterfaceVersion,
    .name = "QTTimeCodeCreationParametersKRZ",
    .data_size = sizeof(QTTimeCodeCreationParametersClassData),
    .constructor = HOST_FUNCTION(TimeCodeCreationParametersConstructor),
    .destructor = HOST_FUNCTION(TimeCodeCreationParametersDestructor),
    .properties = parameters_properties,
    .property_count = std::size(parameters_properties),
    .methods = parameters_methods,
    .method_count = std::size(parameters_methods),
};

}  // namespace krz
