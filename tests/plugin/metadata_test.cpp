// What the metadata and user data classes ask of the toolbox, and what they keep alive.
#include "plugin/plugin_test.h"

namespace {

using fake_toolbox::toolbox;
using Calls = std::vector<std::string>;

template <class Result, class... Arguments>
Result call(REALobject object, const char* class_name, const char* declaration,
            Arguments... arguments) {
  toolbox().calls.clear();
  const MethodEntry& row = fake_host::method(class_name, declaration);
  return fake_host::function<Result(REALobject, Arguments...)>(row.function)(object, arguments...);
}

std::string code(const char (&text)[5]) {
  uint32_t number = 0;
  for (int i = 0; i < 4; ++i) number = number << 8 | static_cast<uint8_t>(text[i]);
  return std::to_string(number);
}

class Containers : public PluginTest {
 protected:
  void SetUp() override {
    PluginTest::SetUp();
    container_ = fake_host::make_object("QTMetaDataKRZ");
    fake_host::field<int32_t>(container_, "QTMetaDataKRZ", "Handle") = 21;
  }
  void TearDown() override {
    fake_host::unlock(container_);
    PluginTest::TearDown();
  }
  REALobject container_ = nullptr;
};

TEST_F(Containers, AreKeptAliveByTheirItems) {
  toolbox().answers["item"] = 7;
  const auto item = call<REALobject>(container_, "QTMetaDataKRZ", "FirstItem as QTMetaDataItemKRZ");
  ASSERT_TRUE(item);
  EXPECT_EQ(toolbox().calls,
            (Calls{"QTMetaDataGetNextItem(21, 0, 0, 0, -1)", "QTMetaDataRetain(21)"}));
  EXPECT_EQ(fake_host::locks_of(container_), 2);
  // The next step goes on behind the item; one that fails leaves the place.
  toolbox().answers["QTMetaDataGetNextItem"] = -2177;
  for (int i = 0; i < 2; ++i) {
    EXPECT_FALSE(call<REALobject>(container_, "QTMetaDataKRZ", "NextItem as QTMetaDataItemKRZ"));
    EXPECT_EQ(toolbox().calls, Calls{"QTMetaDataGetNextItem(21, 0, 7, 0, -1)"});
  }
  EXPECT_EQ(fake_host::field<int32_t>(container_, "QTMetaDataKRZ", "Lasterror"), -2177);
  call<void>(item, "QTMetaDataItemKRZ", "Close");
  EXPECT_EQ(toolbox().calls, Calls{"QTMetaDataRelease(21)"});
  EXPECT_EQ(fake_host::locks_of(container_), 1);
  fake_host::unlock(item);
}

TEST_F(Containers, AskForPropertiesByTheClassOfItems) {
  toolbox().sample = "abc";
  const REALstring what = fake_host::make_string("fmts", 0x600);
  const auto text = call<REALstring>(container_, "QTMetaDataKRZ",
                                     "GetPropertyString(what as string) as string", what);
  EXPECT_EQ(toolbox().calls,
            (Calls{"QTMetaDataGetPropertyInfo(21, " + code("mdit") + ", " + code("fmts") + ")",
                   "QTMetaDataGetProperty(21, " + code("mdit") + ", " + code("fmts") + ", 3)"}));
  EXPECT_EQ(fake_host::bytes_of(text), "abc");
  EXPECT_EQ(fake_host::encoding_of(text), 0xFFFFu);
  fake_host::unlock(text);
  fake_host::unlock(what);
}

TEST_F(Containers, TakeNoKeyForAnyWhenCountingAndForZeroWhenRemoving) {
  const REALstring none = nullptr;
  call<int32_t>(container_, "QTMetaDataKRZ",
                "CountItemsWithKeyCode(StorageFormat as string, KeyCode as string, Key as string) "
                "as integer",
                none, none, none);
  EXPECT_EQ(toolbox().calls, Calls{"QTMetaDataGetItemCountWithKey(21, 0, 0, -1)"});
  call<void>(container_, "QTMetaDataKRZ",
             "RemoveItemsWithKeyCode(StorageFormat as string, KeyCode as string, Key as string)",
             none, none, none);
  EXPECT_EQ(toolbox().calls, Calls{"QTMetaDataRemoveItemsWithKey(21, 0, 0, 0)"});
}

TEST_F(PluginTest, AListIsDisposedByItsOwnerOnly) {
  for (const bool owns : {false, true}) {
    const REALobject list = fake_host::make_object("QTUserDataKRZ");
    fake_host::field<int32_t>(list, "QTUserDataKRZ", "Handle") = 33;
    fake_host::field<Boolean>(list, "QTUserDataKRZ", "Release") = owns;
    call<void>(list, "QTUserDataKRZ", "Close");
    EXPECT_EQ(toolbox().calls, owns ? Calls{"DisposeUserData(33)"} : Calls{});
    EXPECT_EQ(fake_host::field<int32_t>(list, "QTUserDataKRZ", "Handle"), 0);
    fake_host::unlock(list);
  }
}

}  // namespace
