// What krz writes about itself: manual pages and completions.
#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "commands/actions.h"
#include "shell/completions.h"
#include "shell/man_page.h"

namespace cli {

namespace {

bool write_file(const std::string& path, const std::string& text) {
  std::FILE* file = std::fopen(path.c_str(), "wb");
  bool written = file && std::fwrite(text.data(), 1, text.size(), file) == text.size();
  if (file && std::fclose(file) != 0) written = false;
  if (!written) report(path + ": " + std::strerror(errno));
  return written;
}

bool make_folder(const std::string& path) {
  if (mkdir(path.c_str(), 0777) == 0 || errno == EEXIST) return true;
  report(path + ": " + std::strerror(errno));
  return false;
}

int print(const std::string& text) {
  return std::fwrite(text.data(), 1, text.size(), stdout) == text.size() ? kDone : kFailed;
}

int wrong_usage(const char* usage) {
  report(std::string("the usage is: krz ") + usage);
  return kWrongUsage;
}

}  // namespace

int print_man_page(std::span<char*> words) {
  if (words.empty()) return print(man_page());
  const Noun* noun = find_noun(words[0]);
  return noun ? print(man_page(*noun)) : wrong_usage("--man [NOUN]");
}

int print_completion(std::span<char*> words) {
  const std::string_view shell = words.empty() ? "" : words[0];
  if (shell == "bash") return print(bash_completion());
  if (shell == "zsh") return print(zsh_completion());
  return wrong_usage("--completions bash|zsh");
}

int write_manual(std::span<char*> words) {
  if (words.size() != 1) return wrong_usage("--write-manual DIR");
  const std::string folder = words[0];
  const std::string man = folder + "/man";
  const std::string completions = folder + "/completions";
  if (!make_folder(man) || !make_folder(completions)) return kNotWritten;
  bool written = write_file(man + "/krz.1", man_page()) &&
                 write_file(completions + "/krz", bash_completion()) &&
                 write_file(completions + "/_krz", zsh_completion());
  for (const Noun& noun : nouns()) {
    written = written && write_file(man + "/krz-" + noun.name + ".1", man_page(noun));
  }
  return written ? kDone : kNotWritten;
}

}  // namespace cli
