// Any stored values: loading never fails on them, every loaded option is valid, and what is saved from the
// store loads back the same. Input: one stored value per line, given to the options in their saved order.
#include "FuzzChecks.h"
#include "settings/RegistryWrapper.h"
#include "settings/SettingsStore.h"
#include "support/Fakes.h"

using namespace lumora;
using fuzz::Check;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
    const std::string_view input = fuzz::Bytes(data, size);
    test::FakeRegistry reg;
    test::FakePrompts prompts;
    RegistryWrapper wrapper(reg, prompts);
    const auto names = SettingsStore::SavedNames();
    size_t start = 0;
    for (size_t i = 0; i < names.size() && start <= input.size(); ++i) {
        const size_t end = std::min(input.find('\n', start), input.size());
        reg.Put(RegistryRoot::LocalMachine, "SOFTWARE\\Tavrinsoft\\TavrinPlayer\\setup", std::string(names[i]),
                {RegistryValue::Kind::Binary, std::string(input.substr(start, end - start))});
        start = end + 1;
    }
    SettingsStore store;
    Check(LoadSettings(store, wrapper, {15360, 11520}) && prompts.messages.empty());
    const struct {
        const char* name;
        long long low, high;
    } ranges[] = {{"L1", 1, 120}, {"L30", 1, 100}, {"L41", 0, 998}, {"L42", 33, 999}, {"L13", 0, 1}, {"L61", -9, 9}};
    for (const auto& r : ranges) {
        const auto n = store.Number(r.name);
        Check(n && *n >= r.low && *n <= r.high);
    }
    Check(SaveSettings(store, wrapper, "1", "C:\\L"));
    SettingsStore again;
    Check(LoadSettings(again, wrapper, {15360, 11520}));
    for (auto name : names) Check(store.Number(name) == again.Number(name));
    return 0;
}
