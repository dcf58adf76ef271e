#include <string>
#include <string_view>

#include "command.h"
#include "shell/completions.h"
#include "shell/words.h"

namespace cli {

namespace {

constexpr std::string_view kFunctions = R"zsh(
_krz_tracks() { compadd -- $_krz_track_words }
_krz_keys() { compadd -- $_krz_key_words }
_krz_assignments() { compadd -S = -- $_krz_key_words }
_krz_movies() { _files -g '*.(mov|mp4|m4v|m4a|m4b|qt)(-.)' || _files }
_krz_members() {
  if [[ $PREFIX == *.* ]]; then compadd -- $_krz_member_words; else compadd -- $_krz_class_words; fi
}
_krz_movies_or_assignments() { _alternative 'files:movie:_krz_movies' 'keys:key:_krz_assignments' }
_krz_movies_or_keys() { _alternative 'files:movie:_krz_movies' 'keys:key:_krz_keys' }

_krz() {
  local command
  if (( CURRENT > 2 )) && [[ $words[2] == help ]]; then
    shift words
    (( CURRENT-- ))
    (( CURRENT > 3 )) && return 1
  fi
  if (( CURRENT == 2 )); then
    _describe -t commands command _krz_command_words
    return
  fi
  command=$words[2]
  if (( ${_krz_nouns[(Ie)$command]} )); then
    if (( CURRENT == 3 )); then
      _krz_verbs $command
      return
    fi
    command+=" $words[3]"
    shift words
    (( CURRENT-- ))
  fi
  shift words
  (( CURRENT-- ))
  _krz_arguments $command
}

# Loaded by name, this file is the body of the function; sourced, it makes it known.
if [[ $funcstack[1] == _krz ]]; then _krz "$@"; else compdef _krz krz; fi
)zsh";

/// A text in single quotes, with what has a meaning in specifications taken out of it.
std::string quoted(std::string_view text) {
  std::string result = "'";
  for (const char c : text) {
    if (c == '\'') {
      result += "'\\''";
    } else {
      result += c;
    }
  }
  return result + "'";
}

std::string escaped(std::string_view text, std::string_view special) {
  std::string result;
  for (const char c : text) {
    if (special.find(c) != std::string_view::npos) result += '\\';
    result += c;
  }
  return result;
}

std::string action_of(const Word& word) {
  switch (word.kind) {
    case WordKind::kAny:
      return " ";
    case WordKind::kChoice:
      return "(" + joined(word.choices) + ")";
    case WordKind::kMovie:
      return "_krz_movies";
    case WordKind::kScript:
      return "_files -g \"*.bas\"";
    case WordKind::kFile:
      return "_files";
    case WordKind::kFolder:
      return "_files -/";
    case WordKind::kTrack:
      return "_krz_tracks";
    case WordKind::kKey:
      return "_krz_keys";
    case WordKind::kAssignment:
      return "_krz_assignments";
    case WordKind::kClass:
      return "_krz_members";
  }
  return " ";
}

std::string label_of(const Word& word) { return escaped(word.name, "\\:[]"); }

void append_option(std::string& out, const Option& option) {
  const std::string help = "[" + escaped(option.help, "\\[]:") + "]";
  std::string value;
  const bool is_optional = option.value_name && option.value_name[0] == '[';
  if (option.value_name && !is_optional) {
    const Word word = value_of(option);
    value = ":" + label_of(word) + ":" + action_of(word);
  }
  const std::string name = std::string("--") + option.name;
  const std::string ending = option.value_name && !is_optional ? "=" : "";
  if (option.letter) {
    const std::string letter = std::string("-") + option.letter;
    const std::string both = "(" + letter + " " + name + ")";
    out += " \\\n        " + quoted(both + letter + (ending.empty() ? "" : "+") + help + value);
    out += " \\\n        " + quoted(both + name + ending + help + value);
  } else {
    out += " \\\n        " + quoted(name + ending + help + value);
  }
}

void append_command(std::string& out, const Command& command) {
  out += "    " + quoted(command.name) +
         ")\n      _arguments -s -S : \\\n        '--help[options and examples]'";
  for (const Option& option : options_of(command)) append_option(out, option);
  const std::vector<Word> words = arguments_of(command);
  for (size_t i = 0; i < words.size(); ++i) {
    std::string action = action_of(words[i]);
    // What is repeated takes all that follows, so that what stands behind it comes along.
    if (words[i].is_repeated && i + 1 < words.size()) {
      if (words[i + 1].kind == WordKind::kAssignment) action = "_krz_movies_or_assignments";
      if (words[i + 1].kind == WordKind::kKey) action = "_krz_movies_or_keys";
    }
    const std::string place = words[i].is_repeated ? "*" : std::to_string(i + 1);
    append(out,
           {" \\\n        ", quoted(place + ":" + label_of(words[i]).append(":").append(action))});
    if (words[i].is_repeated) break;
  }
  out += " ;;\n";
}

std::string described(std::string_view name, std::string_view summary) {
  return "  " + quoted(escaped(name, "\\:") + ":" + std::string(summary)) + "\n";
}

}  // namespace

std::string zsh_completion() {
  std::vector<std::string> classes, members, noun_names;
  for (const std::string& word : class_words()) {
    (word.find('.') == std::string::npos ? classes : members).push_back(word);
  }
  std::string out = "#compdef krz\n# zsh completion for krz, made by `krz --completions zsh`.\n\n";
  std::string words = "_krz_command_words=(\n";
  for (const Command& command : commands()) {
    if (std::string_view(command.name).find(' ') == std::string_view::npos) {
      words += described(command.name, command.summary);
    }
  }
  for (const Noun& noun : nouns()) {
    words += described(noun.name, noun.summary);
    noun_names.emplace_back(noun.name);
  }
  words += described("help", "options and worked examples of a command") + ")\n";
  out += "typeset -ga _krz_nouns _krz_command_words _krz_track_words _krz_key_words\n";
  out += "typeset -ga _krz_class_words _krz_member_words\n";
  out += words;
  out += "_krz_nouns=(" + joined(noun_names) + ")\n";
  out += "_krz_track_words=(" + joined(track_selectors()) + ")\n";
  out += "_krz_key_words=(" + joined(metadata_keys()) + ")\n";
  out += "_krz_class_words=(" + joined(classes) + ")\n";
  out += "_krz_member_words=(" + joined(members) + ")\n";
  out += "\n_krz_verbs() {\n  local -a verbs\n  case $1 in\n";
  for (const Noun& noun : nouns()) {
    out += std::string("    ") + noun.name + ") verbs=(\n";
    for (const Command* verb : verbs_of(noun)) {
      out += "    " +
             described(std::string_view(verb->name).substr(std::string_view(noun.name).size() + 1),
                       verb->summary);
    }
    out += "    ) ;;\n";
  }
  out += "  esac\n  _describe -t verbs verb verbs\n}\n\n_krz_arguments() {\n  case $1 in\n";
  for (const Command& command : commands()) append_command(out, command);
  out += "  esac\n}\n";
  out += kFunctions;
  return out;
}

}  // namespace cli
