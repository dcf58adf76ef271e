// Samples as lines of text, in the forms that people and programs read.
#pragma once

#include <Toolbox/Toolbox.h>

#include <string>
#include <string_view>

namespace krz {

/// Makes the lines. Numbers are written digit by digit: a movie has millions of them, and formatted
/// printing takes ten times as long.
class SampleRows {
 public:
  enum class Form { kText, kCSV, kJSON };

  explicit SampleRows(Form form) : form_(form) {}

  /// Before the first row, and behind the last one.
  void begin();
  void end();

  void add(const ToolboxSample& sample);

  /// What there is so far; the caller clears it.
  std::string& text() { return text_; }

 private:
  void number(int64_t value);
  void padded(int64_t value, size_t width);
  void field(std::string_view name, int64_t value);

  Form form_;
  std::string text_;
  bool is_first_ = true;
};

}  // namespace krz
