// The calls of QuickTime/Movies.h that read the samples of a media and add new ones.
#include <optional>

#include "calls/guard.h"
#include "calls/references.h"
#include "memory/handles.h"
#include "movie/add_samples.h"
#include "movie/read_samples.h"

using namespace toolbox::calls;
using toolbox::Bytes;
using toolbox::ByteView;
using toolbox::Result;
using toolbox::Status;

namespace {

Status put_into(Handle handle, ByteView bytes, const char* what) {
  const OSErr error = toolbox::handles::assign(handle, bytes);
  return error == noErr ? Status() : Status(error, std::string(what) + " does not fit its handle");
}

template <class T>
void put(T* output, T value) {
  if (output != nullptr) *output = value;
}

ByteView bytes_of(Handle handle) {
  const Size size = toolbox::handles::size(handle);
  return size <= 0 ? ByteView()
                   : ByteView(reinterpret_cast<const uint8_t*>(*handle), static_cast<size_t>(size));
}

Result<ByteView> description_of(const toolbox::Media& media, uint32_t index) {
  TRY_ASSIGN(const auto* descriptions, media.descriptions());
  if (index == 0 || index > descriptions->size()) {
    return Status(invalidSampleDescIndex,
                  "the sample names description " + std::to_string(index) + ", which is missing");
  }
  return ByteView((*descriptions)[index - 1]);
}

}  // namespace

TOOLBOX_CALL OSErr GetMediaSample(Media media, Handle dataOut, SInt32 maxSizeToGrow, SInt32* size,
                                  TimeValue time, TimeValue* sampleTime,
                                  TimeValue* durationPerSample, Handle descriptionH,
                                  SInt32* descriptionIndex, SInt32 maxNumberOfSamples,
                                  SInt32* numberOfSamples, SInt16* sampleFlags) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(const toolbox::Media* found, find_media(media));
    if (maxSizeToGrow < 0 || maxNumberOfSamples < 0) {
      return {paramErr, "the limits of size and number of samples may not be negative"};
    }
    Result<toolbox::ReadSamples> result =
        read_samples(*found, {.time = time,
                              .most_samples = static_cast<uint32_t>(maxNumberOfSamples),
                              .most_bytes = static_cast<uint32_t>(maxSizeToGrow),
                              .wants_data = dataOut != nullptr});
    if (result.status().code() == timeNotInMedia) {
      put(numberOfSamples, SInt32{0});
      put(size, SInt32{0});
    }
    TRY_ASSIGN(const toolbox::ReadSamples samples, std::move(result));
    if (maxSizeToGrow != 0 && samples.bytes > static_cast<uint32_t>(maxSizeToGrow)) {
      put(size, to_count(samples.bytes));
      return {maxSizeToGrowTooSmall,
              "the samples have " + std::to_string(samples.bytes) + " bytes, more than allowed"};
    }
    if (descriptionH != nullptr) {
      TRY_ASSIGN(const ByteView description, description_of(*found, samples.first.description));
      TRY(put_into(descriptionH, description, "the sample description"));
    }
    if (dataOut != nullptr) TRY(put_into(dataOut, samples.data, "the sample data"));
    put(size, to_count(samples.bytes));
    put(sampleTime, to_time_value(samples.first.times.display));
    put(durationPerSample, to_time_value(samples.first.times.delta));
    put(descriptionIndex, to_count(samples.first.description));
    put(numberOfSamples, to_count(samples.count));
    put(sampleFlags, SInt16(samples.first.is_sync ? 0 : mediaSampleNotSync));
    return {};
  });
}

TOOLBOX_CALL OSErr BeginMediaEdits(Media media) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(toolbox::Media * found, find_media(media));
    return begin_media_edits(*found);
  });
}

TOOLBOX_CALL OSErr EndMediaEdits(Media media) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(toolbox::Media * found, find_media(media));
    end_media_edits(*found);
    return {};
  });
}

TOOLBOX_CALL OSErr AddMediaSample(Media media, Handle dataIn, SInt32 offset, UInt32 size,
                                  TimeValue durationPerSample, Handle descriptionH,
                                  SInt32 numberOfSamples, SInt16 sampleFlags,
                                  TimeValue* sampleTime) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(toolbox::Media * found, find_media(media));
    const ByteView data = bytes_of(dataIn);
    if (offset < 0 || static_cast<size_t>(offset) > data.size() ||
        size > data.size() - static_cast<size_t>(offset)) {
      return {paramErr, "bytes " + std::to_string(offset) + " and " + std::to_string(size) +
                            " more were to be added of a handle of " + std::to_string(data.size())};
    }
    if (numberOfSamples < 1) return {paramErr, "at least one sample must be added"};
    if (durationPerSample < 0) return {invalidDuration, "a sample cannot last less than nothing"};
    TRY_ASSIGN(
        const int64_t begin,
        add_samples(*found,
                    {.data = data.subspan(static_cast<size_t>(offset), size),
                     .count = static_cast<uint32_t>(numberOfSamples),
                     .duration = static_cast<uint32_t>(durationPerSample),
                     .is_sync = (static_cast<unsigned>(sampleFlags) & mediaSampleNotSync) == 0},
                    bytes_of(descriptionH)));
    put(sampleTime, to_time_value(begin));
    return {};
  });
}
