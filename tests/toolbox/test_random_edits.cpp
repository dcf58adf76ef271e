// Random edits, held after every step against the plainest model there is: for each tick of a track
// the media time that it shows.
//
// The media scales are large powers of two of the movie's and segments are only scaled to twice
// their length, so that every media time is a whole number and the model has nothing to round.
#include <random>

#include "movie/edit_segments.h"
#include "movie/insert_media.h"
#include "saving_test.h"

namespace toolbox::testing {
namespace {

constexpr uint32_t kMovieScale = 60;
constexpr int64_t kLongest = 240;  // ticks; longer tracks are cut short
constexpr int kScripts = 2000;
constexpr int kSteps = 24;

/// What one tick shows.
struct Tick {
  int64_t media_time = -1;  // empty
  int64_t step = 0;         // media ticks until the next tick

  bool is_empty() const { return media_time < 0; }
};

using Ticks = std::vector<Tick>;

Ticks part_of(const Ticks& ticks, int64_t start, int64_t end) {
  const auto size = static_cast<int64_t>(ticks.size());
  const int64_t from = std::min(start, size);
  return {ticks.begin() + from, ticks.begin() + std::max(from, std::min(end, size))};
}

void erase(Ticks& ticks, int64_t start, int64_t end) {
  const auto size = static_cast<int64_t>(ticks.size());
  if (start < size) ticks.erase(ticks.begin() + start, ticks.begin() + std::min(end, size));
}

void insert(Ticks& ticks, int64_t at, const Ticks& inserted) {
  if (inserted.empty()) return;
  if (at > static_cast<int64_t>(ticks.size())) ticks.resize(static_cast<size_t>(at));
  ticks.insert(ticks.begin() + at, inserted.begin(), inserted.end());
}

Ticks doubled(const Ticks& ticks) {
  Ticks result;
  for (const Tick& tick : ticks) {
    result.push_back({tick.media_time, tick.step / 2});
    result.push_back({tick.is_empty() ? -1 : tick.media_time + tick.step / 2, tick.step / 2});
  }
  return result;
}

/// A movie of three tracks, two of them clones, and its model.
class EditedMovie {
 public:
  EditedMovie(const ScratchFolder& folder, uint32_t seed) : random_(seed) {
    BuiltMovie built;
    built.header.time_scale = kMovieScale;
    built.tracks = {video_track(2, 2, 10, 6 * 64, kMovieScale * 64),
                    text_track({{"one", 30 * 256}, {"two", 20 * 256}}, kMovieScale * 256)};
    path_ = write(folder, "edited.mov", built);
    movie_ = open(path_);
    Result<std::unique_ptr<Track>> clone = movie_->tracks()[0]->clone();
    movie_->add_track(clone.take());
    models_ = {plain(64, 60), plain(256, 50), plain(64, 60)};
  }

  /// One random edit of everything. Answers what it was.
  std::string step() {
    switch (pick(0, 11)) {
      case 0:
        return delete_part();
      case 1:
        return insert_empty();
      case 2:
        return scale_part();
      case 3:
        return insert_part();
      case 4:
        return move_track();
      case 5:
        return insert_media_part();
      case 6:
        return delete_movie_part();
      case 7:
        return insert_empty_in_movie();
      case 8:
        return scale_movie_part();
      case 9:
        return repeat_movie_part();
      case 10:
        return refuse();
      default:
        return pick(0, 3) == 0 ? save() : delete_part();
    }
  }

  /// Keeps tracks short, so that all of their ticks can be looked at.
  void trim() {
    if (movie_->duration() <= kLongest) return;
    EXPECT_TRUE(delete_movie_segment(*movie_, kLongest, movie_->duration()).ok());
    for (Ticks& model : models_) erase(model, kLongest, INT64_MAX);
  }

  void check() const {
    for (size_t i = 0; i < models_.size(); ++i) {
      const Track& track = *movie_->tracks()[i];
      track.check_invariants();
      ASSERT_EQ(static_cast<int64_t>(models_[i].size()), track.duration()) << "track " << i + 1;
      for (size_t tick = 0; tick < models_[i].size(); ++tick) {
        ASSERT_EQ(models_[i][tick].media_time,
                  track.timeline().media_time(static_cast<int64_t>(tick)))
            << "track " << i + 1 << " at tick " << tick;
      }
    }
  }

  /// Into the file and read anew from it; empty time behind the last picture is not written.
  std::string save() {
    const Status saved = save_movie(*movie_);
    EXPECT_TRUE(saved.ok()) << saved.message();
    for (Ticks& model : models_) {
      while (!model.empty() && model.back().is_empty()) model.pop_back();
    }
    check();
    movie_.reset();
    movie_ = open(path_);
    shares_media_ = false;
    return "save and open";
  }

 private:
  static Ticks plain(int64_t step, int64_t length) {
    Ticks ticks;
    for (int64_t i = 0; i < length; ++i) ticks.push_back({i * step, step});
    return ticks;
  }

  int64_t pick(int64_t least, int64_t most) {
    return std::uniform_int_distribution<int64_t>(least, most)(random_);
  }

  size_t pick_track() { return static_cast<size_t>(pick(0, 2)); }
  Track& track(size_t index) { return *movie_->tracks()[index]; }
  int64_t length(size_t index) const { return static_cast<int64_t>(models_[index].size()); }

  std::string said(const char* what, int64_t a, int64_t b, int64_t c = 0) const {
    return std::string(what) + " " + std::to_string(a) + " " + std::to_string(b) + " " +
           std::to_string(c);
  }

  std::string delete_part() {
    const size_t index = pick_track();
    const int64_t start = pick(0, length(index));
    const int64_t duration = pick(0, 20);
    EXPECT_TRUE(delete_segment(track(index), start, duration).ok());
    erase(models_[index], start, start + duration);
    return said("delete", static_cast<int64_t>(index), start, duration);
  }

  std::string insert_empty() {
    const size_t index = pick_track();
    if (length(index) == 0) return "nothing";
    const int64_t start = pick(0, length(index) - 1);
    const int64_t duration = pick(0, 9);
    EXPECT_TRUE(insert_empty_segment(track(index), start, duration).ok());
    insert(models_[index], start, Ticks(static_cast<size_t>(duration)));
    return said("insert empty", static_cast<int64_t>(index), start, duration);
  }

  static bool can_be_doubled(const Ticks& ticks) {
    return std::all_of(ticks.begin(), ticks.end(),
                       [](const Tick& tick) { return tick.is_empty() || tick.step % 2 == 0; });
  }

  std::string scale_part() {
    const size_t index = pick_track();
    const int64_t start = pick(0, length(index));
    const int64_t duration = std::min(pick(1, 30), length(index) - start);
    const Ticks taken = part_of(models_[index], start, start + duration);
    if (taken.empty() || !can_be_doubled(taken)) return "nothing";
    EXPECT_TRUE(scale_segment(track(index), start, duration, 2 * duration).ok());
    erase(models_[index], start, start + duration);
    insert(models_[index], start, doubled(taken));
    return said("scale", static_cast<int64_t>(index), start, duration);
  }

  // Tracks 1 and 3 show the same media until they are read back as two.
  std::string insert_part() {
    const size_t from = pick_track();
    const size_t to =
        from == 1 || !shares_media_ ? from : size_t{2} * static_cast<size_t>(pick(0, 1));
    const int64_t start = pick(0, length(from));
    const int64_t duration = pick(0, 30);
    const int64_t at = pick(0, length(to) + 10);
    const Ticks taken = part_of(models_[from], start, start + duration);
    EXPECT_TRUE(insert_segment(track(from), start, duration, track(to), at).ok());
    insert(models_[to], at, taken);
    return said("insert", start, duration, at);
  }

  std::string move_track() {
    const size_t index = pick_track();
    const int64_t offset = pick(0, 15);
    EXPECT_TRUE(toolbox::set_offset(track(index), offset).ok());
    Ticks& model = models_[index];
    const auto first = std::find_if_not(model.begin(), model.end(),
                                        [](const Tick& tick) { return tick.is_empty(); });
    model.erase(model.begin(), first);
    model.insert(model.begin(), static_cast<size_t>(offset), Tick());
    return said("move", static_cast<int64_t>(index), offset);
  }

  std::string insert_media_part() {
    const size_t index = pick_track();
    const int64_t scale = index == 1 ? 256 : 64;
    const int64_t ticks = index == 1 ? 50 : 60;
    const int64_t start = pick(0, ticks - 1);
    const int64_t duration = pick(0, ticks - start);
    const int64_t at = pick(-1, length(index) + 5);
    EXPECT_TRUE(insert_media(track(index), at, {start * scale, duration * scale, kRateOne}).ok());
    Ticks inserted;
    for (int64_t i = start; i < start + duration; ++i) inserted.push_back({i * scale, scale});
    insert(models_[index], at < 0 ? length(index) : at, inserted);
    return said("insert media", at, start, duration);
  }

  std::string delete_movie_part() {
    const int64_t start = pick(0, movie_->duration());
    const int64_t duration = pick(0, 20);
    EXPECT_TRUE(delete_movie_segment(*movie_, start, duration).ok());
    for (Ticks& model : models_) erase(model, start, start + duration);
    return said("delete in the movie", start, duration);
  }

  std::string insert_empty_in_movie() {
    if (movie_->duration() == 0) return "nothing";
    const int64_t start = pick(0, movie_->duration() - 1);
    const int64_t duration = pick(0, 9);
    EXPECT_TRUE(insert_empty_movie_segment(*movie_, start, duration).ok());
    for (Ticks& model : models_) {
      if (start < static_cast<int64_t>(model.size())) {
        insert(model, start, Ticks(static_cast<size_t>(duration)));
      }
    }
    return said("insert empty in the movie", start, duration);
  }

  std::string scale_movie_part() {
    const int64_t start = pick(0, movie_->duration());
    const int64_t duration = pick(1, 20);
    std::vector<Ticks> taken;
    for (const Ticks& model : models_) taken.push_back(part_of(model, start, start + duration));
    if (!std::all_of(taken.begin(), taken.end(), can_be_doubled)) return "nothing";
    EXPECT_TRUE(scale_movie_segment(*movie_, start, duration, 2 * duration).ok());
    for (size_t i = 0; i < models_.size(); ++i) {
      if (taken[i].empty()) continue;
      erase(models_[i], start, start + duration);
      insert(models_[i], start, doubled(taken[i]));
    }
    return said("scale in the movie", start, duration);
  }

  std::string repeat_movie_part() {
    const int64_t start = pick(0, movie_->duration());
    const int64_t duration = pick(0, std::min<int64_t>(30, movie_->duration() - start));
    const int64_t at = pick(0, movie_->duration() + 5);
    EXPECT_TRUE(repeat_movie_segment(*movie_, start, duration, at).ok());
    for (Ticks& model : models_) {
      Ticks taken = part_of(model, start, start + duration);
      // What lies behind moves as far in every track.
      if (at < static_cast<int64_t>(model.size())) taken.resize(static_cast<size_t>(duration));
      insert(model, at, taken);
    }
    return said("repeat", start, duration, at);
  }

  // Calls that must change nothing.
  std::string refuse() {
    const size_t index = pick_track();
    Track& refusing = track(index);
    const int64_t behind = length(index) + pick(1, 1000);
    EXPECT_EQ(invalidTime, delete_segment(refusing, behind, 1).code());
    EXPECT_EQ(invalidTime, delete_segment(refusing, -1, 1).code());
    EXPECT_EQ(invalidDuration, delete_segment(refusing, 0, -1).code());
    EXPECT_EQ(invalidTime, insert_empty_segment(refusing, length(index), 1).code());
    EXPECT_EQ(invalidTime, scale_segment(refusing, behind, 1, 2).code());
    EXPECT_EQ(invalidDuration, scale_segment(refusing, 0, 0, 2).code());
    EXPECT_EQ(invalidDuration, scale_segment(refusing, 0, 1, -2).code());
    EXPECT_EQ(invalidTime, insert_segment(refusing, behind, 1, refusing, 0).code());
    EXPECT_EQ(invalidTime, toolbox::set_offset(refusing, -1).code());
    return "refuse";
  }

  std::mt19937 random_;
  std::string path_;
  std::unique_ptr<Movie> movie_;
  std::vector<Ticks> models_;  // of each track
  bool shares_media_ = true;
};

TEST(RandomEdits, EveryTickShowsWhatThePlainModelShows) {
  const ScratchFolder folder;
  UnflushedStorage storage;
  const ScopedStorage scoped(storage);
  for (uint32_t seed = 1; seed <= kScripts; ++seed) {
    EditedMovie edited(folder, seed);
    std::string history = "seed " + std::to_string(seed);
    for (int step = 0; step < kSteps; ++step) {
      history += "\n" + edited.step();
      edited.trim();
      edited.check();
      if (HasFailure()) FAIL() << history;
    }
    edited.save();
    edited.check();
    if (HasFailure()) FAIL() << history << "\nsave and open";
  }
}

}  // namespace
}  // namespace toolbox::testing
