#include "library/pattern.h"

#include <algorithm>
#include <memory>

#include "object/exceptions.h"

namespace krz {

namespace {

constexpr size_t kMaxPatternBytes = 64 * 1024;
constexpr uint32_t kMaxHeapKilobytes = 64 * 1024;

// Items of the pattern that one search may try: seconds of work at most.
constexpr int64_t kSteps = 20'000'000;
constexpr int64_t kStepsPerByte = 20;

std::string error_text(const Pcre2& library, int error) {
  PCRE2_UCHAR8 buffer[160] = {};
  library.error_message(error, buffer, sizeof buffer);
  return reinterpret_cast<const char*>(buffer);
}

// Called before each item of the pattern that is tried.
int count_step(pcre2_callout_block_8*, void* steps_left) {
  return --*static_cast<int64_t*>(steps_left) < 0 ? PCRE2_ERROR_CALLOUT : 0;
}

void raise_failure(const Pcre2& library, int error) {
  switch (error) {
    case PCRE2_ERROR_CALLOUT:
    case PCRE2_ERROR_MATCHLIMIT:
    case PCRE2_ERROR_DEPTHLIMIT:
    case PCRE2_ERROR_HEAPLIMIT:
      return raise_exception("RegExException",
                             "the search takes too much work; give repetitions inside of "
                             "repetitions only one way to match, or search a shorter text",
                             error);
    case PCRE2_ERROR_NOMEMORY:
      return raise_exception("OutOfMemoryException", "there is no memory to search the text");
    default:
      return raise_exception("RegExException",
                             "the text cannot be searched: " + error_text(library, error), error);
  }
}

}  // namespace

Pattern* Pattern::compile(const std::string& text, PatternOptions options) {
  const Pcre2* const library = pcre2();
  if (!library) return nullptr;
  // Callouts tell how much work is done. Looking for a first letter ahead would be work that they
  // do not see, and for a letter of two cases goes to the end of the text at every match.
  uint32_t flags = PCRE2_UTF | PCRE2_UCP | PCRE2_NEVER_BACKSLASH_C | PCRE2_AUTO_CALLOUT |
                   PCRE2_NO_START_OPTIMIZE;
  if (!options.case_sensitive) flags |= PCRE2_CASELESS;
  if (options.multi_line) flags |= PCRE2_MULTILINE;
  if (options.dot_matches_all) flags |= PCRE2_DOTALL;

  std::unique_ptr<Pattern> pattern(new Pattern(*library, text, options));
  pcre2_compile_context_8* const limits = library->compile_context_create(nullptr);
  if (limits) library->set_max_pattern_length(limits, kMaxPatternBytes);
  int error = 0;
  PCRE2_SIZE place = 0;
  pattern->code_ = library->compile(reinterpret_cast<const PCRE2_UCHAR8*>(pattern->text_.data()),
                                    pattern->text_.size(), flags, &error, &place, limits);
  library->compile_context_free(limits);
  if (!pattern->code_) {
    raise_exception("RegExException",
                    "the pattern is wrong at byte " + std::to_string(place + 1) + ": " +
                        error_text(*library, error),
                    error);
    return nullptr;
  }
  pattern->context_ = library->match_context_create(nullptr);
  pattern->data_ = library->match_data_create(pattern->code_, nullptr);
  if (!pattern->context_ || !pattern->data_) {
    raise_exception("OutOfMemoryException", "there is no memory for the pattern");
    return nullptr;
  }
  library->set_heap_limit(pattern->context_, kMaxHeapKilobytes);
  return pattern.release();
}

Pattern::~Pattern() {
  library_.match_data_free(data_);
  library_.match_context_free(context_);
  library_.code_free(code_);
}

Pattern::Search::Search(const Pattern& pattern, std::string_view text)
    : pattern_(pattern),
      text_(text),
      steps_left_(kSteps + kStepsPerByte * static_cast<int64_t>(text.size())) {}

bool Pattern::Search::next(Match& match) {
  const Pcre2& library = pattern_.library_;
  library.set_callout(pattern_.context_, count_step, &steps_left_);
  int count = PCRE2_ERROR_NOMATCH;
  while (place_ <= text_.size()) {
    uint32_t flags = text_is_checked_ ? PCRE2_NO_UTF_CHECK : 0;
    // Behind an empty match the next one has to move on.
    if (last_was_empty_) flags |= PCRE2_NOTEMPTY_ATSTART | PCRE2_ANCHORED;
    count = library.match(pattern_.code_, reinterpret_cast<const PCRE2_UCHAR8*>(text_.data()),
                          text_.size(), place_, flags, pattern_.data_, pattern_.context_);
    text_is_checked_ = true;
    if (count != PCRE2_ERROR_NOMATCH || !last_was_empty_) break;
    // Nothing else begins here; the next character may.
    last_was_empty_ = false;
    do {
      ++place_;
    } while (place_ < text_.size() && (static_cast<uint8_t>(text_[place_]) & 0xC0) == 0x80);
  }
  if (count < 0) {
    place_ = text_.size() + 1;
    if (count != PCRE2_ERROR_NOMATCH) raise_failure(library, count);
    return false;
  }
  const PCRE2_SIZE* const ends = library.ovector(pattern_.data_);
  match.assign(library.ovector_count(pattern_.data_), {});
  for (size_t i = 0; i < match.size(); ++i) {
    if (ends[2 * i] == PCRE2_UNSET) continue;
    match[i] = {static_cast<int64_t>(ends[2 * i]), static_cast<int64_t>(ends[2 * i + 1])};
  }
  // Releases of the library before 10.38 let "\K" in a lookaround put the beginning behind the end,
  // or a match before the place where the search began.
  match[0].begin = std::min(match[0].begin, match[0].end);
  const auto end = static_cast<size_t>(match[0].end);
  const bool stands_still = end <= place_;
  if (stands_still && last_was_empty_) {
    place_ = text_.size() + 1;
    return true;
  }
  last_was_empty_ = stands_still || match[0].begin == match[0].end;
  place_ = end;
  return true;
}

}  // namespace krz
