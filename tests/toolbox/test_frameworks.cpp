// The framework bundles: found, opened and resolved as a caller does it, and the fonts behind them.
#include <ApplicationServices/ApplicationServices.h>
#include <CoreFoundation/CoreFoundation.h>
#include <gtest/gtest.h>

#include <cstring>
#include <set>
#include <string>

#include "graphics/classic_fonts.h"

namespace toolbox::testing {
namespace {

/// A reference that is released with the test.
template <class Reference>
class Owned {
 public:
  explicit Owned(Reference reference) : reference_(reference) {}
  ~Owned() { CFRelease(reference_); }
  Owned(const Owned&) = delete;
  Owned& operator=(const Owned&) = delete;
  operator Reference() const { return reference_; }  // NOLINT(google-explicit-constructor)

 private:
  Reference reference_;
};

CFStringRef string(const char* text) {
  return CFStringCreateWithCString(nullptr, text, kCFStringEncodingUTF8);
}

class Frameworks : public ::testing::Test {
 protected:
  void SetUp() override {
    FSRef folder = {};
    ASSERT_EQ(noErr, FSFindFolder(kSystemDiskDomain, kFrameworksFolderType, true, &folder));
    const Owned url(CFURLCreateFromFSRef(nullptr, &folder));
    const auto open = [&](const char* name) {
      const Owned component(string(name));
      const Owned bundle_url(CFURLCreateCopyAppendingPathComponent(nullptr, url, component, false));
      return CFBundleCreate(nullptr, bundle_url);
    };
    application_services_ = open("ApplicationServices.framework");
    carbon_ = open("Carbon.framework");
    EXPECT_EQ(nullptr, open("Missing.framework"));
  }
  void TearDown() override {
    CFRelease(application_services_);
    CFRelease(carbon_);
  }

  template <class Function>
  static Function* find(CFBundleRef bundle, Function*, const char* name) {
    EXPECT_TRUE(CFBundleLoadExecutable(bundle));
    const Owned text(string(name));
    return reinterpret_cast<Function*>(CFBundleGetFunctionPointerForName(bundle, text));
  }

  SInt16 number(const std::string& name) {
    auto* const call = find(carbon_, static_cast<decltype(&GetFNum)>(nullptr), "GetFNum");
    Str255 text = {static_cast<UInt8>(name.size())};
    std::memcpy(text + 1, name.data(), name.size());
    SInt16 found = -1;
    call(text, &found);
    return found;
  }
  std::string name(SInt16 number) {
    auto* const call = find(carbon_, static_cast<decltype(&GetFontName)>(nullptr), "GetFontName");
    Str255 text = {};
    call(number, text);
    return {reinterpret_cast<const char*>(text + 1), text[0]};
  }
  FontInfo measured(SInt16 font, SInt16 face, SInt16 size) {
    const auto set = [&](const char* routine, SInt16 value) {
      find(application_services_, static_cast<void (*)(SInt16)>(nullptr), routine)(value);
    };
    set("TextFont", font);
    set("TextFace", face);
    set("TextSize", size);
    FontInfo info = {-1, -1, -1, -1};
    find(application_services_, static_cast<decltype(&GetFontInfo)>(nullptr), "GetFontInfo")(&info);
    return info;
  }

  CFBundleRef application_services_ = nullptr;
  CFBundleRef carbon_ = nullptr;
};

TEST_F(Frameworks, HoldOnlyTheirOwnRoutines) {
  const Owned name(string("GetFNum"));
  EXPECT_EQ(nullptr, CFBundleGetFunctionPointerForName(application_services_, name))
      << "before its code is loaded";
  EXPECT_NE(nullptr, find(carbon_, static_cast<void (*)()>(nullptr), "GetFNum"));
  EXPECT_EQ(nullptr, find(application_services_, static_cast<void (*)()>(nullptr), "GetFNum"));
  EXPECT_EQ(nullptr, find(carbon_, static_cast<void (*)()>(nullptr), "NoSuchRoutine"));
  EXPECT_TRUE(CFBundleLoadExecutable(carbon_)) << "a second time, too";
}

TEST_F(Frameworks, AnswerBadReferencesWithNothing) {
  const auto made_up = reinterpret_cast<CFURLRef>(uintptr_t{0x12345});
  const Owned text(string("x"));
  EXPECT_EQ(nullptr, CFBundleCreate(nullptr, made_up));
  EXPECT_EQ(nullptr, CFBundleCreate(nullptr, reinterpret_cast<CFURLRef>(CFStringRef(text))));
  EXPECT_EQ(nullptr, CFURLCreateCopyAppendingPathComponent(nullptr, nullptr, text, false));
  EXPECT_EQ(nullptr, CFURLCreateFromFSRef(nullptr, nullptr));
  EXPECT_FALSE(CFBundleLoadExecutable(nullptr));
  EXPECT_EQ(nullptr, CFBundleGetFunctionPointerForName(carbon_, nullptr));
  EXPECT_EQ(nullptr, CFStringCreateWithCString(nullptr, "x", 0x500));
  CFRelease(nullptr);
  const CFStringRef stale = string("x");
  CFRelease(stale);
  CFRelease(stale);
  FSRef ref = {};
  EXPECT_EQ(fnfErr, FSFindFolder(kSystemDiskDomain, 0x78787878, true, &ref));
  EXPECT_EQ(paramErr, FSFindFolder(kSystemDiskDomain, kFrameworksFolderType, true, nullptr));
}

TEST_F(Frameworks, NumberTheirFontsBothWays) {
  for (const ClassicFont& font : kClassicFonts) {
    EXPECT_EQ(font.name, name(font.number));
    EXPECT_EQ(font.number == kApplicationFont ? 3 : font.number, number(std::string(font.name)));
  }
  EXPECT_EQ(21, number("hELVETICA"));
  EXPECT_EQ(0, number("no such font"));
  EXPECT_EQ(0, number(""));
  EXPECT_EQ("", name(-1));
  std::set<std::string> installed;
  for (SInt16 i = 25; i < 20000; ++i) {
    const std::string one = name(i);
    if (one.empty()) continue;
    EXPECT_GE(i, 256);
    EXPECT_LT(i, 16384);
    EXPECT_TRUE(installed.insert(one).second) << one << " has two numbers";
    EXPECT_EQ(i, number(one)) << one;
  }
  EXPECT_FALSE(installed.empty()) << "no font is installed on this machine";
}

TEST_F(Frameworks, MeasureFonts) {
  const FontInfo plain = measured(3, 0, 12);
  EXPECT_NEAR(12, plain.ascent, 2);
  EXPECT_NEAR(3, plain.descent, 2);
  EXPECT_GT(plain.widMax, 5);
  EXPECT_GE(plain.leading, 0);
  const FontInfo by_default = measured(3, 0, 0);
  EXPECT_EQ(plain.ascent, by_default.ascent);
  EXPECT_NEAR(4 * plain.ascent, measured(3, 0, 48).ascent, 4);
  const FontInfo narrow = measured(3, 0x20, 12), wide = measured(3, 0x40, 12);
  EXPECT_EQ(plain.widMax - 1, narrow.widMax);
  EXPECT_EQ(plain.widMax + 1, wide.widMax);
  EXPECT_EQ(plain.ascent, measured(-77, 0, 12).ascent) << "an unknown font is the application font";
  EXPECT_GT(measured(3, 0, 32767).ascent, 20000);
  EXPECT_GT(measured(0, 3, -5).ascent, 0);
}

}  // namespace
}  // namespace toolbox::testing
