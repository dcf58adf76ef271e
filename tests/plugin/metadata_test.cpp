// What the metadata and user data classes keep alive, and how they ask for properties.
#include "plugin/host/instance_data.h"
#include "plugin/plugin_test.h"

namespace {

using fake_host::field;
using fake_toolbox::toolbox;

class Containers : public MovieTest {
 protected:
  void SetUp() override {
    MovieTest::SetUp();
    container_ = call<REALobject>(movie_, "movie", "MetaDataKRZ as QTMetaDataKRZ");
    const auto metadata =
        krz::to_reference<QTMetaDataRef>(field<int32_t>(container_, "QTMetaDataKRZ", "Handle"));
    const OSType key = 0x6E616D65;
    const auto* bytes = reinterpret_cast<const UInt8*>(&key);
    QTMetaDataItem added = 0;
    ASSERT_EQ(QTMetaDataAddItem(metadata, 0x6D647461, 0x636F6D6E, bytes, 4, bytes, 4, 1, &added),
              noErr);
  }
  void TearDown() override {
    fake_host::unlock(container_);
    MovieTest::TearDown();
  }
  REALobject container_ = nullptr;
};

TEST_F(Containers, AreKeptAliveByTheirItems) {
  const auto item = call<REALobject>(container_, "QTMetaDataKRZ", "FirstItem as QTMetaDataItemKRZ");
  ASSERT_TRUE(item);
  EXPECT_EQ(fake_host::locks_of(container_), 2);
  call<void>(item, "QTMetaDataItemKRZ", "Close");
  EXPECT_EQ(fake_host::locks_of(container_), 1);
  fake_host::unlock(item);
}

TEST_F(Containers, AskForPropertiesByTheClassOfItems) {
  const REALstring what = fake_host::make_string("fmts", 0x600);
  const auto text = call<REALstring>(container_, "QTMetaDataKRZ",
                                     "GetPropertyString(what as string) as string", what);
  const std::string ids = std::to_string(0x6D646974) + ", " + std::to_string(0x666D7473);
  EXPECT_EQ(toolbox().calls, (Calls{"QTMetaDataGetPropertyInfo(" + ids + ")",
                                    "QTMetaDataGetProperty(" + ids + ", 4)"}));
  EXPECT_EQ(fake_host::encoding_of(text), 0xFFFFu);
  fake_host::unlock(text);
  fake_host::unlock(what);
}

TEST_F(PluginTest, AListIsDisposedByItsOwnerOnly) {
  UserData list = nullptr;
  ASSERT_EQ(NewUserData(&list), noErr);
  const uint32_t references = ToolboxLiveReferences();
  for (const bool owns : {false, true}) {
    const REALobject object = fake_host::make_object("QTUserDataKRZ");
    field<int32_t>(object, "QTUserDataKRZ", "Handle") = krz::to_token(list);
    field<Boolean>(object, "QTUserDataKRZ", "Release") = owns;
    call<void>(object, "QTUserDataKRZ", "Close");
    EXPECT_EQ(ToolboxLiveReferences(), references - owns);
    EXPECT_EQ(field<int32_t>(object, "QTUserDataKRZ", "Handle"), 0);
    fake_host::unlock(object);
  }
}

}  // namespace
