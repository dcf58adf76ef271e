// The syntax files for editors know the words of the language, and no others.
#include <algorithm>
#include <fstream>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>

#include "host_test.h"
#include "language/names.h"
#include "language/session.h"
#include "language/token.h"

namespace krz {
namespace {

using Words = std::set<std::string>;

std::string text_of(const std::string& file) {
  std::ifstream in(std::string(KRZ_SOURCE_DIR "/editors/") + file);
  std::stringstream text;
  text << in.rdbuf();
  return text.str();
}

std::string folded(std::string_view word) {
  std::string text(word);
  std::transform(text.begin(), text.end(), text.begin(), fold_ascii);
  return text;
}

/// Words of letters and digits, of what follows `mark` up to the end of its line or bracket.
void add_words_behind(const std::string& text, const std::string& mark, const std::string& ends,
                      Words& words) {
  for (size_t at = text.find(mark); at != std::string::npos; at = text.find(mark, at + 1)) {
    const size_t begin = at + mark.size();
    std::string list = text.substr(begin, text.find_first_of(ends, begin) - begin);
    std::replace(list.begin(), list.end(), '|', ' ');
    std::istringstream in(list);
    for (std::string word; in >> word;) words.insert(folded(word));
  }
}

Words words_of_vim() {
  Words words = {"rem"};  // a comment there, not a keyword
  const std::string text = text_of("krz.vim");
  for (const char* group :
       {"Control", "Declaration", "Operator", "Constant", "Type", "Variable", "Function"}) {
    add_words_behind(text, std::string("syn keyword krz") + group + " ", "\n", words);
  }
  EXPECT_NE(text.find("\\<Rem\\>"), std::string::npos);
  return words;
}

Words words_of_grammar() {
  Words words = {"rem"};
  const auto grammar = nlohmann::json::parse(text_of("krz.tmLanguage.json"));
  for (const auto& pattern : grammar.at("repository").at("word").at("patterns")) {
    add_words_behind(pattern.at("match").get<std::string>(), "\\b(", ")", words);
  }
  EXPECT_NE(grammar.at("repository").at("comment").dump().find("Rem"), std::string::npos);
  return words;
}

using Editors = HostTest;

TEST_F(Editors, KnowEveryReservedWordAndNoWordThatTheLanguageDoesNotKnow) {
  const Session session(*runtime_, "input");
  for (const Words& words : {words_of_vim(), words_of_grammar()}) {
    for (const std::string_view reserved : reserved_words()) {
      EXPECT_TRUE(words.contains(folded(reserved))) << reserved << " is missing";
    }
    for (const std::string& word : words) {
      // Another name of Integer and the names of two routines, which nobody is offered.
      if (word == "int32" || word == "constructor" || word == "destructor") continue;
      const auto offered = session.complete(word).names;
      EXPECT_TRUE(std::any_of(offered.begin(), offered.end(),
                              [&](const std::string& one) { return folded(one) == word; }))
          << word << " is no word of the language";
    }
    // What a session offers beyond reserved words is coloured, too.
    for (const char* word : {"class", "inherits", "self", "integer", "variant", "property"}) {
      EXPECT_TRUE(words.contains(word)) << word << " is missing";
    }
  }
  EXPECT_EQ(words_of_vim(), words_of_grammar());
}

}  // namespace
}  // namespace krz
