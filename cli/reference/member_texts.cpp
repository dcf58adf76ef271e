#include "reference/member_texts.h"

#include <algorithm>

namespace cli {

// Made from docs/members/*.txt when krz is built.
extern const char kMemberTexts[];

namespace {

constexpr std::string_view kBlanks = " \t";

std::string_view trimmed(std::string_view text) {
  const size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::vector<std::string_view> names_in(std::string_view list) {
  std::vector<std::string_view> names;
  for (size_t at = 0; at <= list.size();) {
    const size_t comma = std::min(list.find(',', at), list.size());
    names.push_back(trimmed(list.substr(at, comma - at)));
    at = comma + 1;
  }
  return names;
}

void append_line(std::string& text, std::string_view line) {
  if (!text.empty()) text += ' ';
  text += trimmed(line);
}

/// A line `# Class` begins a class and what follows is about it, up to an empty line. Then a line
/// `Names: Text` begins the text on members, and lines behind it that begin with blanks go on.
std::vector<ClassText> parse(std::string_view source) {
  std::vector<ClassText> classes;
  bool in_summary = false;
  for (size_t at = 0; at < source.size();) {
    const size_t end = std::min(source.find('\n', at), source.size());
    const std::string_view line = source.substr(at, end - at);
    at = end + 1;
    if (line.starts_with("# ")) {
      classes.push_back({trimmed(line.substr(2)), {}, {}});
      in_summary = true;
    } else if (line.empty()) {
      in_summary = false;
    } else if (classes.empty()) {
      continue;
    } else if (in_summary) {
      append_line(classes.back().summary, line);
    } else if (line.front() == ' ' && !classes.back().members.empty()) {
      append_line(classes.back().members.back().text, line);
    } else {
      const size_t colon = std::min(line.find(':'), line.size());
      classes.back().members.push_back({names_in(line.substr(0, colon)), {}});
      if (colon < line.size()) {
        append_line(classes.back().members.back().text, line.substr(colon + 1));
      }
    }
  }
  return classes;
}

}  // namespace

const MemberText* ClassText::find(std::string_view member) const {
  const MemberText* nearest = nullptr;
  size_t longest = 0;
  for (const MemberText& one : members) {
    for (const std::string_view named : one.names) {
      if (named == member) return &one;
      if (!named.ends_with('*') || !member.starts_with(named.substr(0, named.size() - 1))) continue;
      if (nearest && named.size() <= longest) continue;
      nearest = &one;
      longest = named.size();
    }
  }
  return nearest;
}

const std::vector<ClassText>& class_texts() {
  static const std::vector<ClassText> texts = parse(kMemberTexts);
  return texts;
}

const ClassText* find_class_text(std::string_view name) {
  for (const ClassText& one : class_texts()) {
    if (one.name == name) return &one;
  }
  return nullptr;
}

}  // namespace cli
