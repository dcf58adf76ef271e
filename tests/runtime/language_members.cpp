// Members of registered classes as scripts use them: every form of declaration that a module can
// make.
#include <gtest/gtest.h>

#include "scripts/script_runner.h"

namespace krz::test {
namespace {

template <class Function>
REALfunction host(Function* function) {
  return reinterpret_cast<REALfunction>(function);
}

int32_t g_level = 3;
int32_t level(REALobject) { return g_level; }
void set_level(REALobject, int32_t value) { g_level = value; }

REALstring code() {
  return make_string(
      "\xA9"
      "ART",
      encoding::kMacRoman);
}

uint8_t time_only(REALobject, int32_t* time) {
  *time += 1;
  return 1;
}
uint8_t time_and_text(REALobject, int32_t* time, REALstring* text) {
  *time += 10;
  unlock_string(*text);
  *text = make_string("new text");
  return 0;
}
/// The object of the list at `index`, with a lock for the caller.
REALobject pick(REALobject, REALobject list, int32_t index, uint8_t from_end) {
  const auto& elements = static_cast<ArrayObject*>(list)->elements;
  const REALobject found =
      elements[static_cast<size_t>(from_end ? static_cast<int32_t>(elements.size()) - 1 - index
                                            : index)]
          .object;
  lock_object(found);
  return found;
}

MethodEntry g_methods[] = {
    {host(level), host(set_level), "Level as integer", 0},
    {host(time_only), nullptr, "Next(byref time as integer) as boolean", 0},
    {host(time_and_text), nullptr, "Next(byref time as integer, byref text as string) as boolean",
     0},
    {host(pick), nullptr,
     "Pick(list() as SampleThing, index as integer, fromEnd as boolean = false) as SampleThing", 0},
};
MethodEntry g_shared[] = {{host(code), nullptr, "kArtist as string", 0}};
ConstantEntry g_constants[] = {{"kOne = 1", {}}, {"kCommon = \"comn\"", {}}};
PropertyEntry g_properties[] = {
    {nullptr, "Number", "Integer", 0, kDirectField, kDirectField, 0, {}},
    {nullptr, "Text", "String", 0, kDirectField, kDirectField, 8, {}},
    {nullptr, "Fixed", "Integer", 0, host(level), nullptr, 0, {}},
};

void release_text(REALobject object);

REALclassDefinition g_thing = {.version = kPluginInterfaceVersion,
                               .name = "SampleThing",
                               .data_size = 16,
                               .destructor = host(release_text),
                               .properties = g_properties,
                               .property_count = 3,
                               .methods = g_methods,
                               .method_count = 4,
                               .constants = g_constants,
                               .constant_count = 2,
                               .shared_methods = g_shared,
                               .shared_method_count = 1};
REALclassDefinition g_special = {
    .version = kPluginInterfaceVersion, .name = "SpecialThing", .superclass = "SampleThing"};

void release_text(REALobject object) {
  unlock_string(
      *reinterpret_cast<REALstring*>(reinterpret_cast<char*>(object) + g_thing.host_slot + 8));
}

void register_things(Runtime& runtime) {
  runtime.registry().register_class(g_thing);
  runtime.registry().register_class(g_special);
  g_level = 3;
}

TEST(LanguageMembers, EveryFormOfDeclarationIsUsable) {
  EXPECT_EQ(check_source(R"(
Dim t As New SampleThing
t.Level = t.Level + 4
Print t.Level, t.level(), t.Fixed                  ' expect: 7 7 7
Print SampleThing.kOne, SampleThing.kCommon, SpecialThing.kOne   ' expect: 1 comn 1
Print SampleThing.kArtist                          ' expect: ©ART
Const kHere = SampleThing.kCommon
Print kHere = "COMN", t.kOne                       ' expect: True 1
Dim n As Integer = 5, text As String = "old " & 1
Print t.Next(n), n                                 ' expect: True 6
Print t.Next(n, text), n, text                     ' expect: False 16 new text
Dim times(2) As Integer, texts(1) As String
Print t.Next(times(1), texts(0)), times(1), texts(0)   ' expect: False 10 new text
Sub Forward(ByRef time As Integer, t As SampleThing)
  If t.Next(time) Then time = time * 2
End Sub
Forward n, t
Print n                                            ' expect: 34
t.Number = -1
t.Text = "field" & 1
Print t.Number, t.Text                             ' expect: -1 field1
Dim list() As SampleThing = Array(t)
Dim special As New SpecialThing
special.Number = 9
list.Append special
Print t.Pick(list, 0).Number, t.Pick(list, 0, True).Number   ' expect: -1 9
Dim back As SpecialThing = SpecialThing(t.Pick(list, 1))
Print back Is special, t IsA SpecialThing          ' expect: True False
)",
                         "members.bas", {}, register_things),
            "");
}

TEST(LanguageMembers, MistakesNameTheDeclaration) {
  const struct {
    const char* source;
    const char* message;
  } mistakes[] = {
      {"Dim t As New SampleThing\nt.Fixed = 1", "“Fixed” is read-only"},
      {"Dim t As New SampleThing\nt.Next(1)",
       "no “SampleThing.Next” takes (Integer); there are: Next(byref time as integer)"},
      {"Dim t As New SampleThing\nPrint t.Pick()",
       "takes 2 to 3 arguments, not 0: Pick(list() as SampleThing"},
      {"Dim s As SpecialThing = New SampleThing", "SpecialThing(…) converts it when it is one"},
      {"Print SampleThing.kArtst", "did you mean “kArtist”?"},
      {"Print SampleThing.Level", "belongs to an instance of SampleThing"},
  };
  for (const auto& mistake : mistakes) {
    const ScriptOutcome outcome = run_source(mistake.source, "test.bas", {}, register_things);
    EXPECT_NE(outcome.error.find(mistake.message), std::string::npos) << outcome.error;
    EXPECT_EQ(outcome.exit_status, 1);
  }
}

}  // namespace
}  // namespace krz::test
