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

void SourceText::set_pieces(std::string text, std::vector<File> files, std::vector<Piece> pieces) {
  text_ = std::move(text);
  files_ = std::move(files);
  pieces_ = std::move(pieces);
}

void SourceText::append(const SourceText& more) {
  const auto shift = static_cast<SourceOffset>(text_.size());
  if (pieces_.empty()) {
    files_.front().text = text_;
    pieces_.push_back({0, 0, 0});
  }
  const bool goes_on = more.file() == file();
  const size_t first_file = goes_on ? 0 : files_.size();
  const size_t other_files = files_.size() - (goes_on ? 1 : 0);
  if (!goes_on) files_.push_back({more.file(), {}});
  const auto main_shift = static_cast<SourceOffset>(files_[first_file].text.size());
  files_[first_file].text += more.text_of(0);
  for (size_t i = 1; i < more.files_.size(); ++i) files_.push_back(more.files_[i]);
  const auto add = [&](const Piece& piece) {
    const bool main = piece.file == 0;
    pieces_.push_back({piece.begin + shift, piece.file_begin + (main ? main_shift : 0),
                       main ? first_file : other_files + piece.file});
  };
  if (more.pieces_.empty()) add({0, 0, 0});
  for (const Piece& piece : more.pieces_) add(piece);
  text_ += more.text_;
}

SourceText::Place SourceText::place_of(SourceOffset offset) const {
  offset = std::min(offset, static_cast<SourceOffset>(text_.size()));
  if (pieces_.empty()) return {0, offset};
  const auto after =
      std::upper_bound(pieces_.begin(), pieces_.end(), offset,
                       [](SourceOffset at, const Piece& piece) { return at < piece.begin; });
  const Piece& piece = *(after - 1);
  const auto size = static_cast<SourceOffset>(files_[piece.file].text.size());
  return {piece.file, std::min(piece.file_begin + (offset - piece.begin), size)};
}

int SourceText::line_of(SourceOffset offset) const {
  const Place place = place_of(offset);
  const std::string_view text = text_of(place.file);
  int line = 1;
  for (size_t i = 0; i < place.offset; ++i) {
    if (text[i] == '\n' || (text[i] == '\r' && (i + 1 >= text.size() || text[i + 1] != '\n')))
      ++line;
  }
  return line;
}

std::string SourceText::line_text(SourceOffset offset, SourceOffset reader) const {
  std::string result = "line " + std::to_string(line_of(offset));
  const size_t file = place_of(offset).file;
  if (file != place_of(reader).file) result += " of " + files_[file].name;
  return result;
}

Diagnostic SourceText::diagnostic(SourceOffset offset, std::string message) const {
  const Place place = place_of(offset);
  const std::string_view text = text_of(place.file);
  size_t start = place.offset;
  while (start > 0 && !ends_line(text[start - 1])) --start;
  size_t end = start;
  while (end < text.size() && !ends_line(text[end])) ++end;

  Diagnostic result;
  result.file = files_[place.file].name;
  result.line = line_of(offset);
  result.column = characters_in(text.substr(start, place.offset - start)) + 1;
  result.message = std::move(message);
  result.source_line = std::string(text.substr(start, std::min(end - start, kLongestShownLine)));
  return result;
}

std::string shown_text(std::string_view text, size_t characters) {
  size_t end = 0;
  for (size_t seen = 0; end < text.size(); ++end) {
    if (starts_character(text[end]) && seen++ == characters) break;
  }
  return end == text.size() ? std::string(text) : std::string(text.substr(0, end)) + "…";
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
