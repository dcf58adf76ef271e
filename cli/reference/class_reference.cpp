#include "reference/class_reference.h"

#include <algorithm>
#include <set>
#include <vector>

#include "reference/class_members.h"
#include "reference/member_texts.h"
#include "registry/names.h"

namespace cli {

namespace {

/// Members that stand one behind the other and share their sentences.
struct Group {
  const MemberText* text;  // null without any
  std::vector<const DeclaredMember*> members;
};

std::vector<Group> grouped(const MemberKind& kind, const ClassText* class_text) {
  std::vector<Group> groups;
  for (const DeclaredMember& member : kind.members) {
    const MemberText* text = class_text ? class_text->find(member.name) : nullptr;
    if (groups.empty() || !text || groups.back().text != text) groups.push_back({text, {}});
    groups.back().members.push_back(&member);
  }
  return groups;
}

/// The sentences, and whether the members may be assigned to where that is not what one expects:
/// most properties may, most methods may not.
std::string sentences(const Group& group, bool is_property, bool is_method) {
  std::string text = group.text ? group.text->text : "";
  const auto assignable = static_cast<size_t>(
      std::count_if(group.members.begin(), group.members.end(),
                    [](const DeclaredMember* member) { return member->is_assignable; }));
  if (is_property && assignable == 0) text += " Read only.";
  if (is_method && assignable == group.members.size()) text += " Can be assigned.";
  return text;
}

void append_wrapped(std::string& out, const std::string& text, size_t indent) {
  constexpr size_t kColumns = 96;
  size_t column = 0;
  for (size_t at = 0; at < text.size();) {
    const size_t end = std::min(text.find(' ', at), text.size());
    const size_t length = end - at;
    if (column > 0 && column + 1 + length > kColumns) {
      out += '\n';
      column = 0;
    }
    if (column == 0) {
      out.append(indent, ' ');
      column = indent;
    } else {
      out += ' ';
      ++column;
    }
    out.append(text, at, length);
    column += length;
    at = end + 1;
  }
  out += '\n';
}

const ClassText* text_of(const krz::ClassInfo& class_info) {
  return find_class_text(class_info.name());
}

std::vector<const krz::ClassInfo*> in_order_of_texts(
    std::span<const krz::ClassInfo* const> classes) {
  std::vector<const krz::ClassInfo*> sorted(classes.begin(), classes.end());
  const auto place = [](const krz::ClassInfo* one) {
    const ClassText* text = text_of(*one);
    return text ? static_cast<size_t>(text - class_texts().data()) : class_texts().size();
  };
  std::stable_sort(
      sorted.begin(), sorted.end(),
      [&](const krz::ClassInfo* a, const krz::ClassInfo* b) { return place(a) < place(b); });
  return sorted;
}

void append_class(std::string& out, const krz::ClassInfo& class_info) {
  const ClassText* text = text_of(class_info);
  out += "\n## " + class_info.name() + "\n\n";
  if (text) out += text->summary + "\n";
  if (const std::string superclass = superclass_name(class_info); !superclass.empty()) {
    out += "\nInherits `" + superclass + "`.\n";
  }
  const auto kinds = members_of(class_info);
  for (size_t i = 0; i < kinds.size(); ++i) {
    if (kinds[i].members.empty()) continue;
    out += std::string("\n### ") + kinds[i].title + "\n\n";
    for (const Group& group : grouped(kinds[i], text)) {
      for (const DeclaredMember* member : group.members) {
        out += (member == group.members.front() ? "- `" : "  `") + member->declaration + "`";
        out += member == group.members.back() ? "  \n" : ",\n";
      }
      out += "  " + sentences(group, i == 0, i == 1) + "\n";
    }
  }
}

}  // namespace

std::string class_listing(const krz::ClassInfo& class_info) {
  const ClassText* text = text_of(class_info);
  const std::string superclass = superclass_name(class_info);
  std::string out = "Class " + class_info.name();
  if (!superclass.empty()) out += " Inherits " + superclass;
  out += "\n";
  if (text) append_wrapped(out, text->summary, 2);
  const auto kinds = members_of(class_info);
  for (size_t i = 0; i < kinds.size(); ++i) {
    if (kinds[i].members.empty()) continue;
    out += std::string("\n") + kinds[i].title + "\n";
    for (const Group& group : grouped(kinds[i], text)) {
      for (const DeclaredMember* member : group.members) out += "  " + member->declaration + "\n";
      append_wrapped(out, sentences(group, i == 0, i == 1), 6);
    }
  }
  return out;
}

std::string member_listing(const krz::ClassInfo& class_info, std::string_view name) {
  std::string out;
  const auto kinds = members_of(class_info);
  for (size_t i = 0; i < kinds.size(); ++i) {
    Group group{nullptr, {}};
    for (const DeclaredMember& member : kinds[i].members) {
      if (!krz::same_name(member.name, name)) continue;
      out += class_info.name() + "." + member.declaration + "\n";
      group.members.push_back(&member);
    }
    if (group.members.empty()) continue;
    const ClassText* text = text_of(class_info);
    group.text = text ? text->find(group.members.front()->name) : nullptr;
    append_wrapped(out, sentences(group, i == 0, i == 1), 2);
  }
  return out;
}

std::string class_reference(std::span<const krz::ClassInfo* const> classes) {
  std::string out =
      "# The classes\n\n"
      "All classes that scripts can use, with their members exactly as they are declared: first "
      "those for movies, then\n"
      "those of the library, which `library.md` shows at work. `krz classes NAME` shows one of "
      "them. Made by\n"
      "`./dev docs` from the declarations and from `docs/members`.\n\n"
      "A method without parameters is read like a property. `Integer` is 32 bits wide; names may "
      "be written in any case.\n";
  for (const krz::ClassInfo* one : in_order_of_texts(classes)) append_class(out, *one);
  return out;
}

std::string reference_faults(std::span<const krz::ClassInfo* const> classes) {
  std::string faults;
  std::set<std::string_view> known;
  for (const krz::ClassInfo* one : classes) {
    known.insert(one->name());
    const ClassText* text = text_of(*one);
    if (!text || text->summary.empty()) faults += one->name() + " has no text\n";
    std::vector<std::string> members;
    for (const MemberKind& kind : members_of(*one)) {
      for (const DeclaredMember& member : kind.members) {
        const MemberText* sentence = text ? text->find(member.name) : nullptr;
        if (!sentence || sentence->text.empty()) {
          faults += one->name() + "." + member.name + " has no sentence\n";
        }
        members.push_back(member.name);
      }
    }
    if (!text) continue;
    for (const MemberText& sentence : text->members) {
      for (const std::string_view name : sentence.names) {
        const bool is_beginning = name.ends_with('*');
        const std::string_view beginning = name.substr(0, name.size() - (is_beginning ? 1 : 0));
        const bool is_there =
            std::any_of(members.begin(), members.end(), [&](const std::string& member) {
              return is_beginning ? member.starts_with(beginning) : member == name;
            });
        if (!is_there) faults += one->name() + " has no member " + std::string(name) + "\n";
      }
    }
  }
  for (const ClassText& text : class_texts()) {
    if (!known.contains(text.name)) faults += "there is no class " + std::string(text.name) + "\n";
  }
  return faults;
}

}  // namespace cli
