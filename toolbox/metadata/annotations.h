// What a movie or a track says about itself: its user data and its metadata, between the atoms of
// the file and those who ask.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "file/atom_tree.h"
#include "metadata/meta_atom.h"
#include "metadata/user_data_items.h"
#include "movie/atom_changes.h"

namespace toolbox {

class MetaData;

/// The lists of one owner, read when they are first asked for. Does not move.
class Annotations {
 public:
  /// The atoms of the owner, as its changes leave them.
  struct Source {
    const AtomTree& tree;
    AtomIndex parent;  // kNoAtom for an owner that is not in the file
    AtomChanges& changes;
  };

  /// Reads `udta` and the `meta` atoms among the owner's children. Damaged lists are read as far as
  /// they go. Fails: memFullErr for an atom of more than 64 MiB, ioErr, eofErr.
  static Result<std::unique_ptr<Annotations>> read(const Source& source);

  ~Annotations();

  UserDataList& user_data() { return user_data_; }

  /// The stores as one container.
  MetaData& metadata();

  /// All lists of metadata, those of a storage together: QuickTime keys, short list, user data.
  const std::vector<ItemStore*>& stores() const { return stores_; }

  /// The list that takes new items of a storage; it is made when there is none.
  ItemStore& store_for(FourCC storage);

  /// Called behind every change of a list.
  void on_change(std::function<void()> changed) { changed_ = std::move(changed); }

  /// To be called behind changes of a store.
  void changed();

  /// Puts what changed since the last time into the changes of the owner. A list that is again what
  /// the file has is no change; one that was made for items that have gone leaves.
  /// Fails: cantPutPublicMovieAtom for an atom of 4 GiB, ioErr, eofErr.
  Status write(const Source& source);

  /// The changes are in the file now.
  void saved();

 private:
  static constexpr uint32_t kNotInFile = UINT32_MAX;

  /// A `meta` atom: a child of the owner, or an item of its user data.
  struct MetaPlace {
    std::unique_ptr<MetaAtom> atom;
    bool is_item = false;
    std::list<UserDataItem>::iterator item;  // of an item
    uint32_t number = kNotInFile;  // of a child: its number among the children of its type
  };

  Annotations();
  void list_stores();
  void write_items();
  Status write_user_data(const Source& source);
  Status write_meta(const Source& source, MetaPlace& place);

  UserDataList user_data_;
  UserDataItems user_data_items_;
  std::vector<MetaPlace> metas_;
  std::vector<ItemStore*> stores_;
  bool user_data_in_file_ = false;
  bool user_data_was_empty_ = false;  // in the file as it was read
  bool user_data_written_ = false;    // there was something to write
  bool changed_since_write_ = false;
  std::unique_ptr<MetaData> metadata_;
  std::function<void()> changed_;
};

}  // namespace toolbox
