#include "foundation/file_locations.h"

#include <iconv.h>
#include <stdlib.h>

#include <algorithm>
#include <cctype>
#include <climits>
#include <cstring>
#include <optional>

#include "base/big_endian.h"

namespace toolbox::file_locations {

namespace {

// Places in an alias record.
constexpr size_t kAliasSizeAt = 4;
constexpr size_t kAliasVersionAt = 6;
constexpr size_t kFileNameAt = 50;
constexpr size_t kFileNameBytes = 64;
constexpr size_t kHeadOfVersion2 = 150;
constexpr size_t kHeadOfVersion3 = 58;

// Tags of what follows an alias record's head.
constexpr uint16_t kColonPathTag = 2;
constexpr uint16_t kFileNameTag = 14;
constexpr uint16_t kPathOnVolumeTag = 18;
constexpr uint16_t kVolumeTag = 19;
constexpr uint16_t kEndTag = 0xFFFF;

constexpr size_t kMostPaths = 64;

std::string_view last_component(std::string_view path) { return path.substr(path.rfind('/') + 1); }

std::string in_folder(const std::string& folder, std::string_view name) {
  return (folder == "/" ? folder : folder + "/") + std::string(name);
}

bool is_plain_in_url(char character) {
  return std::isalnum(static_cast<unsigned char>(character)) != 0 ||
         std::strchr("-._~/", character) != nullptr;
}

std::string percent_encoded(std::string_view path) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  std::string url;
  for (const char character : path) {
    if (character != '\0' && is_plain_in_url(character)) {
      url += character;
    } else {
      const auto byte = static_cast<unsigned char>(character);
      url += {'%', kDigits[byte >> 4], kDigits[byte & 15]};
    }
  }
  return url;
}

int hex_digit(char character) {
  const char* const kDigits = "0123456789abcdef";
  const char* const found =
      std::strchr(kDigits, std::tolower(static_cast<unsigned char>(character)));
  return character == '\0' || found == nullptr ? -1 : static_cast<int>(found - kDigits);
}

// Nothing for what no path can hold.
std::optional<std::string> percent_decoded(std::string_view url) {
  std::string path;
  for (size_t i = 0; i < url.size(); ++i) {
    char character = url[i];
    if (character == '%' && i + 2 < url.size() && hex_digit(url[i + 1]) >= 0 &&
        hex_digit(url[i + 2]) >= 0) {
      character = static_cast<char>(hex_digit(url[i + 1]) * 16 + hex_digit(url[i + 2]));
      i += 2;
    }
    if (character == '\0') return {};
    path += character;
  }
  return path;
}

// Nothing when the system has no such encoding or the text does not fit in it.
std::optional<std::string> converted(std::string_view utf8, const char* encoding) {
  const iconv_t converter = ::iconv_open(encoding, "UTF-8");
  if (converter == reinterpret_cast<iconv_t>(-1)) return {};
  std::string result(utf8.size() * 4 + 4, '\0');
  std::string input(utf8);
  char* from = input.data();
  char* to = result.data();
  size_t from_left = input.size();
  size_t to_left = result.size();
  const size_t failed = ::iconv(converter, &from, &from_left, &to, &to_left);
  ::iconv_close(converter);
  if (failed == static_cast<size_t>(-1)) return {};
  result.resize(result.size() - to_left);
  return result;
}

class AliasWriter {
 public:
  explicit AliasWriter(std::string_view path) : record_(kHeadOfVersion2, '\0') {
    const std::string_view name = last_component(path);
    put16(kAliasVersionAt, 2);
    put_name(name);
    std::memset(&record_[46], 0xFF, 4);  // the parent folder has no number here
    put16(130, 0xFFFF);
    put16(132, 0xFFFF);
    if (const std::optional<std::string> wide = converted(name, "UTF-16BE")) {
      std::string counted(2, '\0');
      store_big_endian(reinterpret_cast<uint8_t*>(counted.data()),
                       static_cast<uint16_t>(wide->size() / 2));
      add(kFileNameTag, counted + *wide);
    }
    add(kPathOnVolumeTag, path.substr(1));
    add(kVolumeTag, "/");
    add(kEndTag, "");
    put16(kAliasSizeAt, static_cast<uint16_t>(record_.size()));
  }

  std::string take() { return std::move(record_); }

 private:
  void put16(size_t at, uint16_t number) {
    store_big_endian(reinterpret_cast<uint8_t*>(&record_[at]), number);
  }

  // A name that the old encoding cannot hold still gives readers something to show.
  void put_name(std::string_view name) {
    std::string short_name = converted(name, "MACINTOSH").value_or(std::string());
    if (short_name.empty()) {
      for (const char character : name) {
        short_name += static_cast<unsigned char>(character) < 0x80 ? character : '_';
      }
    }
    const size_t length = std::min(short_name.size(), kFileNameBytes - 1);
    record_[kFileNameAt] = static_cast<char>(length);
    short_name.copy(&record_[kFileNameAt + 1], length);
  }

  void add(uint16_t tag, std::string_view data) {
    const size_t at = record_.size();
    record_.resize(at + 4);
    put16(at, tag);
    put16(at + 2, static_cast<uint16_t>(data.size()));
    record_ += data;
    if (data.size() % 2 != 0) record_ += '\0';
  }

  std::string record_;
};

/// What an alias record says of its file.
struct AliasParts {
  std::string path_on_volume;
  std::string volume;
  std::string colon_path;
  std::string name;
};

AliasParts parts_of(ByteView record) {
  AliasParts parts;
  if (record.size() < kAliasVersionAt + 2) return parts;
  const uint16_t version = load_big_endian<uint16_t>(&record[kAliasVersionAt]);
  if (version != 2 && version != 3) return parts;
  const auto text = [&](size_t at, size_t size) {
    const std::string_view all(reinterpret_cast<const char*>(record.data()) + at, size);
    return std::string(all.substr(0, all.find('\0')));
  };
  size_t at = version == 2 ? kHeadOfVersion2 : kHeadOfVersion3;
  if (record.size() < at) return parts;
  if (version == 2 && record[kFileNameAt] < kFileNameBytes) {
    parts.name = text(kFileNameAt + 1, record[kFileNameAt]);
  }
  while (record.size() - at >= 4) {
    const uint16_t tag = load_big_endian<uint16_t>(&record[at]);
    const size_t size = load_big_endian<uint16_t>(&record[at + 2]);
    at += 4;
    if (tag == kEndTag || size > record.size() - at) break;
    if (tag == kPathOnVolumeTag) parts.path_on_volume = text(at, size);
    if (tag == kVolumeTag) parts.volume = text(at, size);
    if (tag == kColonPathTag) parts.colon_path = text(at, size);
    at = std::min(at + size + size % 2, record.size());
  }
  return parts;
}

// What a path ends with, looked for in a folder: the longest ending first.
void add_endings(std::vector<std::string>& paths, std::string_view path,
                 const std::string& folder) {
  while (!folder.empty() && !path.empty() && paths.size() < kMostPaths) {
    if (path.front() != '/') paths.push_back(in_folder(folder, path));
    const size_t slash = path.find('/');
    path = slash == std::string_view::npos ? std::string_view() : path.substr(slash + 1);
  }
}

}  // namespace

std::string folder_of(const std::string& path) {
  const size_t slash = path.rfind('/');
  const std::string folder = slash == std::string::npos ? "."
                             : slash == 0               ? "/"
                                                        : path.substr(0, slash);
  char followed[PATH_MAX];
  return ::realpath(folder.c_str(), followed) == nullptr ? std::string() : std::string(followed);
}

bool is_within(const std::string& path, const std::string& folder) {
  if (folder.empty()) return false;
  const std::string front = folder == "/" ? folder : folder + "/";
  return path.starts_with(front);
}

std::string url_to(const std::string& path, const std::string& folder) {
  std::string url;
  if (is_within(path, folder)) {
    const std::string relative = path.substr(folder == "/" ? 1 : folder.size() + 1);
    url = percent_encoded(relative);
  } else {
    url = "file://" + percent_encoded(path);
  }
  return url + '\0';
}

std::string alias_to(const std::string& path) { return AliasWriter(path).take(); }

std::vector<std::string> paths_of_url(std::string_view url, const std::string& folder) {
  constexpr std::string_view kFile = "file:";
  url = url.substr(0, url.find('\0'));
  if (url.starts_with(kFile)) {
    url.remove_prefix(kFile.size());
    // A host between two slashes and the path is this one or none that can be asked.
    if (url.starts_with("//")) url.remove_prefix(std::min(url.find('/', 2), url.size()));
  } else if (url.substr(0, url.find('/')).find(':') != std::string_view::npos) {
    return {};
  }
  const std::optional<std::string> path = percent_decoded(url);
  if (!path || path->empty()) return {};
  if (path->front() == '/') return {*path};
  return folder.empty() ? std::vector<std::string>() : std::vector{in_folder(folder, *path)};
}

std::vector<std::string> paths_of_alias(ByteView record, const std::string& folder) {
  const AliasParts parts = parts_of(record);
  std::vector<std::string> paths;
  if (!parts.path_on_volume.empty()) {
    std::string volume = parts.volume;
    if (volume.empty() || volume.back() != '/') volume += '/';
    if (volume.front() == '/') {
      const bool has_slash = parts.path_on_volume.front() == '/';
      paths.push_back(volume + parts.path_on_volume.substr(has_slash ? 1 : 0));
    }
    if (!folder.empty()) {
      paths.push_back(in_folder(folder, last_component(parts.path_on_volume)));
    }
  }
  // The path of old systems begins with the volume; a slash stood for a colon in a name.
  std::string path = parts.colon_path;
  std::replace(path.begin(), path.end(), ':', '/');
  add_endings(paths, path, folder);
  add_endings(paths, last_component(parts.name), folder);
  return paths;
}

}  // namespace toolbox::file_locations
