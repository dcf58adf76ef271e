// What the built module registers, as the real runtime understands it.
#include <gtest/gtest.h>

#include "integration/whole_system.h"
#include "registry/class_info.h"
#include "registry/registry.h"

namespace krz::test {
namespace {

void expect_defined(const Type& type, const std::string& where) {
  if (type.class_info != nullptr) {
    EXPECT_TRUE(type.class_info->is_defined()) << where << ": " << type.class_info->name();
  }
}

void expect_types_defined(std::span<const MethodInfo* const> methods) {
  for (const MethodInfo* method : methods) {
    const std::string declaration(method->declaration);
    expect_defined(method->signature.result, declaration);
    for (const Parameter& parameter : method->signature.parameters) {
      expect_defined(parameter.type, declaration);
    }
  }
}

TEST(Registration, EveryDeclarationIsUnderstoodAndEveryTypeInItIsDefined) {
  Runtime runtime({});
  ASSERT_EQ(runtime.load_module(kModulePath), "");
  for (const ClassInfo* one : runtime.registry().classes()) {
    for (const std::string& name : one->member_names()) {
      const auto methods = one->find_methods(name);
      const auto shared_methods = one->find_shared_methods(name);
      const PropertyInfo* const property = one->find_property(name);
      expect_types_defined(methods);
      expect_types_defined(shared_methods);
      if (property) expect_defined(property->type, one->name() + "." + name);
      EXPECT_TRUE(!methods.empty() || !shared_methods.empty() || property ||
                  one->find_constant(name))
          << one->name() << "." << name;
    }
  }
  EXPECT_EQ(runtime.registry().declaration_errors(), std::vector<std::string>());
}

TEST(Registration, ClassesComeInTheirOrderBelowTheirSuperclasses) {
  Runtime runtime({});
  const size_t before = runtime.registry().classes().size();
  ASSERT_EQ(runtime.load_module(kModulePath), "");
  const auto classes = runtime.registry().classes();
  std::string seen;
  for (size_t i = before; i < classes.size(); ++i) {
    seen += classes[i]->name();
    if (const ClassInfo* parent = classes[i]->superclass()) seen += " < " + parent->name();
    seen += '\n';
    EXPECT_EQ(classes[i]->definition()->data_size % 16, 0) << classes[i]->name();
  }
  EXPECT_EQ(seen,
            "QTUserDataKRZ\n"
            "QTChapterDataKRZ\n"
            "QTTimeCodeCreationParametersKRZ\n"
            "QTSampleDescriptionKRZ\n"
            "QTVideoSampleDescriptionKRZ < QTSampleDescriptionKRZ\n"
            "QTSoundSampleDescriptionKRZ < QTSampleDescriptionKRZ\n"
            "QTSpriteSampleDescriptionKRZ < QTSampleDescriptionKRZ\n"
            "QTMusicSampleDescriptionKRZ < QTSampleDescriptionKRZ\n"
            "QTThreeDeeSampleDescriptionKRZ < QTSampleDescriptionKRZ\n"
            "QTFlashSampleDescriptionKRZ < QTSampleDescriptionKRZ\n"
            "QTTextSampleDescriptionKRZ < QTSampleDescriptionKRZ\n"
            "QTTrackKRZ\n"
            "QTChapterTrackKRZ < QTTrackKRZ\n"
            "QTTimeCodeKRZ\n"
            "QTMetaDataKRZ\n"
            "QTMetaDataItemKRZ\n");
  const ClassInfo* const movie = runtime.registry().find_class("Movie");
  ASSERT_TRUE(movie);
  EXPECT_EQ(movie->extensions().size(), 1u);
  EXPECT_FALSE(movie->find_methods("trackcountkrz").empty());
}

}  // namespace
}  // namespace krz::test
