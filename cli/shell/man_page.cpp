#include "shell/man_page.h"

#include <algorithm>
#include <cstdio>
#include <string_view>

#include "shell/words.h"

namespace cli {

namespace {

constexpr char32_t kFirstBeyondAscii = 0x80;

/// The character that begins at `at`, which moves behind it.
char32_t next_character(std::string_view text, size_t& at) {
  const auto first = static_cast<unsigned char>(text[at++]);
  const int more = first >= 0xF0 ? 3 : first >= 0xE0 ? 2 : first >= 0xC0 ? 1 : 0;
  char32_t code = more == 0 ? first : first & (0x3Fu >> more);
  for (int i = 0; i < more && at < text.size(); ++i) {
    code = code << 6 | (static_cast<unsigned char>(text[at++]) & 0x3Fu);
  }
  return code;
}

/// Text as a formatter takes it for what it is.
std::string plain(std::string_view text) {
  std::string out;
  if (text.starts_with('.') || text.starts_with('\'')) out += "\\&";
  for (size_t at = 0; at < text.size();) {
    const char32_t code = next_character(text, at);
    if (code == '\\') {
      out += "\\e";
    } else if (code == '-') {
      out += "\\-";
    } else if (code == '\'') {
      out += "\\(aq";
    } else if (code == '`') {
      out += "\\(ga";
    } else if (code < kFirstBeyondAscii) {
      out += static_cast<char>(code);
    } else {
      char escape[16];
      std::snprintf(escape, sizeof escape, "\\[u%04X]", static_cast<unsigned>(code));
      out += escape;
    }
  }
  return out;
}

std::string bold(std::string_view text) { return "\\fB" + plain(text) + "\\fR"; }

/// Words in capital letters stand for what the user writes.
std::string synopsis_text(std::string_view synopsis) {
  std::string out;
  for (size_t at = 0; at < synopsis.size();) {
    size_t end = at;
    while (end < synopsis.size() && synopsis[end] >= 'A' && synopsis[end] <= 'Z') ++end;
    if (end - at > 0) {
      out += "\\fI" + std::string(synopsis.substr(at, end - at)) + "\\fR";
      at = end;
      continue;
    }
    while (end < synopsis.size() && (synopsis[end] < 'A' || synopsis[end] > 'Z')) ++end;
    out += plain(synopsis.substr(at, end - at));
    at = end;
  }
  return out;
}

std::string heading(std::string_view page, std::string_view summary) {
  std::string upper(page);
  for (char& c : upper) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  }
  return ".\\\" Made by krz from the records of its commands.\n.TH " + plain(upper) +
         " 1 \"\" \"krz " KRZ_VERSION "\" \"User Commands\"\n.SH NAME\n" + plain(page) + " \\- " +
         plain(summary) + "\n";
}

/// Lines that keep their form.
void append_example(std::string& out, std::string_view lines) {
  out += ".PP\n.nf\n.RS 4\n";
  for (size_t at = 0; at < lines.size();) {
    const size_t end = std::min(lines.find('\n', at), lines.size());
    std::string_view line = lines.substr(at, end - at);
    if (line.starts_with("  ")) line.remove_prefix(2);
    out += plain(line) + "\n";
    at = end + 1;
  }
  out += ".RE\n.fi\n";
}

void append_option(std::string& out, const Option& option) {
  out += ".TP\n";
  if (option.letter) out += bold(std::string("-") + option.letter) + ", ";
  out += bold(std::string("--") + option.name);
  if (option.value_name) {
    out += (option.value_name[0] == '[' ? "" : " ") + synopsis_text(option.value_name);
  }
  out += "\n" + plain(option.help) + "\n";
}

void append_command(std::string& out, const Command& command) {
  out += ".SS " + plain(std::string("krz ") + command.name) + "\n";
  out +=
      bold(std::string("krz ") + command.name) + " " + synopsis_text(command.synopsis) + "\n.PP\n";
  out += plain(command.summary) + "\n";
  for (const Option& option : options_of(command)) append_option(out, option);
  append_example(out, command.examples);
}

/// What holds for every command. Lines that begin with a dot are requests.
constexpr char kCommon[] = R"man(.SH TRACKS
A track is named by its place (\fB3\fR), its number (\fBid=5\fR), its kind (\fBvideo\fR, \fBsound:1\fR, \fBtext:2\fR, \fBtmcd:1\fR), by
a reference that leads to it (\fBref:chap\fR), or \fBall\fR.
.SH TIMES
Seconds (\fB12.5\fR), \fB00:01:30.000\fR, units of the movie (\fB1500u\fR), a fraction (\fB1500/600\fR), a picture of the first video
track (\fBframe:240\fR), a time code (\fBtc:01:00:00;00\fR), \fBend\fR and \fBend\-2.0\fR.
A range is two of them with a hyphen between, as in \fB10\-20\fR.
.SH CHANGING A FILE
A verb that changes a movie needs \fB\-i\fR, which changes the file itself, or \fB\-o\fR \fIOUT\fR, which leaves it alone and writes
another; \fB\-n\fR shows what would change and writes nothing.
Media data is neither moved nor encoded again.
What was changed with \fB\-i\fR can be taken back with \fBkrz undo\fR.
.SH EXIT STATUS
.TP
.B 0
Done.
.TP
.B 1
The work failed; the file is unchanged.
.TP
.B 2
Wrong usage.
.TP
.B 3
The input cannot be read, or is not supported.
.TP
.B 4
Refused, because data would be lost; \fB\-\-allow\-loss\fR where a command has it.
.TP
.B 5
Not written; the original is intact.
.TP
.B 6
Of several files, some failed.
.PP
A script's own
.B Quit
passes its number on.
.SH ENVIRONMENT
.TP
.B NO_COLOR
When it is set to anything, nothing is coloured.
.TP
.B KRZ_FRAMEWORKS
Another folder for the bundles that know fonts and draw.
)man";

void append_see_also(std::string& out, const Noun* but) {
  out += ".SH SEE ALSO\n";
  std::string list = but ? "\\fBkrz\\fR(1)" : "";
  for (const Noun& noun : nouns()) {
    if (&noun == but) continue;
    list += (list.empty() ? "" : ",\n") + bold(std::string("krz-") + noun.name) + "(1)";
  }
  out += list + "\n";
}

}  // namespace

std::string man_page() {
  std::string out =
      heading("krz", "look inside QuickTime-style movies, edit them, run scripts over them");
  out +=
      ".SH SYNOPSIS\n.B krz\n\\fICOMMAND\\fR [\\fIARGUMENT\\fR\\[u2026]]\n.br\n.B krz "
      "help\n[\\fICOMMAND\\fR]\n";
  out += ".SH DESCRIPTION\n";
  out +=
      "What is in .mov, .mp4, .m4a and .m4v files: tracks, edits, chapters, metadata, time codes, "
      "samples, sound, clip masks. "
      "Edits change a few bytes of a file and can be taken back; nothing is encoded again.\n";
  out += "Begin with\n.B krz demo\nor\n.BR \"krz info clip.mov\" .\n.SH COMMANDS\n";
  for (const Command& command : commands()) {
    if (std::string_view(command.name).find(' ') == std::string_view::npos)
      append_command(out, command);
  }
  out += ".SH NOUNS\nEach has a page of its own.\n";
  for (const Noun& noun : nouns()) {
    std::string verbs;
    for (const Command* verb : verbs_of(noun)) {
      verbs += (verbs.empty() ? "" : ", ") +
               std::string(verb->name).substr(std::string_view(noun.name).size() + 1);
    }
    out += ".TP\n" + bold(std::string("krz ") + noun.name) + "\n" + plain(noun.summary) + ": " +
           plain(verbs) + "\n";
  }
  out += kCommon;
  append_see_also(out, nullptr);
  return out;
}

std::string man_page(const Noun& noun) {
  std::string out = heading(std::string("krz-") + noun.name, noun.summary);
  out += ".SH SYNOPSIS\n";
  bool is_first = true;
  for (const Command* verb : verbs_of(noun)) {
    if (!is_first) out += ".br\n";
    is_first = false;
    out += bold(std::string("krz ") + verb->name) + " " + synopsis_text(verb->synopsis) + "\n";
  }
  out += ".SH VERBS\n";
  for (const Command* verb : verbs_of(noun)) append_command(out, *verb);
  out += kCommon;
  append_see_also(out, &noun);
  return out;
}

}  // namespace cli
