// A script's text, which may come from several files, places in it, and the list of what is wrong
// with it.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "language/script.h"

namespace krz {

/// A byte position in the source. Lines and columns are worked out only for messages.
using SourceOffset = uint32_t;

/// The largest script that is accepted, in bytes, with all that it includes.
inline constexpr size_t kMaxSourceSize = size_t{16} << 20;

/// The text of a script as the lexer sees it: the main file's, and that of each included file right
/// behind the line that includes it. Places are told in the file that they come from.
class SourceText {
 public:
  SourceText(std::string_view text, std::string file) : text_(text) {
    files_.push_back({std::move(file), {}});
  }

  std::string_view text() const { return text_; }
  std::string_view slice(SourceOffset begin, SourceOffset end) const {
    return std::string_view(text_).substr(begin, end - begin);
  }

  /// Name of the main file.
  const std::string& file() const { return files_.front().name; }

  /// From 1, in the file of that place.
  int line_of(SourceOffset offset) const;

  /// "line 3", or "line 3 of other.bas" when that is not the file of `reader`.
  std::string line_text(SourceOffset offset, SourceOffset reader) const;

  Diagnostic diagnostic(SourceOffset offset, std::string message) const;

  /// A file whose text takes part. The first is the main one.
  struct File {
    std::string name;
    std::string text;  // empty for the main file as long as nothing is included
  };
  /// The bytes from `begin` up to the next piece come from `file`, from `file_begin` on.
  struct Piece {
    SourceOffset begin;
    SourceOffset file_begin;
    size_t file;
  };
  /// Replaces the text by one put together of several files. REQUIRES: pieces are in order, the
  /// first begins at 0, and the first file is the main one.
  void set_pieces(std::string text, std::vector<File> files, std::vector<Piece> pieces);

  /// Adds the text of another source. Where its main file has the name of this one's, that goes on.
  /// Views of the text stay good as long as it is no larger than it was prepared for.
  void append(const SourceText& more);

  /// Makes room for a text of so many bytes, which costs only address space until it is used.
  void prepare_for(size_t size) { text_.reserve(size); }

 private:
  struct Place {
    size_t file;
    SourceOffset offset;
  };
  Place place_of(SourceOffset offset) const;
  std::string_view text_of(size_t file) const {
    return pieces_.empty() ? std::string_view(text_) : std::string_view(files_[file].text);
  }

  std::string text_;
  std::vector<File> files_;
  std::vector<Piece> pieces_;  // none: all is the main file
};

/// A text as messages show it: what is longer than `characters` ends with "…" there.
std::string shown_text(std::string_view text, size_t characters = 60);

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

  /// The place that was complained about first.
  SourceOffset first() const { return entries_.empty() ? 0 : entries_.front().offset; }
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
