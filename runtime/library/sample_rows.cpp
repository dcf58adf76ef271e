#include "library/sample_rows.h"

#include <charconv>

namespace krz {

void SampleRows::begin() {
  switch (form_) {
    case Form::kText:
      text_ += "    number           time   duration       size  sync  description\n";
      break;
    case Form::kCSV:
      text_ += "number,time,duration,size,sync,description\n";
      break;
    case Form::kJSON:
      text_ += '[';
      break;
  }
}

void SampleRows::end() {
  if (form_ == Form::kJSON) text_ += is_first_ ? "]\n" : "\n]\n";
}

void SampleRows::add(const ToolboxSample& sample) {
  switch (form_) {
    case Form::kText:
      padded(sample.number, 10);
      padded(sample.time, 15);
      padded(sample.duration, 11);
      padded(sample.size, 11);
      text_ += sample.isSync ? "  yes " : "  no  ";
      padded(sample.description, 13);
      text_ += '\n';
      break;
    case Form::kCSV:
      number(sample.number);
      for (const int64_t value : {sample.time, sample.duration, int64_t{sample.size}}) {
        text_ += ',';
        number(value);
      }
      text_ += sample.isSync ? ",1," : ",0,";
      number(sample.description);
      text_ += '\n';
      break;
    case Form::kJSON:
      text_ += is_first_ ? "\n  { \"number\": " : ",\n  { \"number\": ";
      number(sample.number);
      field(", \"time\": ", sample.time);
      field(", \"duration\": ", sample.duration);
      field(", \"size\": ", sample.size);
      text_ += sample.isSync ? ", \"sync\": true" : ", \"sync\": false";
      field(", \"description\": ", sample.description);
      text_ += " }";
      break;
  }
  is_first_ = false;
}

void SampleRows::number(int64_t value) {
  char digits[20];
  const auto [end, error] = std::to_chars(digits, digits + sizeof digits, value);
  text_.append(digits, static_cast<size_t>(end - digits));
}

void SampleRows::padded(int64_t value, size_t width) {
  char digits[20];
  const auto [end, error] = std::to_chars(digits, digits + sizeof digits, value);
  const auto count = static_cast<size_t>(end - digits);
  if (count < width) text_.append(width - count, ' ');
  text_.append(digits, count);
}

void SampleRows::field(std::string_view name, int64_t value) {
  text_ += name;
  number(value);
}

}  // namespace krz
