// Any stored values: loading never fails on them, every loaded option is valid, and what is
// saved from the store loads back the same.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "settings/RegistryWrapper.h"
#include "settings/SettingsStore.h"
#include "support/Fakes.h"

using namespace lumora;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
    const std::string input(reinterpret_cast<const char*>(data), size);
    test::FakeRegistry reg;
    test::FakePrompts prompts;
    RegistryWrapper wrapper(reg, prompts);
    const std::string setup = "SOFTWARE\\Tavrinsoft\\TavrinPlayer\\setup";

    // One stored value per line, given to the options in their saved order.
    size_t start = 0;
    auto names = SettingsStore::SavedNames();
    for (size_t i = 0; i < names.size() && start <= input.size(); ++i) {
        size_t end = input.find('\n', start);
        if (end == std::string::npos) end = input.size();
        reg.Put(RegistryRoot::LocalMachine, setup, std::string(names[i]),
                {RegistryValue::Kind::Binary, input.substr(start, end - start)});
        start = end + 1;
    }
    SettingsStore store;
    if (!LoadSettings(store, wrapper, {15360, 11520}) || !prompts.messages.empty()) std::abort();
    const auto inRange = [&](const char* name, long long low, long long high) {
        const auto n = store.Number(name);
        if (!n || *n < low || *n > high) std::abort();
    };
    inRange("L1", 1, 120);
    inRange("L30", 1, 100);
    inRange("L41", 0, 998);
    inRange("L42", 33, 999);
    inRange("L13", 0, 1);
    inRange("L61", -9, 9);

    if (!SaveSettings(store, wrapper, "1", "C:\\L")) std::abort();
    SettingsStore again;
    if (!LoadSettings(again, wrapper, {15360, 11520})) std::abort();
    for (auto name : SettingsStore::SavedNames()) {
        if (store.Number(name) != again.Number(name)) std::abort();
    }
    return 0;
}
