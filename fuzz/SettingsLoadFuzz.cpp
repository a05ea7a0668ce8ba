// Any stored values: loading never fails on them, every loaded option is valid, and what is saved from the
// store loads back the same. Input: one stored value per line, given to the options in their saved order.
#include "FuzzChecks.h"

LUMORA_FUZZ(input) {
    Ports p;
    const auto names = SettingsStore::SavedNames();
    for (size_t i = 0, start = 0; i < names.size() && start <= input.size(); ++i) {
        const size_t end = std::min(input.find('\n', start), input.size());
        p.reg.Put(RegistryRoot::CurrentUser, "SOFTWARE\\Tavrinsoft\\TavrinPlayer\\setup", std::string(names[i]),
                {RegistryValue::Kind::Binary, std::string(input.substr(start, end - start))});
        start = end + 1;
    }
    SettingsStore store, again;
    Check(LoadSettings(store, p.wrapper, {15360, 11520}) && p.prompts.messages.empty());
    for (const auto& [name, low, high] : {std::tuple{"L1", 1, 120}, {"L41", 0, 998}, {"L42", 33, 999}, {"L61", -9, 9}}) {
        Check(store.Number(name) && *store.Number(name) >= low && *store.Number(name) <= high);
    }
    Check(SaveSettings(store, p.wrapper, "1", "C:\\L") && LoadSettings(again, p.wrapper, {15360, 11520}));
    for (auto name : names) Check(store.Number(name) == again.Number(name));
}
