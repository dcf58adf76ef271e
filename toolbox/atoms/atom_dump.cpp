#include "atoms/atom_dump.h"

#include <algorithm>

#include "atoms/all_atoms.h"
#include "atoms/read_atom.h"

namespace toolbox {

namespace {

/// Walks an atom's fields and prints them.
class AtomDumper {
 public:
  explicit AtomDumper(size_t most_rows) : most_rows_(most_rows) {}
  std::string take() { return std::move(text_); }

  template <std::integral T>
  void operator()(const char* name, T& value) {
    line(name, std::to_string(value));
  }
  template <std::integral T, size_t N>
  void operator()(const char* name, std::array<T, N>& values) {
    std::string list;
    for (T value : values) list += (list.empty() ? "" : " ") + std::to_string(value);
    line(name, list);
  }
  template <class T>
  void wide(const char* name, T& value) {
    (*this)(name, value);
  }
  template <class T, class Row>
  void counted(const char* name, std::vector<T>& rows, Row row) {
    line(name, std::to_string(rows.size()));
    in_row_ = true;
    for (size_t i = 0; i < std::min(rows.size(), most_rows_); ++i) {
      text_ += "    " + std::to_string(i + 1) + ':';
      row(*this, rows[i]);
      text_ += '\n';
    }
    in_row_ = false;
  }
  template <class T, class Row>
  void rows(const char* name, std::vector<T>& list, Row row) {
    counted(name, list, row);
  }
  void entries(const char* name, std::vector<Bytes>& list) {
    line(name, std::to_string(list.size()));
    for (size_t i = 0; i < std::min(list.size(), most_rows_); ++i) {
      text_ += "    " + std::to_string(i + 1) +
               ": type=" + four_cc_text(load_big_endian<FourCC>(list[i].data() + 4)) +
               " bytes=" + std::to_string(list[i].size()) + '\n';
    }
  }
  void text(const char* name, std::string& bytes) {
    std::string shown;
    for (char each : bytes) shown += each >= 0x20 && each < 0x7F ? each : '.';
    line(name, shown);
  }
  void counted_table(const char* name, TableView& view, uint32_t) {
    line(name, std::to_string(view.row_count()));
  }
  void table(const char* name, TableView& view, uint32_t, uint64_t) {
    line(name, std::to_string(view.row_count()));
  }
  void rest_table(const char* name, TableView& view, uint32_t) {
    line(name, std::to_string(view.row_count()));
  }
  void require(const char*, bool, const char*) {}

 private:
  void line(const char* name, const std::string& value) {
    if (in_row_) {
      text_ += std::string(" ") + name + '=' + value;
    } else {
      text_ += std::string("  ") + name + ": " + value + '\n';
    }
  }

  size_t most_rows_;
  bool in_row_ = false;
  std::string text_;
};

void dump_level(const AtomTree& tree, AtomIndex first, size_t depth, bool with_fields,
                std::string& text) {
  for (AtomIndex index = first; index != kNoAtom; index = tree.node(index).next_sibling) {
    const AtomNode& atom = tree.node(index);
    text.append(depth * 2, ' ');
    text += four_cc_text(atom.type) + " offset=" + std::to_string(atom.offset) +
            " size=" + std::to_string(atom.size) + '\n';
    if (with_fields && !atom.is_container) {
      const Result<std::string> fields = dump_atom(tree, index);
      text += fields.ok() ? fields.value() : "  ! " + fields.status().message() + '\n';
    }
    dump_level(tree, atom.first_child, depth + 1, with_fields, text);
  }
}

}  // namespace

Result<std::string> dump_atom(const AtomTree& tree, AtomIndex index, size_t most_rows) {
  const AtomNode& node = tree.node(index);
  const FourCC parent = node.parent == kNoAtom ? kAnyType : tree.node(node.parent).type;
  AtomDumper dumper(most_rows);
  Status status;
  AllAtoms::any([&]<class Atom>() {
    if (!matches(Atom::kType, node.type, parent)) return false;
    Result<Atom> atom = read_atom<Atom>(tree, index);
    if (atom.ok()) {
      atom.value().fields(dumper);
    } else {
      status = atom.take_status();
    }
    return true;
  });
  if (!status.ok()) return status;
  return dumper.take();
}

std::string dump_tree(const AtomTree& tree, bool with_fields) {
  std::string text;
  dump_level(tree, tree.first_top_level(), 0, with_fields, text);
  if (tree.is_compressed()) {
    text += "unpacked movie atom:\n";
    dump_level(tree, tree.movie(), 0, with_fields, text);
  }
  return text;
}

}  // namespace toolbox
