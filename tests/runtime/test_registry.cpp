// Classes, subclasses and extensions: where their data lies, what their members are, and what is
// wrong with them.
#include "host_test.h"

namespace krz {
namespace {

std::string g_log;

template <char kLetter>
void note(REALobject) {
  g_log.push_back(kLetter);
}

template <char kLetter>
int32_t answer(REALobject) {
  return kLetter;
}

REALfunction function(void (*f)(REALobject)) { return reinterpret_cast<REALfunction>(f); }
REALfunction function(int32_t (*f)(REALobject)) { return reinterpret_cast<REALfunction>(f); }

REALclassDefinition definition(const char* name, const char* superclass, int32_t data_size) {
  REALclassDefinition result{};
  result.version = kPluginInterfaceVersion;
  result.name = name;
  result.superclass = superclass;
  result.data_size = data_size;
  return result;
}

using RegistryTest = HostTest;

TEST_F(RegistryTest, InstancesHoldTheDataOfTheirWholeChain) {
  REALclassDefinition base = definition("Base", nullptr, 12);
  REALclassDefinition middle = definition("Middle", "base", 0);
  REALclassDefinition top = definition("Top", "MIDDLE", 180);
  base.constructor = function(note<'b'>);
  base.destructor = function(note<'B'>);
  top.constructor = function(note<'t'>);
  top.destructor = function(note<'T'>);
  for (auto* each : {&base, &middle, &top}) registry().register_class(*each);

  const int32_t head = (sizeof(REALobjectStruct) + 15) / 16 * 16;
  EXPECT_EQ(base.host_slot, head);
  EXPECT_EQ(middle.host_slot, head + 16);
  EXPECT_EQ(top.host_slot, head + 16);
  EXPECT_EQ(registry().find_class("Top")->instance_size(), head + 16 + 192);

  g_log.clear();
  const REALobject object = create("top");
  for (int32_t i = head; i < head + 16 + 192; ++i) {
    ASSERT_EQ(reinterpret_cast<char*>(object)[i], 0) << "byte " << i;
  }
  EXPECT_TRUE(object->class_info->is_a(registry().find_class("Base")));
  EXPECT_FALSE(registry().find_class("Base")->is_a(object->class_info));
  unlock_object(object);
  EXPECT_EQ(g_log, "btTB") << "constructors run superclass first, destructors subclass first";
}

TEST_F(RegistryTest, MembersAreFoundWithoutRegardToCaseAndUpTheChain) {
  MethodEntry base_methods[] = {{function(answer<'1'>), nullptr, "One as integer", 0},
                                {function(answer<'2'>), nullptr, "Two as integer", 0}};
  MethodEntry top_methods[] = {{function(answer<'t'>), nullptr, "two as integer", 0},
                               {function(answer<'3'>), nullptr, "ONE(x as integer) as integer", 0}};
  ConstantEntry constants[] = {{"kLimit = 5", {0, 0}}, {"kName = \"n\"", {0, 0}}};
  REALclassDefinition base = definition("Base", nullptr, 0);
  base.methods = base_methods;
  base.method_count = 2;
  base.constants = constants;
  base.constant_count = 2;
  REALclassDefinition top = definition("Top", "Base", 0);
  top.methods = top_methods;
  top.method_count = 2;
  registry().register_class(base);
  registry().register_class(top);

  const ClassInfo* const info = registry().find_class("TOP");
  ASSERT_EQ(info->find_methods("one").size(), 2u) << "overloads of the chain come together";
  EXPECT_EQ(info->find_methods("one")[0]->owner, info);
  ASSERT_EQ(info->find_methods("TWO").size(), 1u) << "the same parameters override";
  Slot result;
  const REALobject object = create("Top");
  call_method(*info->find_methods("Two")[0], object, nullptr, &result);
  EXPECT_EQ(result.integer, 't');
  unlock_object(object);
  EXPECT_EQ(info->find_constant("KLIMIT")->value.integer, 5);
  EXPECT_EQ(string_utf8(info->find_constant("kname")->value.string), "n");
  EXPECT_EQ(info->find_constant("kOther"), nullptr);
  EXPECT_TRUE(info->find_methods("Three").empty());
  EXPECT_EQ(info->find_methods("one").data(), info->find_methods("ONE").data())
      << "found once, kept for good";
}

TEST_F(RegistryTest, AnExtensionAddsMembersToAClassThatIsInUse) {
  const ClassInfo* const movie = registry().find_class("Movie");
  ASSERT_EQ(movie->find_methods("Duration").size(), 1u);
  EXPECT_TRUE(movie->find_methods("TrackCountKRZ").empty());
  MethodEntry methods[] = {{function(answer<'9'>), nullptr, "TrackCountKRZ as integer", 0}};
  REALclassDefinition extension = definition("movie", nullptr, 0);
  extension.methods = methods;
  extension.method_count = 1;
  registry().register_extension(extension);
  EXPECT_EQ(movie->find_methods("trackcountkrz").size(), 1u);
  EXPECT_EQ(movie->find_methods("Duration").size(), 1u);
  EXPECT_EQ(movie->name(), "Movie");
}

TEST_F(RegistryTest, WrongDefinitionsAreReportedAndLeftOut) {
  PropertyEntry properties[] = {
      {nullptr, "Beyond", "Integer", 0, kDirectField, kDirectField, 14, {0, 0, 0}},
      {nullptr, "Before", "Integer", 0, kDirectField, kDirectField, -4, {0, 0, 0}},
      {nullptr, "Last", "Integer", 0, kDirectField, kDirectField, 12, {0, 0, 0}}};
  MethodEntry methods[] = {{function(answer<'1'>), nullptr, "SetFoo(index as", 0}};
  REALclassDefinition good = definition("Good", nullptr, 16);
  good.properties = properties;
  good.property_count = 3;
  good.methods = methods;
  good.method_count = 1;
  REALclassDefinition twice = definition("GOOD", nullptr, 16);
  REALclassDefinition orphan = definition("Orphan", "Nobody", 0);
  REALclassDefinition old = definition("Old", nullptr, 0);
  old.version = 8;
  REALclassDefinition vast = definition("Vast", nullptr, INT32_MAX);
  REALclassDefinition negative = definition("Negative", nullptr, 0);
  negative.method_count = -1;
  REALclassDefinition nameless = definition(nullptr, nullptr, 0);
  for (auto* each : {&good, &twice, &orphan, &old, &vast, &negative, &nameless}) {
    registry().register_class(*each);
  }
  const ClassInfo* const info = registry().find_class("Good");
  EXPECT_NE(info->find_property("Last"), nullptr);
  EXPECT_EQ(info->find_property("Beyond"), nullptr);
  EXPECT_EQ(info->find_property("Before"), nullptr);
  EXPECT_TRUE(info->find_methods("SetFoo").empty());
  for (const char* name : {"Orphan", "Old", "Vast", "Negative"}) {
    EXPECT_EQ(registry().find_class(name), nullptr) << name;
  }
  const std::vector<std::string> expected = {
      "class GOOD, \"GOOD\": a class of that name is defined already",
      "class Orphan, \"Orphan\": its superclass \"Nobody\" is not defined",
      "class Old, \"Old\": it is written for interface version 8, this runtime speaks 9",
      "class Vast, \"Vast\": its instance data has an impossible size",
      "class Negative, \"Negative\": it has an impossible number of members",
      "function, \"\": it has no usable name",
      "class Good, \"Beyond\": it lies outside the instance data",
      "class Good, \"Before\": it lies outside the instance data",
      "class Good, \"SetFoo(index as\": a type is missing after \"as\""};
  EXPECT_EQ(registry().declaration_errors(), expected);
}

// Nothing of the library may be wrong either: every member of every class and every function is
// looked up once.
TEST_F(RegistryTest, TheLibraryDeclaresItselfWithoutErrors) {
  int members = 0;
  for (const ClassInfo* info : registry().classes()) {
    for (const std::string& name : info->member_names()) {
      ++members;
      EXPECT_TRUE(!info->find_methods(name).empty() || !info->find_shared_methods(name).empty() ||
                  info->find_property(name) || info->find_constant(name))
          << info->name() << "." << name;
    }
  }
  EXPECT_GT(members, 60);
  for (const std::string& name : registry().names()) {
    EXPECT_TRUE(registry().find_class(name) || !registry().find_functions(name).empty()) << name;
  }
  EXPECT_EQ(registry().declaration_errors(), std::vector<std::string>{});
}

}  // namespace
}  // namespace krz
