// A module of one class, for tests of loading: announces the version that it is compiled for.
#include <krz/abi.h>

namespace {

struct Counter {
  int32_t total;
};

REALResolver g_resolver;

int32_t add(REALobject, int32_t);
REALstring text(REALobject);

MethodEntry g_methods[] = {
    {reinterpret_cast<REALfunction>(&add), nullptr, "Add(amount as integer = 1) as integer", 0},
    {reinterpret_cast<REALfunction>(&text), nullptr, "Text as string", 0},
};

REALclassDefinition g_class;

int32_t add(REALobject object, int32_t amount) {
  auto* const counter =
      reinterpret_cast<Counter*>(reinterpret_cast<char*>(object) + g_class.host_slot);
  return counter->total += amount;
}

// Null on a host without the service.
REALstring text(REALobject) {
  const auto build =
      reinterpret_cast<REALstring (*)(const char*, int32_t)>(g_resolver("REALBuildString"));
  return build ? build("counting", 8) : nullptr;
}

}  // namespace

extern "C" __attribute__((visibility("default"))) void REALPluginMain(REALResolver resolver) {
  g_resolver = resolver;
  reinterpret_cast<void (*)(int32_t)>(resolver("RegisterPluginVersion"))(ANNOUNCED_VERSION);
  g_class.version = kPluginInterfaceVersion;
  g_class.name = "TestCounter";
  g_class.data_size = 16;
  g_class.methods = g_methods;
  g_class.method_count = 2;
  const auto register_class =
      reinterpret_cast<void (*)(REALclassDefinition*)>(resolver("PluginRegisterClass"));
  if (register_class) register_class(&g_class);
}
