// The sentences on classes and their members, from docs/members.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace cli {

/// A sentence or two on members of a class. A name that ends in * stands for all that begin so.
struct MemberText {
  std::vector<std::string_view> names;
  std::string text;
};

struct ClassText {
  std::string_view name;
  std::string summary;
  std::vector<MemberText> members;

  /// The sentences on a member: those that name it, else those of the longest beginning. Null when
  /// there are none.
  const MemberText* find(std::string_view member) const;
};

/// All sentences, in the order of their files.
const std::vector<ClassText>& class_texts();

/// Null when nothing is said about a class of that name.
const ClassText* find_class_text(std::string_view name);

}  // namespace cli
