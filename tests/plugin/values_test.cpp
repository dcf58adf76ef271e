// Values on their way between host, module and toolbox.
#include <cstring>

#include "plugin/host/audio_layout.h"
#include "plugin/host/encodings.h"
#include "plugin/host/exceptions.h"
#include "plugin/host/memory.h"
#include "plugin/host/strings.h"
#include "plugin/host/text_view.h"
#include "plugin/plugin_test.h"

namespace {

using fake_host::bytes_of;
using fake_host::host;
using fake_host::make_string;
using namespace std::string_literals;

constexpr double kVersions[] = {0.0, 2011.0, 2012.0, 2013.0, 2015.0};

/// A string that unlocks itself.
class Owned {
 public:
  explicit Owned(REALstring string) : string_(string) {}
  Owned(std::string_view bytes, uint32_t encoding) : string_(make_string(bytes, encoding)) {}
  ~Owned() {
    if (string_) fake_host::unlock(string_);
  }
  Owned(const Owned&) = delete;
  Owned& operator=(const Owned&) = delete;
  operator REALstring() const { return string_; }
  std::string bytes() const { return bytes_of(string_); }
  uint32_t encoding() const { return fake_host::encoding_of(string_); }

 private:
  REALstring string_;
};

std::string utf16(std::u16string_view text) {
  return {reinterpret_cast<const char*>(text.data()), text.size() * 2};
}

using Codes = PluginTest;

TEST_F(Codes, BecomeStringsOfFourBytes) {
  const Owned ascii(krz::REALBuildOSTypeString(VideoMediaType));
  EXPECT_EQ(ascii.bytes(), "vide");
  EXPECT_EQ(ascii.encoding(), krz::kASCII);
  for (const OSType code : {0xA96E616Du, 0x61A96E61u, 0x616EA961u, 0x616E61A9u}) {
    const Owned sign(krz::REALBuildOSTypeString(code));
    EXPECT_EQ(sign.encoding(), krz::kMacRoman) << std::hex << code;
  }
}

TEST_F(Codes, ComeFromTextsAndShortTextsLoseTheirFirstLetters) {
  const struct {
    std::string text;
    OSType code;
  } cases[] = {{"vide", 0x76696465},    {"video", 0x76696465}, {"abc", 0x20626300},
               {"ab", 0x20200000},      {"a", 0x20202000},     {"", 0x20202020},
               {"\xA9nam"s, 0xA96E616D}};
  for (const double version : kVersions) {
    load_into_version(version);
    for (const auto& one : cases) {
      SCOPED_TRACE(one.text);
      const Owned text(one.text, krz::kMacRoman);
      EXPECT_EQ(krz::REALstringToOSType(text), one.code) << "host " << version;
    }
    EXPECT_EQ(krz::REALstringToOSType(nullptr), 0x20202020u);
  }
  const Owned utf8(
      "\xC2\xA9"
      "ART",
      krz::kUTF8);
  EXPECT_EQ(krz::REALstringToOSType(utf8), 0xA9415254u) << "the MacRoman form counts";
}

using BuiltStrings = PluginTest;

TEST_F(BuiltStrings, KeepBytesAndEncodingSaveForWideOnes) {
  const Owned raw(krz::REALBuildUnicodeString("a\0\xFF", 3, kEncodingUnknown));
  EXPECT_EQ(raw.bytes(), "a\0\xFF"s);
  EXPECT_EQ(raw.encoding(), kEncodingUnknown);

  const std::string wide = utf16(u"h\u00E9");
  const Owned from_utf16(
      krz::REALBuildUnicodeString(wide.data(), static_cast<int64_t>(wide.size()), krz::kUTF16));
  EXPECT_EQ(from_utf16.bytes(), "h\xC3\xA9");
  EXPECT_EQ(from_utf16.encoding(), krz::kUTF8);

  const Owned halves(krz::REALBuildUnicodeString("name", 4, 0, krz::kASCII));
  EXPECT_EQ(halves.bytes(), "name");
  EXPECT_EQ(halves.encoding(), krz::kASCII);
}

TEST_F(BuiltStrings, OfUtf32KeepTheLowHalfOfEachCharacter) {
  for (const size_t count : {1u, 199u, 200u, 5000u}) {
    SCOPED_TRACE(count);
    const std::u32string text(count, U'\x100E9');
    const Owned string(
        krz::REALBuildUnicodeString(text.data(), static_cast<int64_t>(count * 4), krz::kUTF32));
    std::string expected;
    for (size_t i = 0; i < count; ++i) expected += "\xC3\xA9";
    EXPECT_EQ(string.bytes(), expected);
    EXPECT_EQ(string.encoding(), krz::kUTF8);
  }
}

TEST_F(BuiltStrings, AreNilWithoutBytes) {
  for (const uint32_t encoding : {krz::kASCII, krz::kUTF16, krz::kUTF32}) {
    EXPECT_EQ(krz::REALBuildUnicodeString(nullptr, 4, encoding), nullptr);
    EXPECT_EQ(krz::REALBuildUnicodeString("text", int64_t{0}, encoding), nullptr);
    EXPECT_EQ(krz::REALBuildUnicodeString("text", int64_t{-4}, encoding), nullptr);
    EXPECT_EQ(krz::REALBuildUnicodeString("text", int64_t{0x7FFFFFFF}, encoding), nullptr);
    EXPECT_EQ(krz::REALBuildUnicodeString("text", 4, 1, encoding), nullptr)
        << "4 GiB and four bytes";
  }
}

using Views = PluginTest;

TEST_F(Views, GiveTextInThreeEncodingsOnEveryHost) {
  for (const double version : kVersions) {
    SCOPED_TRACE(version);
    load_into_version(version);
    const Owned string("caf\x8E", krz::kMacRoman);
    const krz::rbText text(string);
    EXPECT_EQ(std::u16string(reinterpret_cast<const char16_t*>(text.GetUTF16()),
                             static_cast<size_t>(text.LengthUTF16())),
              u"caf\u00E9");
    EXPECT_EQ(std::string(text.GetUTF8(), static_cast<size_t>(text.LengthUTF8())), "caf\xC3\xA9");
    EXPECT_EQ(std::string(text.GetMacRoman(), static_cast<size_t>(text.LengthMacRoman())),
              "caf\x8E");
  }
}

TEST_F(Views, AreEmptyAndNeverNull) {
  for (const double version : kVersions) {
    load_into_version(version);
    const Owned empty("", krz::kUTF8);
    const Owned empty_bytes("", kEncodingUnknown);
    for (const REALstring string : {REALstring{}, REALstring(empty), REALstring(empty_bytes)}) {
      const krz::rbText text(string);
      EXPECT_EQ(text.LengthUTF16() + text.LengthUTF8() + text.LengthMacRoman(), 0);
      ASSERT_TRUE(text.GetUTF16() && text.GetUTF8() && text.GetMacRoman());
      EXPECT_EQ(*text.GetUTF16(), 0);
      EXPECT_EQ(*text.GetUTF8(), 0);
      EXPECT_EQ(krz::rbData(string).size(), 0);
      EXPECT_EQ(krz::rbData(string).bytes(), nullptr);
    }
  }
}

TEST_F(Views, TakeBytesOfUnknownEncodingAsMacRoman) {
  for (const double version : kVersions) {
    load_into_version(version);
    const Owned string("caf\x8E", kEncodingUnknown);
    const krz::rbText text(string);
    EXPECT_EQ(std::string(text.GetUTF8(), static_cast<size_t>(text.LengthUTF8())), "caf\xC3\xA9")
        << version;
  }
}

TEST_F(Views, LeaveOutOneByteOrderMarkOfEachKind) {
  const struct {
    std::u16string text;
    std::u16string seen;
  } cases[] = {{u"\uFEFFab", u"ab"},
               {u"\uFFFEab", u"ab"},
               {u"\uFEFF\uFFFEab", u"ab"},
               {u"\uFEFF\uFEFFab", u"\uFEFFab"},
               {u"\uFFFE\uFEFFab", u"\uFEFFab"},
               {u"\uFEFF", u""},
               {u"a\uFEFF", u"a\uFEFF"}};
  for (const double version : {2011.0, 2015.0}) {
    load_into_version(version);
    for (const auto& one : cases) {
      const Owned string(utf16(one.text), krz::kUTF16);
      const krz::rbText text(string);
      ASSERT_EQ(text.LengthUTF16(), static_cast<int32_t>(one.seen.size())) << version;
      EXPECT_EQ(std::memcmp(text.GetUTF16(), one.seen.data(), one.seen.size() * 2), 0);
      EXPECT_EQ(text.LengthUTF16(), static_cast<int32_t>(one.seen.size())) << "asked twice";
    }
  }
}

TEST_F(Views, ShowBytesAsStoredAndKeepABlockLocked) {
  for (const double version : kVersions) {
    load_into_version(version);
    const Owned string("\xFF\0x"s, krz::kUTF8);
    const krz::rbData data(string);
    EXPECT_EQ(std::string(static_cast<const char*>(data.bytes()), static_cast<size_t>(data.size())),
              "\xFF\0x"s);
  }
  REALmemoryBlockStruct* block = fake_host::make_memory_block("abcdef");
  {
    const krz::rbData all(block);
    const krz::rbData part(block, 2, 3);
    EXPECT_EQ(fake_host::locks_of(fake_host::as_object(block)), 3);
    EXPECT_EQ(all.size(), 6);
    EXPECT_EQ(std::string(static_cast<const char*>(part.bytes()), static_cast<size_t>(part.size())),
              "cde");
    EXPECT_EQ(krz::rbData(block, 4).size(), 2) << "never past the end";
  }
  EXPECT_EQ(fake_host::locks_of(fake_host::as_object(block)), 1);
  fake_host::unlock(fake_host::as_object(block));
}

using Copies = PluginTest;

TEST_F(Copies, PascalStringsHold255BytesOfMacRoman) {
  Str255 out;
  const Owned long_text(std::string(300, 'x'), krz::kMacRoman);
  krz::PutSystemString(out, long_text);
  EXPECT_EQ(out[0], 255);
  EXPECT_EQ(out[255], 'x');
  const Owned accented("\xC3\xA9!", krz::kUTF8);
  krz::PutSystemString(out, accented);
  EXPECT_EQ(std::string(reinterpret_cast<char*>(out), 3), "\2\x8E!");
  krz::PutSystemString(out, nullptr);
  EXPECT_EQ(out[0], 0);
}

TEST_F(Copies, BetweenHandlesStringsAndBlocks) {
  const Owned string("a\0b"s, krz::kUTF8);
  REALmemoryBlockStruct* block = fake_host::make_memory_block("a\0b"s);
  for (const Handle raw :
       {krz::NewHandleWithString(string, false), krz::NewHandleWithMemory(block, false)}) {
    const krz::OwnedHandle handle(raw);
    ASSERT_TRUE(handle);
    const Owned copy(krz::HandleToString(handle.get(), krz::kASCII));
    EXPECT_EQ(copy.bytes(), "a\0b"s);
    EXPECT_EQ(copy.encoding(), krz::kASCII);
    REALmemoryBlockStruct* block_copy = krz::HandleToMemory(handle.get());
    EXPECT_EQ(bytes_of(block_copy), "a\0b"s);
    fake_host::unlock(fake_host::as_object(block_copy));
  }
  fake_host::unlock(fake_host::as_object(block));
}

TEST_F(Copies, OfNothingAreNilOrEmptyAsAsked) {
  const Owned empty("", krz::kUTF8);
  REALmemoryBlockStruct* block = fake_host::make_memory_block("");
  EXPECT_EQ(krz::NewHandleWithString(nullptr, false), nullptr);
  EXPECT_EQ(krz::NewHandleWithString(empty, false), nullptr);
  EXPECT_EQ(krz::NewHandleWithMemory(block, false), nullptr);
  for (const Handle raw :
       {krz::NewHandleWithString(empty, true), krz::NewHandleWithMemory(block, true),
        krz::NewHandleWithMemory(nullptr, true)}) {
    const krz::OwnedHandle handle(raw);
    ASSERT_TRUE(handle);
    EXPECT_EQ(krz::HandleToString(handle.get(), 0), nullptr) << "nil, not an empty string";
    EXPECT_EQ(krz::HandleToMemory(handle.get()), nullptr);
  }
  EXPECT_EQ(krz::HandleToString(nullptr, 0), nullptr);
  EXPECT_EQ(krz::HandleToMemory(nullptr), nullptr);
  fake_host::unlock(fake_host::as_object(block));
}

TEST_F(Copies, MemoryIsZeroedAndBounded) {
  for (const int64_t size : {int64_t{-1}, int64_t{0}, int64_t{0x80000000}}) {
    EXPECT_EQ(krz::AllocateClearMemory(size), nullptr) << size;
  }
  const krz::Memory memory(krz::AllocateClearMemory(64));
  ASSERT_TRUE(memory);
  auto* bytes = static_cast<char*>(memory.get());
  EXPECT_EQ(std::string(bytes, 64), std::string(64, '\0'));
  std::memset(bytes, 'x', 64);
  krz::ClearMemory(bytes, 63);
  EXPECT_EQ(bytes[62], 0);
  EXPECT_EQ(bytes[63], 'x');
}

using Exceptions = PluginTest;

TEST_F(Exceptions, CarryTheirMessage) {
  krz::RaiseException("NilObjectException", "memoryblock is nil", krz::kUTF16);
  krz::RaiseException("NilObjectException", nullptr, krz::kASCII);
  krz::RaiseException("NoSuchException", "still told", krz::kASCII);
  ASSERT_EQ(host().raised.size(), 3u);
  EXPECT_EQ(host().raised[0].class_name, "NilObjectException");
  EXPECT_EQ(host().raised[0].message, "memoryblock is nil") << "ASCII, whatever encoding is named";
  EXPECT_FALSE(host().raised[1].has_message);
  EXPECT_EQ(host().raised[2].class_name, "RuntimeException");
  EXPECT_EQ(host().raised[2].message, "still told");
}

TEST_F(Exceptions, AreNotRaisedByAHostThatHasNone) {
  host().foreign_classes.clear();
  krz::RaiseException("NilObjectException", "lost", krz::kASCII);
  EXPECT_TRUE(host().raised.empty());
}

TEST_F(Exceptions, TellHowLargeABlockCouldNotBeMade) {
  EXPECT_EQ(krz::REALBuildMemoryblock(nullptr, 5), nullptr);
  EXPECT_EQ(krz::REALBuildMemoryblock("text", 0), nullptr);
  EXPECT_TRUE(host().raised.empty());
  host().memory_block_limit = 3;
  EXPECT_EQ(krz::REALBuildMemoryblock("text", 4), nullptr);
  EXPECT_EQ(krz::REALBuildMemoryblock("text", 0x7FFFFFFFFFFF), nullptr);
  ASSERT_EQ(host().raised.size(), 2u);
  EXPECT_EQ(host().raised[0].class_name, "OutOfMemoryException");
  EXPECT_EQ(host().raised[0].message, "Failed to allocate a memoryblock with 4 bytes in size.");
  EXPECT_EQ(host().raised[1].message,
            "Failed to allocate a memoryblock with 140737488355327 bytes in size.");
}

class AudioLayouts : public PluginTest {
 protected:
  AudioLayouts() = default;
  void SetUp() override {
    PluginTest::SetUp();
    host().foreign_classes["QTAudioChannelLayoutKRZ"] = sizeof(REALaudioChannelLayoutData);
    host().foreign_classes["QTAudioChannelDescriptionKRZ"] =
        sizeof(REALaudioChannelDescriptionData);
  }

  static REALaudioChannelLayoutData& data(REALobject layout) {
    return *reinterpret_cast<REALaudioChannelLayoutData*>(fake_host::data_of(layout));
  }

  /// What the class's own destructor would do.
  static void unlock_layout(REALobject layout) {
    for (const REALobject description : data(layout).descriptions) {
      if (description) fake_host::unlock(description);
    }
    fake_host::unlock(layout);
  }

  /// A record whose descriptions are labelled 1, 2, 3 and so on, that claims `count` of them.
  static std::vector<char> record(uint32_t descriptions, uint32_t count) {
    std::vector<char> bytes(12 + size_t{descriptions} * 20);
    const uint32_t head[3] = {101, 202, count};
    std::memcpy(bytes.data(), head, sizeof head);
    for (uint32_t i = 0; i < descriptions; ++i) {
      AudioChannelDescription one = {i + 1, 7, {0.5F, -1.25F, static_cast<float>(i)}};
      std::memcpy(bytes.data() + 12 + size_t{i} * 20, &one, 20);
    }
    return bytes;
  }
};

TEST_F(AudioLayouts, GoThereAndBack) {
  std::vector<char> bytes = record(3, 3);
  const REALobject layout =
      krz::NewQTAudioChannelLayoutKRZ(reinterpret_cast<AudioChannelLayout*>(bytes.data()));
  ASSERT_TRUE(layout);
  EXPECT_EQ(data(layout).tag, 101u);
  EXPECT_EQ(data(layout).bitmap, 202u);
  EXPECT_EQ(data(layout).description_count, 3);
  const auto* second = reinterpret_cast<REALaudioChannelDescriptionData*>(
      fake_host::data_of(data(layout).descriptions[1]));
  EXPECT_EQ(second->label, 2u);
  EXPECT_EQ(second->coordinates[1], -1.25);

  AudioChannelLayout* back = krz::GetQTAudioChannelLayout(layout);
  ASSERT_TRUE(back);
  EXPECT_EQ(std::memcmp(back, bytes.data(), bytes.size()), 0);
  krz::FreeMemoryNow(back);
  unlock_layout(layout);
}

TEST_F(AudioLayouts, HoldAtMost64Descriptions) {
  std::vector<char> bytes = record(100, 100);
  const REALobject layout =
      krz::NewQTAudioChannelLayoutKRZ(reinterpret_cast<AudioChannelLayout*>(bytes.data()));
  EXPECT_EQ(data(layout).description_count, 100) << "the count is taken over as it stands";
  AudioChannelLayout* back = krz::GetQTAudioChannelLayout(layout);
  EXPECT_EQ(back->mNumberChannelDescriptions, 64u);
  krz::FreeMemoryNow(back);
  unlock_layout(layout);
}

TEST_F(AudioLayouts, OfNegativeCountsAndNilElementsAreZeroed) {
  std::vector<char> bytes = record(0, 0xFFFFFFFF);
  const REALobject layout =
      krz::NewQTAudioChannelLayoutKRZ(reinterpret_cast<AudioChannelLayout*>(bytes.data()));
  EXPECT_EQ(fake_host::live_objects(), 1);
  AudioChannelLayout* none = krz::GetQTAudioChannelLayout(layout);
  EXPECT_EQ(none->mNumberChannelDescriptions, 0u);
  krz::FreeMemoryNow(none);
  data(layout).description_count = 2;
  AudioChannelLayout* back = krz::GetQTAudioChannelLayout(layout);
  EXPECT_EQ(back->mNumberChannelDescriptions, 2u);
  EXPECT_EQ(back->mChannelDescriptions[0].mChannelLabel, 0u);
  krz::FreeMemoryNow(back);
  unlock_layout(layout);
}

TEST_F(AudioLayouts, AreNilWithoutTheirClassOrRecord) {
  EXPECT_EQ(krz::NewQTAudioChannelLayoutKRZ(nullptr), nullptr);
  EXPECT_EQ(krz::GetQTAudioChannelLayout(nullptr), nullptr);
  host().foreign_classes.erase("QTAudioChannelLayoutKRZ");
  std::vector<char> bytes = record(1, 1);
  EXPECT_EQ(krz::NewQTAudioChannelLayoutKRZ(reinterpret_cast<AudioChannelLayout*>(bytes.data())),
            nullptr);
}

}  // namespace
