// Host services that a module calls while it is being loaded.
#include "entries/entries.h"
#include "entries/entry_table.h"
#include "registry/registry.h"
#include "runtime.h"

namespace krz {

namespace {

int32_t g_announced_version = kPluginInterfaceVersion;

double host_version() { return Runtime::current().options().host_version; }

bool in_runtime() { return Runtime::current().options().in_runtime; }

// The toolbox needs no start-up of its own: 0 says that all is well.
int32_t enter_movies() { return 0; }

// What a module of another version hands over cannot be understood; it is refused when it returns.
bool is_refused() { return g_announced_version != kPluginInterfaceVersion; }

void register_class(REALclassDefinition* definition) {
  if (definition && !is_refused()) Runtime::current().registry().register_class(*definition);
}

void register_class_extension(REALclassDefinition* definition) {
  if (definition && !is_refused()) Runtime::current().registry().register_extension(*definition);
}

const HostEntry kEntries[] = {
    KRZ_ENTRY("RegisterPluginVersion", set_announced_version),
    KRZ_ENTRY("REALGetRBVersion", host_version),
    KRZ_ENTRY("REALinRuntime", in_runtime),
    KRZ_ENTRY("REALenterMovies", enter_movies),
    KRZ_ENTRY("PluginRegisterClass", register_class),
    KRZ_ENTRY("PluginRegisterClassExtension", register_class_extension),
};

}  // namespace

int32_t announced_version() { return g_announced_version; }

void set_announced_version(int32_t version) { g_announced_version = version; }

std::span<const HostEntry> start_up_entries() { return kEntries; }

}  // namespace krz
