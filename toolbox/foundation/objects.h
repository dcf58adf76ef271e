// Objects of the foundation: counted references to strings, file URLs and bundles.
#pragma once

#include <string>
#include <utility>

#include "memory/tokens.h"

namespace toolbox {

/// What all of them share: a count of references and a token. Made with one reference.
class FoundationObject {
 public:
  FoundationObject() = default;
  FoundationObject(const FoundationObject&) = delete;
  FoundationObject& operator=(const FoundationObject&) = delete;
  virtual ~FoundationObject() = default;

  Token token() { return reference_.token(Kind::kFoundation, this); }

  /// Gives one reference back; the last one ends the object.
  void release() {
    if (--count_ == 0) delete this;
  }

 private:
  uint32_t count_ = 1;
  Reference reference_;
};

/// Text in UTF-8.
struct FoundationString : FoundationObject {
  explicit FoundationString(std::string given) : text(std::move(given)) {}
  std::string text;
};

/// The absolute path of a file URL.
struct FoundationURL : FoundationObject {
  explicit FoundationURL(std::string given) : path(std::move(given)) {}
  std::string path;
};

/// A folder with code in it, which stays loaded once it is.
class FoundationBundle : public FoundationObject {
 public:
  explicit FoundationBundle(std::string path) : path_(std::move(path)) {}

  /// Loads the code; true also when it is loaded already.
  bool load();

  /// Why the code could not be loaded, the file named; empty when it was.
  const std::string& problem() const { return problem_; }

  /// A function of the loaded code; null when there is none.
  void* find_function(const std::string& name) const;

 private:
  std::string path_;
  std::string problem_;
  void* image_ = nullptr;  // never unloaded: callers keep its functions
};

}  // namespace toolbox
