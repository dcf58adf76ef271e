// Objects of the library as modules see them, and the standard streams.
#include <krz/abi.h>

#include "host_test.h"
#include "registry/tables.h"
#include "scripts/script_runner.h"

namespace krz {
namespace {

template <class Data>
const Data& data_of(REALobject object) {
  return *reinterpret_cast<const Data*>(reinterpret_cast<char*>(object) +
                                        object->class_info->definition()->host_slot);
}

void check_layout(REALobject layout, REALobject description) {
  const auto& data = data_of<REALaudioChannelLayoutData>(layout);
  EXPECT_EQ(data.descriptions[0], nullptr);
  EXPECT_EQ(data.descriptions[1], description);
  EXPECT_EQ(data_of<REALaudioChannelDescriptionData>(description).coordinates[2], 0.5);
}

TEST(LibraryObjects, AudioLayoutsHaveTheInstanceDataThatModulesExpect) {
  static const FunctionEntry kCheck[] = {
      KRZ_FUNCTION(check_layout,
                   "CheckLayout(l as QTAudioChannelLayoutKRZ, d as QTAudioChannelDescriptionKRZ)")};
  EXPECT_EQ(
      test::check_source(R"(
Dim layout As New QTAudioChannelLayoutKRZ
Dim description As New QTAudioChannelDescriptionKRZ
layout.ChannelDescription(1) = description
description.Coordinate(2) = 0.5
CheckLayout(layout, description)
For Each index As Integer In Array(-1, 64)
  Try
    Print layout.ChannelDescription(index) Is Nil
  Catch e As OutOfBoundsException
    Print index      ' expect: -1
  End Try            ' expect: 64
Next
)",
                         "layout.bas", {},
                         [](Runtime& runtime) { runtime.registry().register_functions(kCheck); }),
      "");
}

class LibraryStreams : public HostTest {};

TEST_F(LibraryStreams, WriteWhereTheRuntimeSays) {
  const ClassInfo& out = *registry().find_class("StdOut");
  const OwnedString text("h\x8E", encoding::kMacRoman);
  const Slot argument = string_slot(text);
  call_method(*out.find_shared_methods("Write")[0], nullptr, &argument, nullptr);
  call_method(*out.find_shared_methods("WriteLine")[0], nullptr, &argument, nullptr);
  const ClassInfo& err = *registry().find_class("StdErr");
  call_method(*err.find_shared_methods("WriteLine")[0], nullptr, &argument, nullptr);
  EXPECT_EQ(output_, "héhé\n");
  EXPECT_EQ(errors_, "hé\n");
}

}  // namespace
}  // namespace krz
