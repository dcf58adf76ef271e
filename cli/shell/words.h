// What a word of a command line may be: the completions of all shells are made from this.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "command.h"

namespace cli {

enum class WordKind {
  kAny,     // nothing to offer
  kChoice,  // one of `choices`
  kMovie,
  kScript,
  kFile,
  kFolder,
  kTrack,       // a track selector
  kKey,         // a key of metadata
  kAssignment,  // a key of metadata and an equals sign
  kClass,       // a class, or a class and a member with a dot between them
};

struct Word {
  WordKind kind = WordKind::kAny;
  std::string name;                  // as the synopsis has it
  std::vector<std::string> choices;  // of kChoice
  bool is_repeated = false;
};

/// The arguments of a command, in their order, as its synopsis names them.
std::vector<Word> arguments_of(const Command& command);

/// The value of an option that takes one.
Word value_of(const Option& option);

/// What tracks, stores and keys of metadata are called.
std::vector<std::string> track_selectors();
std::vector<std::string> metadata_stores();
std::vector<std::string> metadata_keys();

/// Class names, and "Class.Member" for each member that a class declares itself. Empty without the
/// module.
std::vector<std::string> class_words();

/// The verbs of a noun.
std::vector<const Command*> verbs_of(const Noun& noun);

/// Puts all parts behind a text.
void append(std::string& text, std::initializer_list<std::string_view> parts);

/// Joined with blanks.
std::string joined(const std::vector<std::string>& words);

}  // namespace cli
