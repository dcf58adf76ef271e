// The library's classes: memory blocks, files, movies, audio layouts, documents and streams.
#include <cstring>

#include "library/folder_item.h"
#include "library/movie.h"
#include "library_test.h"

namespace krz {
namespace {

class LibraryObjectTest : public LibraryTest {
 protected:
  std::string property(REALobject object, const char* name) {
    const PropertyInfo* const info = object->class_info->find_property(name);
    if (!info) return "no property";
    Slot slot;
    get_property(*info, object, &slot);
    return Value(info->type, slot).text();
  }
};

TEST_F(LibraryObjectTest, MemoryBlocksHoldNumbersInBothByteOrders) {
  const REALobject block = create("MemoryBlock");
  call(block, "Constructor", {16});
  const struct {
    const char* name;
    Value value;
    const char* read;
  } cases[] = {{"Byte", 300, "44"},
               {"Int8Value", -1, "-1"},
               {"UInt8Value", -1, "255"},
               {"Int16Value", -2, "-2"},
               {"UInt16Value", -2, "65534"},
               {"Int32Value", -3, "-3"},
               {"UInt32Value", -3, "4294967293"},
               {"Int64Value", int64_t{-4}, "-4"},
               {"UInt64Value", int64_t{5}, "5"},
               {"SingleValue", 0.5, "0.5"},
               {"DoubleValue", 0.1, "0.1"},
               {"BooleanValue", true, "True"}};
  const PropertyInfo& order = *block->class_info->find_property("LittleEndian");
  for (const bool little : {true, false}) {
    set_property(order, block, boolean_slot(little));
    for (const auto& c : cases) {
      SCOPED_TRACE(c.name);
      assign(block, c.name, {8}, c.value);
      EXPECT_EQ(call(block, c.name, {8}).text(), c.read);
    }
  }
  assign(block, "Int32Value", {0}, 0x01020304);
  EXPECT_EQ(call(block, "Byte", {0}).text(), "1") << "big-endian";
  unlock_object(block);
}

TEST_F(LibraryObjectTest, MemoryBlocksHoldTextsAndKeepTheirBounds) {
  const REALobject block = create("MemoryBlock");
  call(block, "Constructor", {8});
  assign(block, "StringValue", {0, 8}, "abcdefghij");
  EXPECT_EQ(call(block, "StringValue", {0, 8}).text(), "abcdefgh");
  assign(block, "StringValue", {2, 4}, "X");
  EXPECT_EQ(string_bytes(call(block, "StringValue", {0, 8}).slot().string),
            std::string_view("abX\0\0\0gh", 8));
  assign(block, "CString", {4}, "xyz");
  EXPECT_EQ(call(block, "CString", {4}).text(), "xyz");
  assign(block, "StringValue", {0, 8}, "12345678");
  EXPECT_EQ(call(block, "CString", {6}).text(), "78") << "the block's end ends the text";
  EXPECT_FALSE(exception_pending());

  const struct {
    const char* name;
    std::vector<Value> arguments;
  } outside[] = {{"Byte", {8}},
                 {"Byte", {-1}},
                 {"Int32Value", {5}},
                 {"DoubleValue", {1}},
                 {"CString", {9}},
                 {"StringValue", {4, 5}},
                 {"StringValue", {4, -1}},
                 {"StringValue", {2147483647, 2147483647}}};
  for (const auto& c : outside) {
    SCOPED_TRACE(c.name);
    call(block, c.name, c.arguments);
    EXPECT_NE(take_message().find("OutOfBoundsException: "), std::string::npos);
  }
  assign(block, "CString", {5}, "xyz");
  EXPECT_EQ(take_message(),
            "OutOfBoundsException: 4 bytes at offset 5 are not inside a memory block of 8 bytes");

  const PropertyInfo& size = *block->class_info->find_property("Size");
  set_property(size, block, integer_slot(12));
  EXPECT_EQ(call(block, "Int32Value", {8}).text(), "0") << "what is added is zero";
  EXPECT_EQ(property(block, "Size"), "12");
  set_property(size, block, integer_slot(-1));
  EXPECT_EQ(take_message(),
            "OutOfBoundsException: a memory block's size is negative; give 0 or more");
  unlock_object(block);
}

TEST_F(LibraryObjectTest, FolderItemsTellWhatStandsAtTheirPath) {
  const Value item = call("GetFolderItem", {KRZ_SOURCE_DIR "/CMakeLists.txt"});
  const REALobject file = item.slot().object;
  EXPECT_EQ(property(file, "Name"), "CMakeLists.txt");
  EXPECT_EQ(property(file, "Exists"), "True");
  EXPECT_EQ(property(file, "IsFolder"), "False");
  EXPECT_NE(property(file, "Length"), "0");
  const Value folder = call("GetFolderItem", {KRZ_SOURCE_DIR "/"});
  EXPECT_EQ(property(folder.slot().object, "IsFolder"), "True");
  const Value nothing = call("GetFolderItem", {"/nowhere/x"});
  EXPECT_EQ(property(nothing.slot().object, "Exists"), "False");
  EXPECT_EQ(folder_item_path(nullptr), "");
}

TEST_F(LibraryObjectTest, AMovieThatCannotBeOpenedRaisesWithTheCodeOfTheToolbox) {
  const Value none = call("OpenMovie", {"/nowhere/clip.mov"});
  EXPECT_EQ(none.slot().object, nullptr);
  const REALobject exception = take_pending_exception();
  ASSERT_NE(exception, nullptr);
  EXPECT_EQ(exception->class_info->name(), "IOException");
  EXPECT_NE(exception_message(exception).find("/nowhere/clip.mov"), std::string::npos);
  EXPECT_EQ(property(exception, "ErrorNumber"), "-43");
  unlock_object(exception);
}

TEST_F(LibraryObjectTest, AClosedMovieHasNoReference) {
  const REALobject movie = create("Movie");
  EXPECT_EQ(movie_reference(movie), nullptr);
  EXPECT_EQ(call(movie, "Duration", {}).text(), "0");
  EXPECT_EQ(call(movie, "Path", {}).text(), "");
  call(movie, "Close", {});
  unlock_object(movie);
  const REALobject other = create("MemoryBlock");
  EXPECT_EQ(movie_reference(other), nullptr);
  unlock_object(other);
}

TEST_F(LibraryObjectTest, AudioLayoutsHaveTheInstanceDataThatModulesExpect) {
  const REALobject layout = create("QTAudioChannelLayoutKRZ");
  const REALobject description = create("QTAudioChannelDescriptionKRZ");
  assign(layout, "ChannelDescription", {1}, description);
  assign(description, "Coordinate", {2}, 0.5);
  const auto* data = reinterpret_cast<const REALaudioChannelLayoutData*>(
      reinterpret_cast<char*>(layout) + layout->class_info->definition()->host_slot);
  EXPECT_EQ(data->descriptions[0], nullptr);
  EXPECT_EQ(data->descriptions[1], description);
  const auto* described = reinterpret_cast<const REALaudioChannelDescriptionData*>(
      reinterpret_cast<char*>(description) + description->class_info->definition()->host_slot);
  EXPECT_EQ(described->coordinates[2], 0.5);
  EXPECT_EQ(description->locks, 2);
  for (const int index : {-1, 64}) {
    call(layout, "ChannelDescription", {index});
    EXPECT_NE(take_message().find("OutOfBoundsException"), std::string::npos);
  }
  unlock_object(layout);
  EXPECT_EQ(description->locks, 1);
  unlock_object(description);
}

TEST_F(LibraryObjectTest, DocumentsKeepTheOrderOfTheirMembers) {
  const REALobject root = create("JSONItem");
  const REALobject list = create("JSONItem");
  assign(root, "Value", {"zeta"}, 1);
  assign(root, "Value", {"alpha"}, "é \"quoted\"\n");
  assign(root, "Value", {"seconds"}, 10.0);
  assign(root, "Value", {"big"}, int64_t{1} << 40);
  assign(root, "Value", {"yes"}, true);
  assign(root, "Value", {"none"}, Value({Kind::kNil}, {}));
  call(list, "Append", {1});
  call(list, "Append", {"two"});
  assign(root, "Value", {"list"}, list);
  assign(root, "Value", {"words"}, call("Split", {"a b"}));
  EXPECT_EQ(call(root, "ToString", {}).text(),
            R"({"zeta":1,"alpha":"é \"quoted\"\n","seconds":10.0,"big":1099511627776,)"
            R"("yes":true,"none":null,"list":[1,"two"],"words":["a","b"]})");
  EXPECT_EQ(call(list, "ToString", {true}).text(), "[\n  1,\n  \"two\"\n]");
  EXPECT_EQ(call(root, "Count", {}).text(), "8");
  EXPECT_EQ(call(root, "NameAt", {1}).text(), "alpha");
  EXPECT_EQ(call(root, "Value", {"seconds"}).text(), "10");
  EXPECT_EQ(call(root, "HasName", {"none"}).text(), "True");
  const Value child = call(root, "Child", {"list"});
  EXPECT_EQ(call(child.slot().object, "Value", {1}).text(), "two");
  call(root, "Remove", {"zeta"});
  EXPECT_EQ(call(root, "NameAt", {0}).text(), "alpha");
  unlock_object(list);
  unlock_object(root);
}

TEST_F(LibraryObjectTest, DocumentsAreReadAndWrongOnesRefused) {
  const REALobject item = create("JSONItem");
  call(item, "Load", {R"({"b": [1, -2.5, null, {"c": "\u00e9"}], "a": 18446744073709551615})"});
  EXPECT_EQ(call(item, "ToString", {}).text(),
            R"({"b":[1,-2.5,null,{"c":"é"}],"a":18446744073709551615})");
  const std::string before = call(item, "ToString", {}).text();
  const std::string deep = std::string(100'000, '[');
  for (const char* wrong : {"", "{", "[1,]", "{\"a\":}", "nul", "[1] 2", "[1e999]", deep.c_str()}) {
    SCOPED_TRACE(std::string_view(wrong).substr(0, 20));
    call(item, "Load", {wrong});
    EXPECT_NE(take_message().find("JSONException: "), std::string::npos);
    EXPECT_EQ(call(item, "ToString", {}).text(), before) << "what was there stays";
  }
  call(item, "Value", {"missing"});
  EXPECT_EQ(take_message(), "KeyNotFoundException: there is no value named \"missing\"");
  call(item, "Value", {2});
  EXPECT_NE(take_message().find("OutOfBoundsException"), std::string::npos);
  const REALobject block = create("MemoryBlock");
  assign(item, "Value", {"x"}, block);
  EXPECT_EQ(take_message(), "TypeMismatchException: a value of this type has no JSON form");
  unlock_object(block);
  unlock_object(item);
}

// A script that puts a document into itself again and again reaches a bound, not the end of the
// stack.
TEST_F(LibraryObjectTest, DocumentsCannotBeNestedWithoutEnd) {
  REALobject item = create("JSONItem");
  int levels = 0;
  for (; levels < 2000 && !exception_pending(); ++levels) {
    const REALobject outer = create("JSONItem");
    assign(outer, "Value", {"x"}, item);
    unlock_object(item);
    item = outer;
  }
  EXPECT_EQ(take_message(), "JSONException: a document is nested more than 500 levels deep");
  EXPECT_EQ(levels, 500);
  unlock_object(item);
}

TEST_F(LibraryObjectTest, StreamsWriteWhereTheRuntimeSays) {
  const ClassInfo& out = *registry().find_class("StdOut");
  const OwnedString text("h\x8E", encoding::kMacRoman);
  const Slot argument = string_slot(text);
  call_method(*out.find_shared_methods("Write")[0], nullptr, &argument, nullptr);
  call_method(*out.find_shared_methods("WriteLine")[0], nullptr, &argument, nullptr);
  const ClassInfo& err = *registry().find_class("StdErr");
  call_method(*err.find_shared_methods("WriteLine")[0], nullptr, &argument, nullptr);
  EXPECT_EQ(output_, "héhé\n");
  EXPECT_EQ(errors_, "hé\n");
  const double before = call("Microseconds", {}).slot().real;
  EXPECT_GE(call("Microseconds", {}).slot().real, before);
}

}  // namespace
}  // namespace krz
