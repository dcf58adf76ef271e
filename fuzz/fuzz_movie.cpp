// Any bytes as a movie: loads the model and asks it everything, a bounded number of times.
#include <cstdlib>

#include "file/memory_source.h"
#include "handlers/timecode_handler.h"
#include "metadata/metadata.h"
#include "movie/interesting_times.h"
#include "movie/movie.h"

namespace toolbox {
namespace {

constexpr int kMostSteps = 8;
constexpr size_t kMostTracks = 16;

void require(bool condition) {
  if (!condition) std::abort();
}

// Steps through the track in both directions; each step must get somewhere.
void step_through(const Track& track, const SampleTable& samples) {
  const InterestingTimes times(track.timeline(), samples);
  for (const Interest interest :
       {Interest::kSample, Interest::kSyncSample, Interest::kMediaEdit, Interest::kTrackEdit}) {
    int64_t time = -2;
    for (int step = 0; step < kMostSteps; ++step) {
      const auto found = times.next(interest, time + 1);
      if (!found.ok() || !found.value()) break;
      require(found.value()->time > time);
      require(found.value()->duration > 0 || interest == Interest::kTrackEdit);
      time = found.value()->time;
    }
    time = track.duration() + 2;
    for (int step = 0; step < kMostSteps; ++step) {
      const auto found = times.previous(interest, time - 1);
      if (!found.ok() || !found.value()) break;
      require(found.value()->time < time && found.value()->time >= 0);
      time = found.value()->time;
    }
  }
}

void look_up_samples(const SampleTable& samples) {
  const uint32_t count = samples.sample_count();
  for (const uint32_t sample : {0u, 1u, 17u, count / 2, count - 1, count}) {
    const auto times = samples.times(sample);
    require(sample < count || !times.ok());
    if (!times.ok()) continue;
    require(times.value().decode >= 0 && times.value().decode <= kTimeLimit);
    static_cast<void>(samples.is_sync(sample));
    static_cast<void>(samples.location(sample));
    const auto shown = samples.previous_displayed(SampleTable::Set::kAll, times.value().display);
    require(!shown.ok() || (shown.value() && shown.value()->time == times.value().display));
    const auto decoded = samples.sample_at_decode_time(times.value().decode);
    require(!decoded.ok() || !decoded.value() || *decoded.value() >= sample);
  }
}

// Walks every list, and puts an item in and takes it out again: the lists are then what they were.
void ask_lists(Annotations& lists) {
  MetaData& metadata = lists.metadata();
  UserDataList& user_data = lists.user_data();
  const Bytes flat = user_data.flat();
  size_t walked = 0;
  for (auto id = metadata.next(0, {}); id.ok(); id = metadata.next(id.value(), {})) {
    require(metadata.value(id.value()).ok());
    require(metadata.property(id.value(), MetaData::kKey).ok());
    require(metadata.property(id.value(), MetaData::kLocale).ok());
    ++walked;
  }
  require(metadata.count({}).value() == walked);
  for (FourCC type = user_data.next_type(0); type != 0; type = user_data.next_type(type)) {
    require(user_data.count(type) > 0 && user_data.data(type, 1).ok());
    static_cast<void>(user_data.text(type, 1, 0));
  }
  const FourCC name = four_cc("name");
  const ByteView key(reinterpret_cast<const uint8_t*>(&name), sizeof name);
  for (const FourCC storage :
       {storage_format::kQuickTime, storage_format::kShortList, storage_format::kUserData}) {
    const auto added = metadata.add({storage, key_format::kCommon, key}, {1, Bytes(3, 'x')});
    if (!added.ok()) continue;
    require(metadata.count({}).value() == walked + 1);
    require(metadata.remove(added.value()).ok());
  }
  require(user_data.flat() == flat);
}

// A label that is shown is found, no later than it was met.
void ask_timecode(const Track& track, Media& media) {
  const int64_t middle = track.duration() / 2;
  const int64_t time = track.timeline().media_time(middle);
  const auto shown = timecode_at(media, time);
  if (shown.ok()) {
    const auto [frame, definition, record, source] = shown.value();
    UserDataList list(UserDataList::Owner::kCaller);
    list.read(source);
    static_cast<void>(timecode_faults(definition));
    const auto found = find_timecode(track, timecode_text(definition, record));
    // Beyond a day or 255 hours a label stands for several frames.
    if (frame_of_timecode(definition, record) == frame) {
      require(!found.ok() || found.value() <= middle);
    }
  }
  const auto display = timecode_display(media);
  if (!display.ok()) return;
  require(set_timecode_display(media, display.value()).ok());
  const auto again = timecode_display(media);
  require(again.ok() && again.value().flags == display.value().flags &&
          again.value().tail == display.value().tail);
}

void open_and_ask(ByteView bytes) {
  auto source = std::make_unique<MemorySource>(Bytes(bytes.begin(), bytes.end()), "fuzz.mov");
  Result<OpenedMovie> opened = open_movie_source(std::move(source));
  if (!opened.ok()) return;
  const Result<std::unique_ptr<Movie>> loaded = Movie::load(opened.take());
  if (!loaded.ok()) {
    require(!loaded.status().message().empty());
    return;
  }
  Movie& movie = *loaded.value();
  if (const auto lists = movie.annotations(); lists.ok()) ask_lists(*lists.value());
  require(movie.duration() >= 0);
  size_t asked = 0;
  for (const auto& track : movie.tracks()) {
    if (++asked > kMostTracks) break;
    track->check_invariants();
    if (const auto lists = track->annotations(); lists.ok()) ask_lists(*lists.value());
    for (const int64_t tick : {int64_t{-1}, int64_t{0}, track->duration() / 2, track->duration()}) {
      static_cast<void>(track->timeline().media_time(tick));
    }
    require(track->timeline().media_time(track->duration()) == -1);
    if (track->media() == nullptr) continue;
    static_cast<void>(track->media()->descriptions());
    static_cast<void>(track->media()->data_references());
    static_cast<void>(track->media()->duration());
    if (track->media()->type() == four_cc("tmcd")) ask_timecode(*track, *track->media());
    const Result<const SampleTable*> samples = track->media()->samples();
    if (!samples.ok()) continue;
    look_up_samples(*samples.value());
    step_through(*track, *samples.value());
  }
}

}  // namespace
}  // namespace toolbox

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size) {
  toolbox::open_and_ask({bytes, size});
  return 0;
}
