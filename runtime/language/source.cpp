// Lines, columns and carets.
#include "language/source.h"

#include <algorithm>

namespace krz {
namespace {

constexpr size_t kLongestShownLine = 500;

bool starts_character(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; }

int characters_in(std::string_view text) {
  return static_cast<int>(std::count_if(text.begin(), text.end(), starts_character));
}

bool ends_line(char c) { return c == '\n' || c == '\r'; }

}  // namespace

SourceOffset SourceText::line_start(SourceOffset offset) const {
  while (offset > 0 && !ends_line(text_[offset - 1])) --offset;
  return offset;
}

int SourceText::line_of(SourceOffset offset) const {
  int line = 1;
  const size_t end = std::min<size_t>(offset, text_.size());
  for (size_t i = 0; i < end; ++i) {
    if (text_[i] == '\n' || (text_[i] == '\r' && (i + 1 >= text_.size() || text_[i + 1] != '\n')))
      ++line;
  }
  return line;
}

Diagnostic SourceText::diagnostic(SourceOffset offset, std::string message) const {
  offset = std::min(offset, static_cast<SourceOffset>(text_.size()));
  const SourceOffset start = line_start(offset);
  SourceOffset end = start;
  while (end < text_.size() && !ends_line(text_[end])) ++end;

  Diagnostic result;
  result.file = file_;
  result.line = line_of(offset);
  result.column = characters_in(slice(start, offset)) + 1;
  result.message = std::move(message);
  result.source_line = std::string(slice(start, end).substr(0, kLongestShownLine));
  return result;
}

std::string Diagnostic::text() const {
  std::string result = file + ":" + std::to_string(line) + ":" + std::to_string(column) +
                       ": error: " + message + "\n";
  return result + source_excerpt();
}

std::string Diagnostic::source_excerpt() const {
  std::string result;
  std::string caret;
  int position = 1;
  // Tabs stay tabs under the line, so that the caret stands where it should at any tab width.
  for (const char c : source_line) {
    const bool control = static_cast<unsigned char>(c) < 0x20 && c != '\t';
    result += control ? ' ' : c;
    if (!starts_character(c) || position >= column) continue;
    caret += c == '\t' ? '\t' : ' ';
    ++position;
  }
  result += '\n';
  if (column > position) return result;  // The place lies beyond what is shown of a very long line.
  return result + caret + "^\n";
}

void DiagnosticList::add(SourceOffset offset, std::string message) {
  if (full()) return;
  for (const Entry& entry : entries_) {
    if (entry.offset == offset) return;
  }
  entries_.push_back({offset, std::move(message)});
}

std::vector<Diagnostic> DiagnosticList::take() {
  std::stable_sort(entries_.begin(), entries_.end(),
                   [](const Entry& a, const Entry& b) { return a.offset < b.offset; });
  std::vector<Diagnostic> result;
  result.reserve(entries_.size());
  for (Entry& entry : entries_)
    result.push_back(source_.diagnostic(entry.offset, std::move(entry.message)));
  entries_.clear();
  return result;
}

}  // namespace krz
