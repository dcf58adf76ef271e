// Calls into C functions by declaration: every kind as an argument, a result, a byref, a property
// and a field.
#include "host_test.h"

namespace krz {
namespace {

struct Data {
  int32_t integer;
  bool boolean;
  uint32_t color;
  double real;
  REALstring string;
  REALobject object;
  int64_t after;  // must never change
};

constexpr int64_t kUntouched = 0x5A5A5A5A5A5A5A5A;

REALclassDefinition g_class;
std::string g_seen;

Data& data_of(REALobject object) {
  return *reinterpret_cast<Data*>(reinterpret_cast<char*>(object) + g_class.host_slot);
}

void construct(REALobject object) { data_of(object).after = kUntouched; }

void destroy(REALobject object) {
  EXPECT_EQ(data_of(object).after, kUntouched);
  unlock_string(data_of(object).string);
  unlock_object(data_of(object).object);
}

REALstring describe(REALobject self, int32_t i, bool b, int64_t l, float f, double d, uint32_t c,
                    REALstring s, REALobject o, ArrayObject* a) {
  std::string text = std::to_string(i) + (b ? " T " : " F ") + std::to_string(l) + " " +
                     number_text(f) + " " + number_text(d) + " " + std::to_string(c) + " " +
                     string_utf8(s) + (o == self ? " self " : " other ") +
                     std::to_string(a->elements.size());
  return make_string(text);
}

void swap_all(REALobject, int32_t* i, bool* b, double* d, uint32_t* c, REALstring* s,
              REALobject* o) {
  *i = -*i;
  *b = !*b;
  *d = *d / 2;
  *c = ~*c & 0xFFFFFF;
  const REALstring longer = make_string(string_utf8(*s) + "!");
  unlock_string(*s);
  *s = longer;
  unlock_object(*o);
  *o = nullptr;
}

int32_t minus_one(REALobject) { return -1; }
// A boolean as older modules answer it: whatever stands in the upper bits is nothing.
uint64_t dirty_boolean(REALobject) { return 0xFFFFFFFFFFFFFF00; }
uint64_t dirty_boolean_of(REALobject, int32_t) { return 0xFFFFFFFFFFFFFF02; }
double half(REALobject) { return 0.5; }
float quarter(REALobject, float x) { return x / 4; }
int64_t big(REALobject, int64_t x) { return x * 2; }
uint32_t color(REALobject) { return 0x00112233; }
int32_t sum(int32_t a, int32_t b) { return a + b; }

REALstring raise_and_answer(REALobject, int32_t) {
  raise_exception("NilObjectException", "memoryblock is nil");
  return make_string("dropped");
}

int32_t get_element(REALobject object, int32_t index) { return data_of(object).integer + index; }
void set_element(REALobject object, int32_t index, int32_t value) {
  data_of(object).integer = value - index;
}
double get_level(REALobject object) { return data_of(object).real; }
void set_level(REALobject object, double value) { data_of(object).real = value; }

int32_t get_scaled(REALobject object, intptr_t param) {
  return data_of(object).integer * static_cast<int32_t>(param);
}
void set_scaled(REALobject object, intptr_t param, int32_t value) {
  data_of(object).integer = value / static_cast<int32_t>(param);
}
REALstring get_name(REALobject, intptr_t) { return make_string("made"); }

template <class F>
REALfunction fn(F* f) {
  return reinterpret_cast<REALfunction>(f);
}

PropertyEntry g_properties[] = {
    {nullptr, "I", "Integer", 0, kDirectField, kDirectField, offsetof(Data, integer), {0, 0, 0}},
    {nullptr, "B", "Boolean", 0, kDirectField, kDirectField, offsetof(Data, boolean), {0, 0, 0}},
    {nullptr, "C", "Color", 0, kDirectField, kDirectField, offsetof(Data, color), {0, 0, 0}},
    {nullptr, "D", "Double", 0, kDirectField, kDirectField, offsetof(Data, real), {0, 0, 0}},
    {nullptr, "S", "String", 0, kDirectField, kDirectField, offsetof(Data, string), {0, 0, 0}},
    {nullptr, "O", "Thing", 0, kDirectField, kDirectField, offsetof(Data, object), {0, 0, 0}},
    {nullptr, "Scaled", "Integer", 0, fn(get_scaled), fn(set_scaled), 10, {0, 0, 0}},
    {nullptr, "Name", "String", 0, fn(get_name), nullptr, 0, {0, 0, 0}},
};

MethodEntry g_methods[] = {
    {fn(describe), nullptr,
     "Describe(i as integer, b as boolean, l as int64, f as single, d as double, c as color, s as "
     "string, o as object, a() as integer) as string",
     0},
    {fn(swap_all), nullptr,
     "SwapAll(byref i as integer, byref b as boolean, byref d as double, byref c as color, byref s "
     "as string, byref o as Thing)",
     0},
    {fn(minus_one), nullptr, "MinusOne as integer", 0},
    {fn(dirty_boolean), nullptr, "Dirty as boolean", 0},
    {fn(dirty_boolean_of), nullptr, "DirtyOf(x as integer) as boolean", 0},
    {fn(half), nullptr, "Half as double", 0},
    {fn(quarter), nullptr, "Quarter(x as single) as single", 0},
    {fn(big), nullptr, "Big(x as int64) as int64", 0},
    {fn(color), nullptr, "Paint as color", 0},
    {fn(raise_and_answer), nullptr, "Fail(x as integer) as string", 0},
    {fn(get_element), fn(set_element), "Element(index as integer) as integer", 0},
    {fn(get_level), fn(set_level), "Level as double", 0},
};

MethodEntry g_shared[] = {{fn(sum), nullptr, "Sum(a as integer, b as integer) as integer", 0}};

class InvokeTest : public HostTest {
 protected:
  void SetUp() override {
    HostTest::SetUp();
    g_class = {};
    g_class.version = kPluginInterfaceVersion;
    g_class.name = "Thing";
    g_class.data_size = sizeof(Data);
    g_class.constructor = fn(construct);
    g_class.destructor = fn(destroy);
    g_class.properties = g_properties;
    g_class.property_count = std::size(g_properties);
    g_class.methods = g_methods;
    g_class.method_count = std::size(g_methods);
    g_class.shared_methods = g_shared;
    g_class.shared_method_count = std::size(g_shared);
    registry().register_class(g_class);
    thing_ = create("Thing");
    ASSERT_NE(thing_, nullptr);
  }
  void TearDown() override {
    unlock_object(thing_);
    HostTest::TearDown();
  }

  const MethodInfo& method(const char* name) { return *thing_->class_info->find_methods(name)[0]; }
  const PropertyInfo& property(const char* name) {
    return *thing_->class_info->find_property(name);
  }
  Slot call(const char* name, std::vector<Slot> arguments = {}) {
    Slot result;
    call_method(method(name), thing_, arguments.data(), &result);
    return result;
  }

  REALobject thing_ = nullptr;
};

TEST_F(InvokeTest, EveryKindArrivesAsDeclared) {
  const OwnedString text("hé");
  ArrayObject* const array = new_array({Kind::kInteger}, {2});
  Slot single;
  single.single = 0.1f;
  Slot colour;
  colour.color = 0xABCDEF;
  const OwnedString seen(
      call("Describe",
           {integer_slot(-7), boolean_slot(true), int64_slot(-5'000'000'000), single,
            real_slot(2.5), colour, string_slot(text), object_slot(thing_), object_slot(array)})
          .string);
  EXPECT_EQ(seen.bytes(), "-7 T -5000000000 0.1 2.5 11259375 hé self 3");
  EXPECT_EQ(static_cast<REALstring>(text)->locks, 1) << "arguments are borrowed";
  EXPECT_EQ(array->locks, 1);
  unlock_object(array);
}

TEST_F(InvokeTest, EveryKindComesBackWithNothingBesideItsBytes) {
  EXPECT_EQ(call("MinusOne").bits, 0xFFFFFFFFu);
  EXPECT_EQ(call("Dirty").bits, 0u);
  EXPECT_EQ(call("DirtyOf", {integer_slot(1)}).bits, 1u);
  EXPECT_EQ(call("Half").real, 0.5);
  Slot one;
  one.single = 1;
  EXPECT_EQ(call("Quarter", {one}).single, 0.25f);
  EXPECT_EQ(call("Big", {int64_slot(3'000'000'000)}).int64, 6'000'000'000);
  EXPECT_EQ(call("Paint").color, 0x112233u);
}

TEST_F(InvokeTest, ByrefArgumentsAreReplacedInPlace) {
  Slot i = integer_slot(5), b = boolean_slot(false), d = real_slot(3), c, s, o;
  c.color = 0xFF0000;
  s.string = make_string("hi");
  o.object = create("Thing");
  Slot arguments[6];
  Slot* const variables[] = {&i, &b, &d, &c, &s, &o};
  for (int k = 0; k < 6; ++k) arguments[k].object = reinterpret_cast<REALobject>(variables[k]);
  call_method(method("SwapAll"), thing_, arguments, nullptr);
  EXPECT_EQ(i.integer, -5);
  EXPECT_TRUE(b.boolean);
  EXPECT_EQ(d.real, 1.5);
  EXPECT_EQ(c.color, 0x00FFFFu);
  EXPECT_EQ(string_utf8(s.string), "hi!");
  EXPECT_EQ(o.object, nullptr);
  unlock_string(s.string);
}

TEST_F(InvokeTest, SharedMethodsHaveNoReceiver) {
  const MethodInfo& sum_method = *thing_->class_info->find_shared_methods("sum")[0];
  const Slot arguments[] = {integer_slot(40), integer_slot(2)};
  Slot result;
  call_method(sum_method, nullptr, arguments, &result);
  EXPECT_EQ(result.integer, 42);
}

TEST_F(InvokeTest, AResultBesideAnExceptionIsDropped) {
  const Slot result = call("Fail", {integer_slot(1)});
  EXPECT_EQ(result.bits, 0u);
  EXPECT_EQ(take_message(), "NilObjectException: memoryblock is nil");
}

TEST_F(InvokeTest, TheFirstExceptionStaysAndUnknownClassesBecomeTheBaseClass) {
  raise_exception("NoSuchException", "first", -43);
  raise_exception("IOException", "second");
  ASSERT_TRUE(exception_pending());
  const REALobject exception = take_pending_exception();
  EXPECT_EQ(exception->class_info->name(), "RuntimeException");
  EXPECT_EQ(exception_message(exception), "first");
  Slot number;
  get_property(*exception->class_info->find_property("ErrorNumber"), exception, &number);
  EXPECT_EQ(number.integer, -43);
  unlock_object(exception);
  EXPECT_FALSE(exception_pending());
}

TEST_F(InvokeTest, AssignableMethodsTakeTheirParametersAndTheValue) {
  const Slot index = integer_slot(3);
  call_setter(method("Element"), thing_, &index, integer_slot(10));
  EXPECT_EQ(data_of(thing_).integer, 7);
  EXPECT_EQ(call("Element", {index}).integer, 10);
  call_setter(method("Level"), thing_, real_slot(0.75));
  EXPECT_EQ(call("Level").real, 0.75);
}

TEST_F(InvokeTest, DirectFieldsAreReadAndWrittenInTheirOwnWidth) {
  const struct {
    const char* name;
    Slot value;
  } cases[] = {{"I", integer_slot(-2)}, {"B", boolean_slot(true)}, {"D", real_slot(1e100)}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    Slot dirty = c.value;
    if (std::string_view(c.name) != "D") dirty.bits |= 0xEEEEEEEE00000000;
    set_property(property(c.name), thing_, dirty);
    Slot read;
    read.bits = ~uint64_t{0};
    get_property(property(c.name), thing_, &read);
    EXPECT_EQ(read.bits, c.value.bits);
  }
  EXPECT_EQ(data_of(thing_).color, 0u);
  EXPECT_EQ(data_of(thing_).after, kUntouched);
}

TEST_F(InvokeTest, DirectReferencesAreLockedWhenStoredAndUnlockedWhenReplaced) {
  const OwnedString first("1");
  const OwnedString second("2");
  set_property(property("S"), thing_, string_slot(first));
  EXPECT_EQ(static_cast<REALstring>(first)->locks, 2);
  set_property(property("S"), thing_, string_slot(first));
  EXPECT_EQ(static_cast<REALstring>(first)->locks, 2) << "storing what is there changes nothing";
  Slot read;
  get_property(property("S"), thing_, &read);
  EXPECT_EQ(static_cast<REALstring>(first)->locks, 3) << "what is read has a lock of its own";
  unlock_string(read.string);
  set_property(property("S"), thing_, string_slot(second));
  EXPECT_EQ(static_cast<REALstring>(first)->locks, 1);

  const REALobject other = create("Thing");
  set_property(property("O"), thing_, object_slot(other));
  unlock_object(other);
  EXPECT_EQ(other->locks, 1);
  set_property(property("O"), thing_, object_slot(nullptr));
}

TEST_F(InvokeTest, PropertyFunctionsReceiveTheirParameter) {
  set_property(property("Scaled"), thing_, integer_slot(120));
  EXPECT_EQ(data_of(thing_).integer, 12);
  Slot read;
  get_property(property("Scaled"), thing_, &read);
  EXPECT_EQ(read.integer, 120);
  EXPECT_TRUE(property("Name").read_only());
  get_property(property("Name"), thing_, &read);
  EXPECT_EQ(OwnedString(read.string).bytes(), "made");
}

}  // namespace
}  // namespace krz
