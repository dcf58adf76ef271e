#include "shell/words.h"

#include <algorithm>

#include "commands/scripts.h"
#include "reference/class_members.h"
#include "registry/registry.h"
#include "runtime.h"

namespace cli {

namespace {

constexpr std::string_view kMore = "…";

/// Words between blanks, commas and bars.
std::vector<std::string> split(std::string_view text, std::string_view separators) {
  std::vector<std::string> parts;
  for (size_t at = 0; at < text.size();) {
    const size_t end = std::min(text.find_first_of(separators, at), text.size());
    if (end > at) parts.emplace_back(text.substr(at, end - at));
    at = end + 1;
  }
  return parts;
}

/// The values that a help text lists, as "simple, ogm or json" does; those that hold a … are no
/// values.
std::vector<std::string> listed_in(std::string_view help) {
  std::vector<std::string> values;
  size_t at = 0;
  while (at < help.size()) {
    size_t end = help.find(", ", at);
    size_t next = end == std::string_view::npos ? help.size() : end + 2;
    const size_t last = help.find(" or ", at);
    if (last < end) {
      end = last;
      next = last + 4;
    }
    const std::string value(help.substr(at, std::min(end, help.size()) - at));
    if (value.find(' ') == std::string::npos && value.find(kMore) == std::string::npos) {
      values.push_back(value);
    }
    at = next;
  }
  return values;
}

Word word_of(std::string name) {
  Word word;
  if (name.ends_with(kMore)) {
    word.is_repeated = true;
    name.resize(name.size() - kMore.size());
  }
  word.name = name;
  const auto is = [&](std::initializer_list<std::string_view> names) {
    return std::find(names.begin(), names.end(), name) != names.end();
  };
  if (is({"FILE", "MOVIE", "OTHER", "A", "B", "FROM", "TO"})) {
    word.kind = WordKind::kMovie;
  } else if (is({"SCRIPT"})) {
    word.kind = WordKind::kScript;
  } else if (name.starts_with("NAME[.")) {
    word.kind = WordKind::kClass;
  } else if (is({"LIST", "OUT", "DATA", "ITEMS"}) || name.find('.') != std::string::npos) {
    word.kind = WordKind::kFile;
  } else if (is({"DIR"})) {
    word.kind = WordKind::kFolder;
  } else if (is({"TRACK"})) {
    word.kind = WordKind::kTrack;
  } else if (is({"STORE"})) {
    word.kind = WordKind::kChoice;
    word.choices = metadata_stores();
  } else if (name.starts_with("KEY=")) {
    word.kind = WordKind::kAssignment;
  } else if (name.starts_with("KEY")) {
    word.kind = WordKind::kKey;
  } else if (name.find('|') != std::string::npos) {
    word.kind = WordKind::kChoice;
    word.choices = split(name, "|");
  }
  return word;
}

/// Where the bracket that begins at `at` ends.
size_t end_of_group(std::string_view text, size_t at) {
  int depth = 0;
  for (; at < text.size(); ++at) {
    if (text[at] == '[' || text[at] == '{') ++depth;
    if ((text[at] == ']' || text[at] == '}') && --depth == 0) return at + 1;
  }
  return at;
}

}  // namespace

std::vector<Word> arguments_of(const Command& command) {
  const std::string_view synopsis = command.synopsis;
  std::vector<Word> words;
  bool is_value = false;  // of an option that stands by itself
  for (size_t at = 0; at < synopsis.size();) {
    if (synopsis[at] == ' ') {
      ++at;
      continue;
    }
    const bool is_group = synopsis[at] == '[' || synopsis[at] == '{';
    const size_t end =
        is_group ? end_of_group(synopsis, at) : std::min(synopsis.find(' ', at), synopsis.size());
    std::string_view part = synopsis.substr(at, end - at);
    at = end;
    if (is_group) {
      part = part.substr(1, part.size() - 2);
      if (!part.starts_with('-')) part = part.substr(0, part.find(' '));
    }
    if (!part.starts_with('-') && !is_value) words.push_back(word_of(std::string(part)));
    is_value = !is_group && part.starts_with('-');
  }
  return words;
}

Word value_of(const Option& option) {
  Word word = word_of(option.value_name);
  if (word.name == "FORM" || word.name == "NAME") {
    word.kind = WordKind::kChoice;
    word.choices = listed_in(option.help);
  }
  return word;
}

std::vector<std::string> track_selectors() {
  return {"video",  "sound",    "text",     "tmcd", "all", "video:1", "sound:1", "text:1",
          "tmcd:1", "ref:chap", "ref:tmcd", "1",    "2",   "3",       "id="};
}

std::vector<std::string> metadata_stores() { return {"mdta", "itms", "udta"}; }

/// The script that sets metadata knows the keys: first words between semicolons of its constant.
std::vector<std::string> metadata_keys() {
  constexpr std::string_view kBeginning = "Const kNames = \"";
  const std::string_view script = kMetaSetScript;
  const size_t at = script.find(kBeginning);
  std::vector<std::string> keys;
  if (at == std::string_view::npos) return keys;
  const std::string_view rest = script.substr(at + kBeginning.size());
  for (const std::string& entry : split(rest.substr(0, rest.find('"')), ";")) {
    keys.push_back(entry.substr(0, entry.find(' ')));
  }
  return keys;
}

std::vector<std::string> class_words() {
  std::vector<std::string> words;
  krz::Runtime runtime({});
  if (!runtime.load_module(krz::Runtime::default_module_path()).empty()) return words;
  for (const krz::ClassInfo* one : runtime.registry().classes()) {
    words.push_back(one->name());
    for (const MemberKind& kind : members_of(*one)) {
      for (const DeclaredMember& member : kind.members) {
        std::string word = one->name() + "." + member.name;
        if (words.back() != word) words.push_back(std::move(word));
      }
    }
  }
  return words;
}

std::vector<const Command*> verbs_of(const Noun& noun) {
  std::vector<const Command*> verbs;
  for (const Command& command : commands()) {
    if (is_verb_of(command, noun)) verbs.push_back(&command);
  }
  return verbs;
}

void append(std::string& text, std::initializer_list<std::string_view> parts) {
  for (const std::string_view part : parts) text += part;
}

std::string joined(const std::vector<std::string>& words) {
  std::string text;
  for (const std::string& word : words) text += (text.empty() ? "" : " ") + word;
  return text;
}

}  // namespace cli
