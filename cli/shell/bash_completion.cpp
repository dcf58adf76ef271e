#include <string>
#include <string_view>

#include "command.h"
#include "shell/completions.h"
#include "shell/words.h"

namespace cli {

namespace {

// Words are cut at blanks only: bash itself cuts at : and =, which track selectors and assignments
// hold. What stands before the last of these is taken off the answers again, as bash keeps it.
constexpr std::string_view kFunctions = R"bash(
_krz_words() { mapfile -t COMPREPLY < <(compgen -W "$1" -- "$_krz_word"); }

# Nothing found is left to the shell, which offers every file.
_krz_files() {
  local ending
  COMPREPLY=()
  for ending in $1; do
    mapfile -t -O "${#COMPREPLY[@]}" COMPREPLY < <(compgen -f -X "!*.$ending" -- "$_krz_word")
  done
  mapfile -t -O "${#COMPREPLY[@]}" COMPREPLY < <(compgen -d -- "$_krz_word")
  compopt -o filenames 2>/dev/null
}

_krz_offer() {
  case $1 in
    movie) _krz_files "mov mp4 m4v m4a m4b qt MOV MP4 M4V M4A" ;;
    script) _krz_files "bas" ;;
    folder) mapfile -t COMPREPLY < <(compgen -d -- "$_krz_word"); compopt -o filenames 2>/dev/null ;;
    track) _krz_words "$_krz_tracks" ;;
    key) _krz_words "$_krz_keys" ;;
    assignment) compopt -o nospace 2>/dev/null; _krz_words "${_krz_keys// /= }=" ;;
    class)
      # A member after the dot, a class before it.
      if [[ $_krz_word == *.* ]]; then _krz_words "$_krz_members"; else _krz_words "$_krz_classes"; fi ;;
    =*) _krz_words "${1#=}" ;;
  esac
}

_krz() {
  local _krz_word line=${COMP_LINE:0:COMP_POINT} options= values= arguments= repeated= command at i option
  local -a words
  read -ra words <<< "$line"
  [[ $line == *[[:blank:]] ]] && words+=('')
  COMPREPLY=()
  _krz_word=${words[-1]}
  at=1
  if [[ ${words[1]} == help && ${#words[@]} -gt 2 ]]; then at=2; fi
  if (( ${#words[@]} - 1 == at )); then
    _krz_words "$_krz_commands"
    return
  fi
  command=${words[at]}
  if [[ " $_krz_nouns " == *" $command "* ]]; then
    if (( ${#words[@]} - 2 == at )); then
      _krz_verbs "$command"
      return
    fi
    (( ++at ))
    command+=" ${words[at]}"
  fi
  (( at > 2 )) && [[ ${words[1]} == help ]] && return
  _krz_command "$command"
  if [[ $_krz_word == -* && $_krz_word != *=* ]]; then
    _krz_words "$options"
    return
  fi
  # The value of an option, behind it or behind its equals sign.
  option=${words[-2]}
  if [[ $_krz_word == --*=* ]]; then
    option=${_krz_word%%=*}
    _krz_word=${_krz_word#*=}
  fi
  if [[ $values == *" $option:"* ]]; then
    option=${values#*" $option:"}
    _krz_offer "${option%%;*}"
    return
  fi
  # An argument: count those before it.
  local number=0 skip=
  for (( i = at + 1; i < ${#words[@]} - 1; ++i )); do
    if [[ -n $skip ]]; then
      skip=
    elif [[ ${words[i]} == -* ]]; then
      [[ $values == *" ${words[i]}:"* ]] && skip=yes
    else
      (( ++number ))
    fi
  done
  local -a list
  IFS=';' read -ra list <<< "$arguments"
  # One that may be repeated, and what stands behind it: both are offered.
  local -a found=()
  for (( i = 0; i < ${#list[@]}; ++i )); do
    if (( i == number || ( i < number && i >= ${repeated:-99} ) || ( i > number && i == ${repeated:-99} + 1 && number > ${repeated:-99} ) )); then
      COMPREPLY=()
      _krz_offer "${list[i]}"
      found+=("${COMPREPLY[@]}")
    fi
  done
  COMPREPLY=("${found[@]}")
}

_krz_cut() {
  local cur=${COMP_LINE:0:COMP_POINT} cut
  _krz
  cur=${cur##*[[:blank:]]}
  [[ $COMP_WORDBREAKS == *:* ]] || cur=${cur//:/}
  [[ $COMP_WORDBREAKS == *=* ]] || cur=${cur//=/}
  [[ $cur == *[:=]* ]] || return 0
  cut=${cur%"${cur##*[:=]}"}
  [[ $cut == --*= ]] && cut=
  COMPREPLY=("${COMPREPLY[@]#"$cut"}")
}

complete -o default -F _krz_cut krz
)bash";

std::string quoted(const std::string& text) {
  std::string result = "'";
  for (const char c : text) result += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return result + "'";
}

/// What _krz_offer takes for a word.
std::string offer_of(const Word& word) {
  switch (word.kind) {
    case WordKind::kAny:
      return "any";
    case WordKind::kChoice:
      return "=" + joined(word.choices);
    case WordKind::kMovie:
      return "movie";
    case WordKind::kScript:
      return "script";
    case WordKind::kFile:
      return "file";
    case WordKind::kFolder:
      return "folder";
    case WordKind::kTrack:
      return "track";
    case WordKind::kKey:
      return "key";
    case WordKind::kAssignment:
      return "assignment";
    case WordKind::kClass:
      return "class";
  }
  return "any";
}

void append_command(std::string& out, const Command& command) {
  std::string options = "--help";
  std::string values;
  for (const Option& option : options_of(command)) {
    const std::string name = std::string("--") + option.name;
    append(options, {" ", name});
    std::string offer;
    if (option.value_name && option.value_name[0] != '[') offer = offer_of(value_of(option));
    if (!offer.empty()) append(values, {" ", name, ":", offer, ";"});
    if (option.letter) {
      const std::string letter = std::string("-") + option.letter;
      append(options, {" ", letter});
      if (!offer.empty()) append(values, {" ", letter, ":", offer, ";"});
    }
  }
  std::string arguments;
  std::string repeated;
  const std::vector<Word> words = arguments_of(command);
  for (size_t i = 0; i < words.size(); ++i) {
    arguments += (i == 0 ? "" : ";") + offer_of(words[i]);
    if (words[i].is_repeated && repeated.empty()) repeated = std::to_string(i);
  }
  out += "    " + quoted(command.name) + ")\n      options=" + quoted(options) + "\n";
  if (!values.empty()) out += "      values=" + quoted(values) + "\n";
  out += "      arguments=" + quoted(arguments);
  out += repeated.empty() ? " ;;\n" : " repeated=" + repeated + " ;;\n";
}

}  // namespace

std::string bash_completion() {
  std::string names = "help";
  std::string noun_names;
  for (const Command& command : commands()) {
    if (std::string_view(command.name).find(' ') == std::string_view::npos) {
      names += std::string(" ") + command.name;
    }
  }
  for (const Noun& noun : nouns()) {
    noun_names += (noun_names.empty() ? "" : " ") + std::string(noun.name);
  }
  std::vector<std::string> classes, members;
  for (const std::string& word : class_words()) {
    (word.find('.') == std::string::npos ? classes : members).push_back(word);
  }
  std::string out = "# bash completion for krz, made by `krz --completions bash`.\n\n";
  out += "_krz_nouns=" + quoted(noun_names) + "\n";
  out += "_krz_commands=" + quoted(names + " " + noun_names + " --help --version") + "\n";
  out += "_krz_tracks=" + quoted(joined(track_selectors())) + "\n";
  out += "_krz_keys=" + quoted(joined(metadata_keys())) + "\n";
  out += "_krz_classes=" + quoted(joined(classes)) + "\n";
  out += "_krz_members=" + quoted(joined(members)) + "\n";
  out += "\n_krz_verbs() {\n  case $1 in\n";
  for (const Noun& noun : nouns()) {
    std::string verbs;
    for (const Command* verb : verbs_of(noun)) {
      verbs += (verbs.empty() ? "" : " ") +
               std::string(verb->name).substr(std::string_view(noun.name).size() + 1);
    }
    out += std::string("    ") + noun.name + ") _krz_words " + quoted(verbs) + " ;;\n";
  }
  out += "  esac\n}\n\n# Sets what _krz looks at.\n_krz_command() {\n  case $1 in\n";
  for (const Command& command : commands()) append_command(out, command);
  out += "  esac\n}\n";
  out += kFunctions;
  return out;
}

}  // namespace cli
