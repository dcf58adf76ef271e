#include "metadata/locale.h"

namespace toolbox {

namespace {

// Languages of two letters with their three, one behind the other, in order of the former.
constexpr std::string_view kLanguages =
    "aaaarababkaeaveafafrakakaamamhanargararaasasmavavaayaymazazebabakbebelbgbulbhbihbibis"
    "bmbambnbenbobodbrbrebsboscacatcechechchacocoscrcrecscescuchucvchvcycymdadandedeudvdiv"
    "dzdzoeeeweelellenengeoepoesspaetesteueusfafasfffulfifinfjfijfofaofrfrafyfrygaglegdgla"
    "glglggngrngugujgvglvhahauhehebhihinhohmohrhrvhthathuhunhyhyehzheriainaidindieileigibo"
    "iiiiiikipkioidoisislititaiuikujajpnjvjavkakatkgkonkikikkjkuakkkazklkalkmkhmknkankokor"
    "krkaukskaskukurkvkomkwcorkykirlalatlbltzlgluglilimlnlinlolaoltlitlulublvlavmgmlgmhmah"
    "mimrimkmkdmlmalmnmonmrmarmsmsamtmltmymyananaunbnobndndenenepngndonlnldnnnnononornrnbl"
    "nvnavnynyaocociojojiomormororiososspapanpipliplpolpspusptporququermrohrnrunroronrurus"
    "rwkinsasanscsrdsdsndsesmesgsagsisinskslkslslvsmsmosnsnasosomsqsqisrsrpsssswstsotsusun"
    "svsweswswatatamteteltgtgkththatitirtktuktltgltntsntotontrturtstsotttattwtwitytahuguig"
    "ukukrururduzuzbvevenvivievovolwawlnwowolxhxhoyiyidyoyorzazhazhzhozuzul";
constexpr size_t kRow = 5;

char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; }
char upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - ('a' - 'A')) : c; }

bool all_letters(std::string_view text) {
  for (const char c : text) {
    if (lower(c) < 'a' || lower(c) > 'z') return false;
  }
  return true;
}

uint16_t pack(std::string_view three) {
  uint16_t packed = 0;
  for (const char c : three) packed = static_cast<uint16_t>(packed << 5 | (lower(c) - 0x60));
  return packed;
}

std::string unpack(uint16_t packed) {
  std::string text;
  for (int shift = 10; shift >= 0; shift -= 5) {
    text += static_cast<char>(0x60 + ((packed >> shift) & 31));
  }
  return text;
}

std::string language_text(uint16_t language) {
  if (!is_packed_language(language) || language == kUndeterminedLanguage) return {};
  std::string three = unpack(language);
  if (!all_letters(three)) return {};
  for (size_t at = 0; at < kLanguages.size(); at += kRow) {
    if (kLanguages.substr(at + 2, 3) == three) return std::string(kLanguages.substr(at, 2));
  }
  return three;
}

std::optional<uint16_t> parse_language(std::string_view text) {
  if (text.empty()) return uint16_t{0};
  if (!all_letters(text)) return std::nullopt;
  if (text.size() == 3) return pack(text);
  if (text.size() != 2) return std::nullopt;
  const char two[2] = {lower(text[0]), lower(text[1])};
  for (size_t at = 0; at < kLanguages.size(); at += kRow) {
    if (kLanguages.substr(at, 2) == std::string_view(two, 2)) {
      return pack(kLanguages.substr(at + 2, 3));
    }
  }
  return std::nullopt;
}

}  // namespace

std::string locale_text(Locale locale) {
  std::string text = language_text(locale.language);
  const char country[2] = {static_cast<char>(locale.country >> 8),
                           static_cast<char>(locale.country)};
  if (all_letters(std::string_view(country, 2))) text += "_" + std::string(country, 2);
  return text;
}

std::optional<Locale> parse_locale(std::string_view text) {
  const size_t bar = text.find_first_of("_-");
  const std::optional<uint16_t> language = parse_language(text.substr(0, bar));
  if (!language) return std::nullopt;
  Locale locale{.country = 0, .language = *language};
  if (bar == std::string_view::npos) return locale;
  const std::string_view country = text.substr(bar + 1);
  if (country.size() != 2 || !all_letters(country)) return std::nullopt;
  locale.country = static_cast<uint16_t>(upper(country[0]) << 8 | upper(country[1]));
  return locale;
}

}  // namespace toolbox
