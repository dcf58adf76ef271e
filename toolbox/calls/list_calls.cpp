// The calls of Toolbox/Toolbox.h that list the samples of a track and hand out their bytes.
#include <Toolbox/Toolbox.h>

#include <algorithm>
#include <array>

#include "calls/guard.h"
#include "calls/references.h"
#include "movie/list_samples.h"

using namespace toolbox::calls;
using toolbox::ListedSample;
using toolbox::MediaSpan;
using toolbox::Result;
using toolbox::Status;

namespace {

Result<const toolbox::Media*> media_of(Track track) {
  TRY_ASSIGN(const toolbox::Track* found, find_track(track));
  if (found->media() == nullptr) return Status(invalidMedia, "the track has no media");
  return found->media();
}

Status answer_of(OSErr code) {
  return code == noErr ? Status() : Status(code, "whoever takes the samples wants no more");
}

/// Collects samples and hands them over many at once.
class Batch {
 public:
  Batch(ToolboxSampleProc proc, void* context) : proc_(proc), context_(context) {}

  Status add(const ListedSample& sample) {
    samples_[count_++] = {.time = sample.time,
                          .duration = sample.duration,
                          .offset = sample.offset,
                          .number = sample.number,
                          .size = sample.size,
                          .description = sample.description,
                          .isSync = sample.is_sync};
    return count_ == samples_.size() ? hand_over() : Status();
  }

  Status hand_over() {
    const uint32_t count = std::exchange(count_, 0);
    return count == 0 ? Status() : answer_of(proc_(samples_.data(), count, context_));
  }

 private:
  ToolboxSampleProc proc_;
  void* context_;
  std::array<ToolboxSample, 256> samples_;
  uint32_t count_ = 0;
};

bool is_shown(const ListedSample& sample, const std::vector<MediaSpan>& spans) {
  const int64_t end = sample.time + std::max<int64_t>(sample.duration, 1);
  const auto behind =
      std::upper_bound(spans.begin(), spans.end(), sample.time,
                       [](int64_t time, const MediaSpan& span) { return time < span.end; });
  return behind != spans.end() && behind->begin < end;
}

}  // namespace

TOOLBOX_CALL OSErr ToolboxListTrackSamples(Track track, TimeValue from, TimeValue until,
                                           ToolboxSampleProc proc, void* context) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(const toolbox::Media* media, media_of(track));
    Batch batch(proc, context);
    Status walked;
    if (until < 0) {
      walked = visit_samples(*media, [&](const ListedSample& sample) { return batch.add(sample); });
    } else {
      const std::vector<MediaSpan> spans = shown_spans(media->track(), from, until);
      walked = visit_samples(*media, [&](const ListedSample& sample) {
        return is_shown(sample, spans) ? batch.add(sample) : Status();
      });
    }
    // What came before damage is worth seeing.
    Status handed = batch.hand_over();
    return walked.ok() ? std::move(handed) : std::move(walked);
  });
}

TOOLBOX_CALL OSErr ToolboxReadTrackSamples(Track track, uint32_t first, uint32_t last,
                                           ToolboxSampleBytesProc proc, void* context) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(const toolbox::Media* media, media_of(track));
    return read_sample_bytes(*media, first, last, [&](toolbox::ByteView bytes, uint32_t number) {
      return answer_of(proc(bytes.data(), static_cast<uint32_t>(bytes.size()), number, context));
    });
  });
}
