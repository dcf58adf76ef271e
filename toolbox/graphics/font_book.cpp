#include "graphics/font_book.h"

#include <fontconfig/fontconfig.h>
#include <iconv.h>

#include <algorithm>
#include <map>
#include <memory>
#include <vector>

#include "graphics/classic_fonts.h"

namespace toolbox {

namespace {

constexpr int16_t kFirstNumber = 256;
constexpr int16_t kNumberCount = 16384 - kFirstNumber;
constexpr size_t kLongestName = 255;

std::string lower(std::string_view text) {
  std::string result(text);
  for (char& c : result) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
  return result;
}

// Empty when the text cannot be had in MacRoman.
std::string mac_roman(std::string text) {
  const bool plain = std::all_of(text.begin(), text.end(), [](char c) { return c > 0; });
  if (plain) return text;
  const iconv_t converter = iconv_open("MACINTOSH", "UTF-8");
  if (converter == reinterpret_cast<iconv_t>(-1)) return {};
  std::string result(text.size(), '\0');
  char* from = text.data();
  char* to = result.data();
  size_t from_left = text.size(), to_left = result.size();
  const bool converted =
      iconv(converter, &from, &from_left, &to, &to_left) != static_cast<size_t>(-1);
  iconv_close(converter);
  result.resize(result.size() - to_left);
  return converted ? result : std::string();
}

uint32_t hash(std::string_view text) {
  uint32_t value = 2166136261U;
  for (const char c : text) value = (value ^ static_cast<uint8_t>(c)) * 16777619U;
  return value;
}

struct Family {
  std::string name;    // MacRoman, as it is written
  std::string family;  // UTF-8
};

/// Installed families, listed when first asked for.
class InstalledFonts {
 public:
  InstalledFonts() {
    std::map<std::string, Family> families;  // by lower-case name, so that their order is fixed
    for (Family& each : installed()) {
      if (each.name.empty() || each.name.size() > kLongestName || is_classic(each.name)) continue;
      families.emplace(lower(each.name), std::move(each));
    }
    for (auto& [key, family] : families) {
      if (numbers_.size() == static_cast<size_t>(kNumberCount)) break;
      // Where two names want one number, the later in the alphabet takes the next that is free.
      auto place = static_cast<int16_t>(hash(key) % kNumberCount);
      while (by_number_.count(static_cast<int16_t>(kFirstNumber + place)) != 0)
        place = static_cast<int16_t>((place + 1) % kNumberCount);
      const auto number = static_cast<int16_t>(kFirstNumber + place);
      numbers_.emplace(key, number);
      by_number_.emplace(number, std::move(family));
    }
  }

  int16_t number(std::string_view name) const {
    const auto found = numbers_.find(lower(name));
    return found == numbers_.end() ? int16_t{0} : found->second;
  }
  const Family* find(int16_t number) const {
    const auto found = by_number_.find(number);
    return found == by_number_.end() ? nullptr : &found->second;
  }

 private:
  static bool is_classic(std::string_view name) {
    return std::any_of(std::begin(kClassicFonts), std::end(kClassicFonts),
                       [&](const ClassicFont& font) { return lower(font.name) == lower(name); });
  }

  static std::vector<Family> installed() {
    std::vector<Family> families;
    const std::unique_ptr<FcPattern, decltype(&FcPatternDestroy)> all(FcPatternCreate(),
                                                                      &FcPatternDestroy);
    const std::unique_ptr<FcObjectSet, decltype(&FcObjectSetDestroy)> wanted(
        FcObjectSetBuild(FC_FAMILY, nullptr), &FcObjectSetDestroy);
    if (!all || !wanted) return families;
    const std::unique_ptr<FcFontSet, decltype(&FcFontSetDestroy)> fonts(
        FcFontList(nullptr, all.get(), wanted.get()), &FcFontSetDestroy);
    for (int i = 0; fonts && i < fonts->nfont; ++i) {
      FcChar8* family = nullptr;
      if (FcPatternGetString(fonts->fonts[i], FC_FAMILY, 0, &family) != FcResultMatch) continue;
      const std::string name = reinterpret_cast<const char*>(family);
      families.push_back({mac_roman(name), name});
    }
    return families;
  }

  std::map<std::string, int16_t> numbers_;  // by lower-case name
  std::map<int16_t, Family> by_number_;
};

const InstalledFonts& installed_fonts() {
  static const InstalledFonts* const kFonts = new InstalledFonts;
  return *kFonts;
}

}  // namespace

int16_t number_of_font(std::string_view name) {
  for (const ClassicFont& font : kClassicFonts) {
    if (lower(font.name) == lower(name)) return font.number;
  }
  return installed_fonts().number(name);
}

std::string name_of_font(int16_t number) {
  if (const ClassicFont* classic = find_classic_font(number)) return std::string(classic->name);
  const Family* const family = installed_fonts().find(number);
  return family ? family->name : std::string();
}

std::string family_of_font(int16_t number) {
  const ClassicFont* classic = find_classic_font(number);
  if (classic == nullptr) {
    if (const Family* family = installed_fonts().find(number)) return family->family;
    classic = find_classic_font(kApplicationFont);
  }
  return std::string(classic->substitute);
}

}  // namespace toolbox
