// Proves, compiled for 32 bits, that instance data lies where the system that it comes from has it.
//
// Each symbol below is as large as the host is told that the class's data is; print_sizes.sh reads
// them from the object.
#include "host/registration.h"
#include "metadata/metadata.h"
#include "metadata/user_data.h"
#include "text/chapter_data.h"
#include "timecode/creation_parameters.h"
#include "timecode/timecode.h"
#include "track/sample_description.h"
#include "track/track_data.h"

static_assert(sizeof(void*) == 4, "this file is compiled for 32 bits");

namespace krz {

static_assert(sizeof(QTUserDataClassData) == 16);
static_assert(offsetof(QTUserDataClassData, release) == 4);
static_assert(offsetof(QTUserDataClassData, lasterror) == 8);
static_assert(offsetof(QTUserDataClassData, handle) == 12);

// Twenty-six slots of 32 bits.
static_assert(sizeof(QTChapterDataClassData) == 104);
static_assert(offsetof(QTChapterDataClassData, text) == 0);
static_assert(offsetof(QTChapterDataClassData, bold) == 4);
static_assert(offsetof(QTChapterDataClassData, text_color) == 8 * 4);
static_assert(offsetof(QTChapterDataClassData, display_flags) == 14 * 4);
static_assert(offsetof(QTChapterDataClassData, highlight_end) == 21 * 4);
static_assert(offsetof(QTChapterDataClassData, height) == 25 * 4);

// Twenty-one slots of 32 bits.
static_assert(sizeof(QTTimeCodeCreationParametersClassData) == 84);
static_assert(offsetof(QTTimeCodeCreationParametersClassData, drop_frames) == 4 * 4);
static_assert(offsetof(QTTimeCodeCreationParametersClassData, source_name) == 14 * 4);
static_assert(offsetof(QTTimeCodeCreationParametersClassData, font_back_color) == 20 * 4);

static_assert(sizeof(QTSampleDescriptionClassData) == 180);
static_assert(offsetof(QTSampleDescriptionClassData, codec_type) == 4);
static_assert(offsetof(QTSampleDescriptionClassData, sample_rate) == 16 * 4);
static_assert(offsetof(QTSampleDescriptionClassData, display_flags) == 18 * 4);
static_assert(offsetof(QTSampleDescriptionClassData, horizontal_resolution) == 33 * 4);
static_assert(offsetof(QTSampleDescriptionClassData, depth) == 39 * 4);

static_assert(sizeof(QTTrackClassData) == 12);
static_assert(offsetof(QTTrackClassData, movie) == 0);
static_assert(offsetof(QTTrackClassData, lasterror) == 4);
static_assert(offsetof(QTTrackClassData, track) == 8);

static_assert(sizeof(QTTimeCodeClassData) == 28);
static_assert(offsetof(QTTimeCodeClassData, definition) == 4);
static_assert(offsetof(QTTimeCodeClassData, record) == 18);
static_assert(offsetof(QTTimeCodeClassData, source_name) == 24);

static_assert(sizeof(QTMetaDataClassData) == 20);
static_assert(offsetof(QTMetaDataClassData, handle) == 4);
static_assert(offsetof(QTMetaDataClassData, cursor) == 8);

static_assert(sizeof(QTMetaDataItemClassData) == 24);
static_assert(offsetof(QTMetaDataItemClassData, owner) == 4);
static_assert(offsetof(QTMetaDataItemClassData, item) == 8);
static_assert(offsetof(QTMetaDataItemClassData, metadata) == 16);

// The classes of the host that this module reads and writes directly.
static_assert(offsetof(REALaudioChannelDescriptionData, coordinates) == 8);
static_assert(offsetof(REALaudioChannelLayoutData, descriptions) == 12);

template <class Data>
constexpr int32_t kRegisteredSize = rounded_data_size(sizeof(Data));

}  // namespace krz

extern "C" {
char registered_size_1[krz::kRegisteredSize<krz::QTUserDataClassData>];
char registered_size_2[krz::kRegisteredSize<krz::QTChapterDataClassData>];
char registered_size_3[krz::kRegisteredSize<krz::QTTimeCodeCreationParametersClassData>];
char registered_size_4[krz::kRegisteredSize<krz::QTSampleDescriptionClassData>];
char registered_size_5[krz::kRegisteredSize<krz::QTTrackClassData>];
char registered_size_6[krz::kRegisteredSize<krz::QTTimeCodeClassData>];
char registered_size_7[krz::kRegisteredSize<krz::QTMetaDataClassData>];
char registered_size_8[krz::kRegisteredSize<krz::QTMetaDataItemClassData>];
}
