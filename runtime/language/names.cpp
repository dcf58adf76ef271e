// The table of names, and guesses at what a mistyped one was meant to be.
#include "language/names.h"

#include <algorithm>

namespace krz {
namespace {

constexpr size_t kFirstBuckets = 256;
constexpr size_t kLongestGuessed = 64;

/// Insertions, deletions, replacements and swaps of neighbours that turn one name into the other;
/// `limit` + 1 when more.
size_t edit_distance(std::string_view a, std::string_view b, size_t limit) {
  if (a.size() > kLongestGuessed || b.size() > kLongestGuessed) return limit + 1;
  const size_t difference = a.size() > b.size() ? a.size() - b.size() : b.size() - a.size();
  if (difference > limit) return limit + 1;

  size_t rows[3][kLongestGuessed + 1];
  for (size_t j = 0; j <= b.size(); ++j) rows[0][j] = j;
  for (size_t i = 1; i <= a.size(); ++i) {
    size_t* now = rows[i % 3];
    const size_t* above = rows[(i + 2) % 3];
    const size_t* two_above = rows[(i + 1) % 3];
    now[0] = i;
    for (size_t j = 1; j <= b.size(); ++j) {
      const bool same = fold_ascii(a[i - 1]) == fold_ascii(b[j - 1]);
      now[j] = std::min({above[j] + 1, now[j - 1] + 1, above[j - 1] + (same ? 0 : 1)});
      if (i > 1 && j > 1 && fold_ascii(a[i - 1]) == fold_ascii(b[j - 2]) &&
          fold_ascii(a[i - 2]) == fold_ascii(b[j - 1]))
        now[j] = std::min(now[j], two_above[j - 2] + 1);
    }
  }
  return std::min(rows[a.size() % 3][b.size()], limit + 1);
}

}  // namespace

NameTable::NameTable() : buckets_(kFirstBuckets) { entries_.reserve(kFirstBuckets / 4); }

NameId NameTable::intern(std::string_view text, uint32_t hash) {
  const size_t mask = buckets_.size() - 1;
  size_t slot = hash & mask;
  for (; buckets_[slot] != 0; slot = (slot + 1) & mask) {
    const Entry& entry = entries_[buckets_[slot] - 1];
    if (entry.hash == hash && equal_names(entry.text, text)) return buckets_[slot] - 1;
  }
  entries_.push_back({text, hash});
  const auto id = static_cast<NameId>(entries_.size() - 1);
  buckets_[slot] = id + 1;
  if (entries_.size() * 2 > buckets_.size()) grow();
  return id;
}

void NameTable::grow() {
  std::vector<uint32_t> wider(buckets_.size() * 2);
  for (uint32_t i = 0; i < entries_.size(); ++i) {
    size_t slot = entries_[i].hash & (wider.size() - 1);
    while (wider[slot] != 0) slot = (slot + 1) & (wider.size() - 1);
    wider[slot] = i + 1;
  }
  buckets_ = std::move(wider);
}

std::string_view nearest_name(std::string_view name,
                              const std::vector<std::string_view>& candidates) {
  // A third of the letters may be wrong, at most three; one in a short name.
  size_t best_distance = std::clamp<size_t>(name.size() / 3, 1, 3) + 1;
  std::string_view best;
  for (const std::string_view candidate : candidates) {
    if (candidate.size() < 2 || best_distance == 0) continue;
    const size_t distance = edit_distance(name, candidate, best_distance - 1);
    if (distance < best_distance && distance < candidate.size()) {
      best_distance = distance;
      best = candidate;
    }
  }
  return best;
}

}  // namespace krz
