// A regular expression that is ready to search, and where in a text it matches. Work and memory are
// bounded, so that no pattern hangs on any text.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "library/pcre2.h"

namespace krz {

/// Bytes of a text from `begin` to before `end`; both -1 for a group that took no part.
struct Span {
  int64_t begin = -1;
  int64_t end = -1;
};

/// The whole match, then the groups.
using Match = std::vector<Span>;

struct PatternOptions {
  bool case_sensitive = false;
  bool multi_line = false;       // "^" and "$" also match at line ends
  bool dot_matches_all = false;  // "." also matches a line end
  bool operator==(const PatternOptions&) const = default;
};

class Pattern {
 public:
  /// Null, with the exception raised, when the pattern is wrong; the message says where.
  static Pattern* compile(const std::string& text, PatternOptions options);
  ~Pattern();
  Pattern(const Pattern&) = delete;
  Pattern& operator=(const Pattern&) = delete;

  /// The next match of one text after another, from its front.
  class Search {
   public:
    /// REQUIRES: the text is UTF-8, and outlives the search, as does the pattern.
    Search(const Pattern& pattern, std::string_view text);
    /// False when there is no further match, or, with the exception raised, when finding it takes
    /// more work than a text of this length is worth.
    bool next(Match& match);

   private:
    const Pattern& pattern_;
    std::string_view text_;
    size_t place_ = 0;
    bool last_was_empty_ = false;
    bool text_is_checked_ = false;
    int64_t steps_left_;
  };

  const std::string& text() const { return text_; }
  PatternOptions options() const { return options_; }

 private:
  Pattern(const Pcre2& library, std::string text, PatternOptions options)
      : library_(library), text_(std::move(text)), options_(options) {}

  const Pcre2& library_;
  std::string text_;
  PatternOptions options_;
  pcre2_code_8* code_ = nullptr;
  pcre2_match_context_8* context_ = nullptr;
  pcre2_match_data_8* data_ = nullptr;
};

}  // namespace krz
