// A script's text, places in it, and the list of what is wrong with it.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "language/script.h"

namespace krz {

/// A byte position in the source. Lines and columns are worked out only for messages.
using SourceOffset = uint32_t;

/// The largest script that is accepted, in bytes.
inline constexpr size_t kMaxSourceSize = size_t{16} << 20;

class SourceText {
 public:
  SourceText(std::string_view text, std::string file) : text_(text), file_(std::move(file)) {}

  std::string_view text() const { return text_; }
  const std::string& file() const { return file_; }
  std::string_view slice(SourceOffset begin, SourceOffset end) const {
    return std::string_view(text_).substr(begin, end - begin);
  }

  /// From 1.
  int line_of(SourceOffset offset) const;

  Diagnostic diagnostic(SourceOffset offset, std::string message) const;

 private:
  SourceOffset line_start(SourceOffset offset) const;

  std::string text_;
  std::string file_;
};

/// What was found wrong, in the order it was found. Holds at most kLimit; the rest is dropped.
class DiagnosticList {
 public:
  static constexpr size_t kLimit = 20;

  explicit DiagnosticList(const SourceText& source) : source_(source) {}

  /// One complaint a place: a second one at the same offset is most likely a consequence of the
  /// first.
  void add(SourceOffset offset, std::string message);

  bool empty() const { return entries_.empty(); }
  size_t size() const { return entries_.size(); }
  bool full() const { return entries_.size() >= kLimit; }
  const SourceText& source() const { return source_; }

  /// In source order.
  std::vector<Diagnostic> take();

 private:
  struct Entry {
    SourceOffset offset;
    std::string message;
  };
  const SourceText& source_;
  std::vector<Entry> entries_;
};

}  // namespace krz
